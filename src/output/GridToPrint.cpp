#include "output/GridToPrint.h"

#include "adapters/qt/QtText.h"
#include "browser/GridView.h"
#include "platform/Printer.h"

#include <QFontInfo>
#include <QHeaderView>

namespace quavernet {

namespace {

// Columns are as much larger or smaller on paper as its letters are: what has room in a cell has it there
// too.
double MillimetresPerPixel(const GridView& grid) {
    return 25.4 / grid.logicalDpiX() * Printer::DefaultFontSize / QFontInfo(grid.font()).pointSizeF();
}

} // namespace

std::int32_t GridToPrint::Cols() const {
    return m_grid.Model().columnCount();
}

std::int32_t GridToPrint::ColWidth(std::int32_t column) const {
    return m_grid.columnWidth(column);
}

void GridToPrint::SetColWidth(std::int32_t column, std::int32_t width) {
    m_grid.setColumnWidth(column, width);
}

void GridToPrint::SetRedraw(bool redraw) {
    m_grid.setUpdatesEnabled(redraw);
}

std::optional<PrintedGrid> GridToPrint::Contents() const {
    PrintedGrid contents;
    const double millimetresPerPixel = MillimetresPerPixel(m_grid);
    for (std::int32_t column = 0; column < Cols(); ++column) {
        if (const std::int32_t width = ColWidth(column); width > 0) {
            const QVariant header = m_grid.Model().headerData(column, Qt::Horizontal, Qt::DisplayRole);
            contents.Columns.push_back({static_cast<ListColumn>(column), FromQString(header.toString()),
                                        width * millimetresPerPixel});
        }
    }
    contents.Rows = m_grid.Model().Rows();
    contents.GridLines = m_grid.showGrid();
    return contents;
}

} // namespace quavernet
