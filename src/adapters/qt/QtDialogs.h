// The system's own dialogs on QFileDialog and QPrintDialog.
#pragma once

#include "platform/Printer.h"
#include "platform/Services.h"

namespace quavernet {

class QtDialogs : public CommonDialogs {
public:
    std::optional<std::string> BrowseForFolder(const std::string& title) override;
    std::optional<std::string> ShowOpen(const std::string& filter, const std::string& folder) override;
    std::optional<std::string> ShowSave(const std::string& filter, const std::string& folder) override;
    std::optional<ChosenPrinter> ShowPrinter(const std::string& name) override;
};

} // namespace quavernet
