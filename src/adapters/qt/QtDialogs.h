// The system's own dialogs on QFileDialog.
#pragma once

#include "platform/Services.h"

namespace quavernet {

class QtDialogs : public CommonDialogs {
public:
    std::optional<std::string> BrowseForFolder(const std::string& title) override;
};

} // namespace quavernet
