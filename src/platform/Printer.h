// One printed document: pages that take texts and lines. The adapter lives in adapters/qt; the print dialog
// hands one out (CommonDialogs::ShowPrinter), and PrintGrid fills it. Tests bring a double.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace quavernet {

/// Places and sizes are pixels of the printer, counted from the upper left corner of the part of the page
/// that it can print on. A document that is neither ended nor killed when the object goes is killed.
class Printer {
public:
    enum class Orientation { Portrait = 1, Landscape = 2 }; ///< By the numbers of the print dialog.

    static constexpr double DefaultFontSize = 10;

    virtual ~Printer() = default;

    /// How often the document is to be printed, from 1. A file holds it once. Throws RuntimeError 482 if the
    /// printer does not take the number.
    virtual void SetCopies(std::int32_t copies) = 0;

    /// Before the document begins. Throws RuntimeError 482 if the printer does not take it.
    virtual void SetOrientation(Orientation orientation) = 0;

    virtual double ScaleWidth() const = 0;               ///< Of the part that can be printed on.
    virtual double ScaleHeight() const = 0;              ///< Of the same.
    virtual double ScaleX(double millimetres) const = 0; ///< Pixels across.
    virtual double ScaleY(double millimetres) const = 0; ///< Pixels down.

    /// Begins a document and its first page; `name` is what a queue of print jobs shows. Throws RuntimeError
    /// 482 if there is no such printer, 75 if the file that stands for one can't be written.
    virtual void StartDoc(const std::string& name) = 0;

    /// How large texts are from here on, in points; DefaultFontSize at the document's begin. Between StartDoc
    /// and the document's end, as all below.
    virtual void SetFontSize(double points) = 0;

    /// Of a line of text at that size.
    virtual double TextHeight() const = 0;

    /// One line of text whose upper left corner is at x and y. What is wider than `width` ends in an ellipsis
    /// after a whole letter; where not even that has room nothing is printed.
    virtual void PrintText(double x, double y, double width, const std::string& text) = 0;

    /// A thin line; half of its breadth lies on either side.
    virtual void PrintLine(double x1, double y1, double x2, double y2) = 0;

    /// Ends the page and begins the next one. Throws RuntimeError 482 if there is none to be had.
    virtual void NewPage() = 0;

    /// Ends the document and hands it over. Throws RuntimeError 482 if the printer has gone; for a file 61 if
    /// the disk is full, 75 if it can't be written otherwise: the old file is there then.
    virtual void EndDoc() = 0;

    /// Drops the document: a file is as it was before. A printer may have pages of it already. Never fails.
    virtual void KillDoc() = 0;
};

/// What the print dialog gives.
struct ChosenPrinter {
    std::unique_ptr<quavernet::Printer> Target; ///< Never null.
    std::int32_t Copies = 1;
    quavernet::Printer::Orientation Orientation = quavernet::Printer::Orientation::Portrait;
};

} // namespace quavernet
