#include "output/PrintGrid.h"

#include "app/LongWork.h"
#include "app/MainModule.h"
#include "platform/Printer.h"

#include <cmath>
#include <utility>
#include <vector>

namespace quavernet {

namespace {

// Millimetres from the upper edge of the page.
constexpr double TitleMm = 10;
constexpr double SubTitleMm = 16;

class Hourglass {
public:
    explicit Hourglass(LongWork& work) : m_work(work) { m_work.SetMousePointer(MousePointer::Hourglass); }
    ~Hourglass() { m_work.SetMousePointer(MousePointer::Default); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

private:
    LongWork& m_work;
};

/// The columns from a number on have no width while this is there.
class HiddenColumns {
public:
    HiddenColumns(PrintableGrid& grid, std::int32_t kept) : m_grid(grid), m_kept(kept) {
        if (kept < 1 || grid.Cols() <= kept) {
            return;
        }
        grid.SetRedraw(false);
        for (std::int32_t column = kept; column < grid.Cols(); ++column) {
            m_widths.push_back(grid.ColWidth(column));
            grid.SetColWidth(column, 0);
        }
    }
    ~HiddenColumns() {
        if (m_widths.empty()) {
            return;
        }
        std::int32_t column = m_kept;
        for (const std::int32_t width : m_widths) {
            m_grid.SetColWidth(column++, width);
        }
        m_grid.SetRedraw(true);
    }
    HiddenColumns(const HiddenColumns&) = delete;
    HiddenColumns& operator=(const HiddenColumns&) = delete;

private:
    PrintableGrid& m_grid;
    std::int32_t m_kept;
    std::vector<std::int32_t> m_widths;
};

std::string TwoDigits(int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

// With points in this order, whatever the regional settings say.
std::string Today() {
    const DateTime now = services.clock->Now();
    return TwoDigits(now.day) + "." + TwoDigits(now.month) + "." + std::to_string(now.year);
}

std::int32_t Whole(double pixels) {
    return static_cast<std::int32_t>(std::lrint(pixels));
}

PageBlock BlockOf(const Printer& printer, const PrintMargins& margins) {
    return {Whole(printer.ScaleX(margins.Left)),
            Whole(printer.ScaleY(margins.Top)),
            Whole(printer.ScaleWidth() - printer.ScaleX(margins.Right)),
            Whole(printer.ScaleHeight() - printer.ScaleY(margins.Bottom)),
            Whole(printer.ScaleWidth()),
            Whole(printer.ScaleHeight())};
}

void PrintHead(Printer& printer, const PageBlock& block, const std::string& title,
               const std::string& subTitle) {
    const double width = block.Right - block.Left;
    if (!title.empty()) {
        printer.PrintText(block.Left, printer.ScaleY(TitleMm), width, title);
    }
    printer.PrintText(block.Left, printer.ScaleY(SubTitleMm), width, subTitle);
}

std::size_t PrintDocument(GridPages pages, const PageBlock& block, const std::string& title,
                          const std::string& subTitle, Printer& printer, LongWork& work) {
    printer.StartDoc(title);
    for (std::size_t page = 1;; ++page) {
        PrintHead(printer, block, title, subTitle);
        if (!pages.DrawNextPage(printer, block)) {
            printer.EndDoc();
            return page;
        }
        work.DoEvents();
        if (work.Cancelled()) {
            printer.KillDoc();
            return 0;
        }
        printer.NewPage();
    }
}

} // namespace

std::size_t PrintGrid(PrintableGrid& grid, const PrintMargins& margins, const std::string& title,
                      const std::string& subTitle, std::int16_t keepColumns, Printer& printer,
                      LongWork& work) {
    const Hourglass hourglass(work);
    const HiddenColumns hidden(grid, keepColumns);
    std::optional<PrintedGrid> contents = grid.Contents();
    if (!contents) {
        return 0;
    }
    // One date for the whole document, also over midnight.
    return PrintDocument(GridPages(*std::move(contents)), BlockOf(printer, margins), title,
                         subTitle.empty() ? Today() : subTitle, printer, work);
}

} // namespace quavernet
