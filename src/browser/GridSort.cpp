#include "browser/GridSort.h"

#include "app/MainModule.h"

namespace quavernet {

SortArrow SortByHeader(std::int32_t column) {
    mainModule.SortDirection = mainModule.SortDirection == "ASC" ? "DESC" : "ASC";
    mainModule.SortInterpret = column == 0;
    mainModule.SortTitle = column == 1;
    mainModule.SortLength = column == 2;
    mainModule.SortSize = column == 3;
    mainModule.SortQuality = column == 4;
    mainModule.SortFormat = column == 5;
    return {column, mainModule.SortDirection == "ASC" ? "ArrowUp" : "ArrowDown"};
}

} // namespace quavernet
