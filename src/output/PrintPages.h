// How a table is dealt out to pages: which rows come on which page, and where its columns are. Numbers in,
// numbers out, in any one unit. GridPages paints by it.
#pragma once

#include <cstddef>
#include <vector>

namespace quavernet {

/// Rows of one page, from `First` to before `End`, counted from 0.
struct PageRows {
    std::size_t First = 0;
    std::size_t End = 0;

    bool operator==(const PageRows&) const = default;
};

/// How many rows have room below the header, which is as high as a row. 0 if not even one has.
std::size_t RowsPerPage(double height, double rowHeight);

/// The rows of a page, counted from 0; none beyond the last page. `perPage` is at least 1.
PageRows RowsOfPage(std::size_t page, std::size_t perPage, std::size_t rows);

/// The pages that so many rows take: a table without rows takes one, which has the header. `perPage` is at
/// least 1.
std::size_t PageCount(std::size_t perPage, std::size_t rows);

/// Where a column is, from the left edge of the table.
struct ColumnPlace {
    double Left = 0;
    double Width = 0;

    bool operator==(const ColumnPlace&) const = default;
};

/// To which share of their widths columns shrink so that all have room: 1 where they have, since they never
/// grow, and 0 without any room.
double ShareOfWidths(const std::vector<double>& widths, double room);

/// Places columns of these widths side by side, each shrunk to the share.
std::vector<ColumnPlace> PlaceColumns(const std::vector<double>& widths, double share);

} // namespace quavernet
