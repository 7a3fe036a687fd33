#include "app/OpenWithShell.h"

#include "app/MainModule.h"
#include "app/ShowBox.h"
#include "app/TextNumbers.h"

namespace quavernet {

void ShowExclamation(std::int32_t textId, std::int32_t titleId) {
    ShowBox(textId, titleId, MsgBox::Icon::Exclamation);
}

void ShowOpenFailure(std::int32_t textId) {
    ShowExclamation(textId, Texts::OpeningNotPossible);
}

void OpenWithShell(const std::string& path) {
    if (services.shell->ShellExecute(path) == Shell::FileMissing) {
        ShowOpenFailure(Texts::FileNotFound);
    }
}

} // namespace quavernet
