// Message boxes on QMessageBox, owned by the active window.
#pragma once

#include "platform/Services.h"

namespace quavernet {

class QtMsgBox : public MsgBox {
public:
    Answer Show(const std::string& text, const std::string& title, Icon icon, Buttons buttons) override;
    Answer ShowWithDetails(const std::string& text, const std::string& details, const std::string& title,
                           Icon icon, Buttons buttons) override;
};

} // namespace quavernet
