// Prints the list with a title and the date on each page. Called by the print command.
#pragma once

#include "output/GridPages.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace quavernet {

class LongWork;

/// What is asked of the grid whose rows are printed.
class PrintableGrid {
public:
    virtual ~PrintableGrid() = default;

    virtual std::int32_t Cols() const = 0;
    virtual std::int32_t ColWidth(std::int32_t column) const = 0; ///< Columns count from 0.
    virtual void SetColWidth(std::int32_t column, std::int32_t width) = 0;
    virtual void SetRedraw(bool redraw) = 0;

    /// What it shows now; nothing if it can't be printed.
    virtual std::optional<PrintedGrid> Contents() const = 0;
};

/// In millimetres from the edges of the part of the page that can be printed on.
struct PrintMargins {
    float Left = 0;
    float Top = 0;
    float Right = 0;
    float Bottom = 0;
};

/// Prints the grid as it is now. An empty title is left out; for an empty `subTitle` today's date comes. With
/// a `keepColumns` of at least 1 only so many columns are printed, the first ones. A grid that can't be
/// printed prints nothing, and nobody is told. Lets events run after each page but the last; if the user
/// cancels there the document is dropped. Gives the number of printed pages. Throws RuntimeError if the
/// printer fails, with grid and pointer as they were.
std::size_t PrintGrid(PrintableGrid& grid, const PrintMargins& margins, const std::string& title,
                      const std::string& subTitle, std::int16_t keepColumns, Printer& printer,
                      LongWork& work);

} // namespace quavernet
