// A printer that notes what it is told, and a grid of columns and rows that is printed on it.
#pragma once

#include "output/PrintGrid.h"
#include "platform/Printer.h"
#include "platform/RuntimeError.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quavernet::test {

struct PrintedText {
    double x = 0;
    double y = 0;
    double width = 0;
    std::string text;
    double points = 0;
};

struct PrintedLine {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;

    bool operator==(const PrintedLine&) const = default;
};

/// What reached the paper, and the calls in their order. It outlives the printer.
struct Paper {
    std::vector<std::vector<PrintedText>> pages;
    std::vector<std::vector<PrintedLine>> lines; ///< Of each page.
    std::vector<std::string> calls;              ///< All but texts and lines.
    std::string failing;                         ///< The call that fails.
    int fails = ErrorNumber::PrinterError;       ///< With this number.

    /// Texts of a page, in the order in which they were printed.
    std::vector<std::string> Texts(std::size_t page) const {
        std::vector<std::string> texts;
        for (const PrintedText& text : pages.at(page)) {
            texts.push_back(text.text);
        }
        return texts;
    }
};

/// Ten pixels a millimetre across, twenty down; a line of text is 4 mm high.
class PrinterDouble : public Printer {
public:
    explicit PrinterDouble(Paper& paper) : m_paper(paper) {}

    void SetCopies(std::int32_t copies) override { Call("copies " + std::to_string(copies)); }
    void SetOrientation(Orientation orientation) override {
        Call("orientation " + std::to_string(static_cast<int>(orientation)));
    }
    double ScaleWidth() const override { return width; }
    double ScaleHeight() const override { return height; }
    double ScaleX(double millimetres) const override { return 10 * millimetres; }
    double ScaleY(double millimetres) const override { return 20 * millimetres; }
    void StartDoc(const std::string& name) override {
        Call("start " + name);
        Page();
    }
    void SetFontSize(double points) override { m_points = points; }
    double TextHeight() const override { return 8 * m_points; }
    void PrintText(double x, double y, double width_, const std::string& text) override {
        m_paper.pages.back().push_back({x, y, width_, text, m_points});
    }
    void PrintLine(double x1, double y1, double x2, double y2) override {
        m_paper.lines.back().push_back({x1, y1, x2, y2});
    }
    void NewPage() override {
        Call("page");
        Page();
    }
    void EndDoc() override { Call("end"); }
    void KillDoc() override { Call("kill"); }

    double width = 2000; ///< A page of 200 by 280 millimetres.
    double height = 5600;

private:
    void Call(const std::string& call) {
        m_paper.calls.push_back(call);
        if (!m_paper.failing.empty() && call.starts_with(m_paper.failing)) {
            throw RuntimeError(m_paper.fails, "Printer error");
        }
    }
    void Page() {
        m_paper.pages.emplace_back();
        m_paper.lines.emplace_back();
    }

    Paper& m_paper;
    double m_points = DefaultFontSize;
};

/// The rows of the list as a load gives them: performer "P1", title "T1", 1 second, and so on.
inline ListRows NumberedRows(std::size_t count) {
    auto data = std::make_shared<ListData>();
    data->Block = ADODB::RowBlock(9);
    for (std::size_t row = 1; row <= count; ++row) {
        const std::string number = std::to_string(row);
        data->Block.AddText("/music/" + number + ".mp3");
        data->Block.AddInteger(1048576);
        data->Block.AddText("T" + number);
        data->Block.AddText("P" + number);
        data->Block.AddInteger(128);
        data->Block.AddInteger(static_cast<std::int64_t>(row));
        data->Block.AddInteger(static_cast<std::int64_t>(row % 60));
        data->Block.AddText(number + ".mp3");
        data->Block.AddText("mp3");
        data->Listed.push_back(static_cast<std::uint32_t>(row - 1));
    }
    return ListRows(data);
}

/// A grid of two columns, "Performer" and "Title", 40 millimetres each, which notes what is done with it.
class PrintableGridDouble : public PrintableGrid {
public:
    explicit PrintableGridDouble(std::vector<std::string>& calls) : m_calls(calls) {}

    std::int32_t Cols() const override { return static_cast<std::int32_t>(widths.size()); }
    std::int32_t ColWidth(std::int32_t column) const override {
        return widths.at(static_cast<std::size_t>(column));
    }
    void SetColWidth(std::int32_t column, std::int32_t width) override {
        m_calls.push_back("width " + std::to_string(column) + " " + std::to_string(width));
        widths.at(static_cast<std::size_t>(column)) = width;
    }
    void SetRedraw(bool redraw) override { m_calls.push_back(redraw ? "redraw on" : "redraw off"); }
    std::optional<PrintedGrid> Contents() const override {
        m_calls.emplace_back("contents");
        return contents;
    }

    std::vector<std::int32_t> widths{3000, 3000};
    std::optional<PrintedGrid> contents{PrintedGrid{
        {{ListColumn::Interpret, "Performer", 40}, {ListColumn::Title, "Title", 40}}, NumberedRows(2)}};

private:
    std::vector<std::string>& m_calls;
};

} // namespace quavernet::test
