#include "app/OpenWithShell.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextNumbers.h"

namespace quavernet {

void ShowExclamation(std::int32_t textId, std::int32_t titleId) {
    services.msgBox->Show(LoadResString(textId), LoadResString(titleId), MsgBox::Icon::Exclamation,
                          MsgBox::Buttons::Ok);
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
