#include "output/PrintList.h"

#include "app/Controls.h"
#include "app/EndWord.h"
#include "app/LoadResString.h"
#include "app/LongWork.h"
#include "app/MainModule.h"
#include "app/ShowBox.h"
#include "app/TextNumbers.h"
#include "output/PrintGrid.h"
#include "platform/Printer.h"

#include <memory>
#include <optional>
#include <string>

namespace quavernet {

namespace {

constexpr PrintMargins ListMargins{20, 25, 20, 20};

// Null if nothing is to be printed.
std::unique_ptr<Printer> ChoosePrinter(const std::string& title) {
    try {
        std::optional<ChosenPrinter> chosen = services.dialogs->ShowPrinter(title);
        if (!chosen) {
            return nullptr;
        }
        chosen->Target->SetCopies(chosen->Copies);
        chosen->Target->SetOrientation(chosen->Orientation);
        return std::move(chosen->Target);
    } catch (const RuntimeError&) {
        return nullptr;
    }
}

} // namespace

void PrintList(PrintableGrid& grid, LongWork& work, Controls& controls) {
    const std::string title = LoadResString(Texts::ListTitle);
    const std::unique_ptr<Printer> printer = ChoosePrinter(title);
    if (!printer) {
        return;
    }
    std::string failed;
    std::size_t pages = 0;
    EndWord end;
    work.SetPanel(Panel::Scanning, LoadResString(Texts::PrintingList));
    work.SetCancelled(false);
    controls.SetEnabled("cancel", true);
    try {
        pages = PrintGrid(grid, ListMargins, title, {}, 0, *printer, work);
    } catch (const RuntimeError& failure) {
        failed = FailureText(failure);
    }
    controls.SetEnabled("cancel", false);
    work.SetPanel(Panel::Scanning, {});
    if (!failed.empty()) {
        ShowBox(failed, Texts::PrintingNotPossible, MsgBox::Icon::Critical);
    } else if (pages > 0) {
        end.Count(pages, Texts::PrintedPage, Texts::PrintedPages);
        work.TellEnd(end.Done());
    } else if (work.Cancelled()) {
        work.TellEnd(end.Cancelled());
    }
}

} // namespace quavernet
