#include "output/GridPages.h"

#include "platform/Printer.h"

#include <algorithm>
#include <utility>

namespace quavernet {

namespace {

// Millimetres between a text and the edges of its cell.
constexpr double PaddingMm = 0.79; // As on the screen; it shrinks with the columns.
constexpr double RowGapMm = 1;
constexpr double SmallestFontSize = 6; // Points; what is smaller is hard to read.

double RowHeight(const Printer& printer) {
    return printer.TextHeight() + printer.ScaleY(RowGapMm);
}

/// The size of rows while this is there.
class RowFont {
public:
    RowFont(Printer& printer, double share) : m_printer(printer) {
        m_printer.SetFontSize(std::max(Printer::DefaultFontSize * share, SmallestFontSize));
    }
    ~RowFont() { m_printer.SetFontSize(Printer::DefaultFontSize); }
    RowFont(const RowFont&) = delete;
    RowFont& operator=(const RowFont&) = delete;

private:
    Printer& m_printer;
};

} // namespace

bool GridPages::DrawNextPage(Printer& printer, const PageBlock& block) {
    std::vector<double> widths;
    for (const PrintedGrid::Column& column : m_grid.Columns) {
        widths.push_back(printer.ScaleX(column.Width));
    }
    const double share = ShareOfWidths(widths, block.Right - block.Left);
    m_places = PlaceColumns(widths, share);
    m_padding = printer.ScaleX(PaddingMm) * share;
    const RowFont font(printer, share); // What has room in its cell on the screen has it on paper.
    const double rowHeight = RowHeight(printer);
    const std::size_t perPage = RowsPerPage(block.Bottom - block.Top, rowHeight);
    if (perPage == 0 || block.Right <= block.Left) {
        return false;
    }
    const PageRows rows = RowsOfPage(m_page, perPage, m_grid.Rows.Count());
    DrawRow(printer, block, block.Top, 0);
    double y = block.Top;
    for (std::size_t row = rows.First; row < rows.End; ++row) {
        y += rowHeight;
        DrawRow(printer, block, y, row + 1);
    }
    DrawLines(printer, block, rows.End - rows.First, rowHeight);
    ++m_page;
    return m_page < PageCount(perPage, m_grid.Rows.Count());
}

// Row 0 is the header.
void GridPages::DrawRow(Printer& printer, const PageBlock& block, double y, std::size_t row) const {
    const double top = y + printer.ScaleY(RowGapMm) / 2;
    for (std::size_t i = 0; i < m_places.size(); ++i) {
        const PrintedGrid::Column& column = m_grid.Columns[i];
        printer.PrintText(block.Left + m_places[i].Left + m_padding, top, m_places[i].Width - 2 * m_padding,
                          row == 0 ? column.Header : m_grid.Rows.Text(row, column.Content));
    }
}

// One line below the header, and where the grid shows lines one between any two cells; none around, where it
// would lie outside by half its breadth.
void GridPages::DrawLines(Printer& printer, const PageBlock& block, std::size_t rows,
                          double rowHeight) const {
    if (m_places.empty()) {
        return;
    }
    const double right = block.Left + m_places.back().Left + m_places.back().Width;
    const std::size_t lines = m_grid.GridLines && rows > 1 ? rows : 1;
    for (std::size_t line = 1; line <= lines; ++line) {
        const double y = block.Top + static_cast<double>(line) * rowHeight;
        printer.PrintLine(block.Left, y, right, y);
    }
    if (!m_grid.GridLines) {
        return;
    }
    const double bottom = block.Top + static_cast<double>(rows + 1) * rowHeight;
    for (std::size_t i = 1; i < m_places.size(); ++i) {
        const double x = block.Left + m_places[i].Left;
        printer.PrintLine(x, block.Top, x, bottom);
    }
}

} // namespace quavernet
