#include "output/PrintPages.h"

#include <algorithm>
#include <numeric>

namespace quavernet {

std::size_t RowsPerPage(double height, double rowHeight) {
    if (rowHeight <= 0 || height < 2 * rowHeight) {
        return 0;
    }
    return static_cast<std::size_t>(height / rowHeight) - 1;
}

PageRows RowsOfPage(std::size_t page, std::size_t perPage, std::size_t rows) {
    const std::size_t first = std::min(page * perPage, rows);
    return {first, std::min(first + perPage, rows)};
}

std::size_t PageCount(std::size_t perPage, std::size_t rows) {
    return std::max<std::size_t>(1, (rows + perPage - 1) / perPage);
}

double ShareOfWidths(const std::vector<double>& widths, double room) {
    const double wanted = std::accumulate(widths.begin(), widths.end(), 0.0);
    return wanted > room ? std::max(room, 0.0) / wanted : 1;
}

std::vector<ColumnPlace> PlaceColumns(const std::vector<double>& widths, double share) {
    std::vector<ColumnPlace> places;
    places.reserve(widths.size());
    double left = 0;
    for (const double width : widths) {
        places.push_back({left, width * share});
        left += width * share;
    }
    return places;
}

} // namespace quavernet
