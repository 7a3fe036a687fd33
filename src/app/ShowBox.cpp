#include "app/ShowBox.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextNumbers.h"

namespace quavernet {

void ShowBox(std::int32_t textId, std::int32_t titleId, MsgBox::Icon icon) {
    ShowBox(LoadResString(textId), titleId, icon);
}

void ShowBox(const std::string& text, std::int32_t titleId, MsgBox::Icon icon) {
    services.msgBox->Show(text, LoadResString(titleId), icon, MsgBox::Buttons::Ok);
}

std::string FailureText(const RuntimeError& failure) {
    return LoadResString(Texts::ErrorStart) + std::to_string(failure.Number()) + " - " +
           failure.Description();
}

} // namespace quavernet
