// grdMp3 as its printing sees it. Made by the print command.
#pragma once

#include "output/PrintGrid.h"

namespace quavernet {

class GridView;

class GridToPrint : public PrintableGrid {
public:
    explicit GridToPrint(GridView& grid) : m_grid(grid) {}

    std::int32_t Cols() const override;
    std::int32_t ColWidth(std::int32_t column) const override;
    void SetColWidth(std::int32_t column, std::int32_t width) override;
    void SetRedraw(bool redraw) override;
    std::optional<PrintedGrid> Contents() const override;

private:
    GridView& m_grid;
};

} // namespace quavernet
