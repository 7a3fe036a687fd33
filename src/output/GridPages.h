// The pages of the list: its visible columns with their header, page by page, on any printer. PrintGrid asks
// for one page after the other.
#pragma once

#include "browser/ListQuery.h"
#include "output/PrintPages.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quavernet {

class Printer;

/// The list as it was when its printing began: rows and widths may change while it prints.
struct PrintedGrid {
    struct Column {
        ListColumn Content;
        std::string Header;
        double Width =
            0; ///< In millimetres at letters of 10 points; above 0, since hidden columns are left out.
    };
    std::vector<Column> Columns;
    ListRows Rows;
    bool GridLines = false;
};

/// Where a page may be painted on, in whole pixels of the printer.
struct PageBlock {
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Right = 0;
    std::int32_t Bottom = 0;
    std::int32_t Width = 0; ///< Of the whole page that can be printed on, as is the next one.
    std::int32_t Height = 0;
};

/// Paints a grid's pages in their order.
class GridPages {
public:
    explicit GridPages(PrintedGrid grid) : m_grid(std::move(grid)) {}

    /// Paints the header and the next rows into the block. False if no rows are left after them, so that no
    /// page is begun in vain. A list without rows gives one page with the header; a block in which header and
    /// one row have no room stays empty, and nothing is left then.
    bool DrawNextPage(Printer& printer, const PageBlock& block);

private:
    void DrawRow(Printer& printer, const PageBlock& block, double y, std::size_t row) const;
    void DrawLines(Printer& printer, const PageBlock& block, std::size_t rows, double rowHeight) const;

    PrintedGrid m_grid;
    std::vector<ColumnPlace> m_places;
    double m_padding = 0;
    std::size_t m_page = 0;
};

} // namespace quavernet
