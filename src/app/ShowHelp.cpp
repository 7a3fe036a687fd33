#include "app/ShowHelp.h"

#include "app/MainModule.h"

namespace quavernet {

std::string HelpFile() {
    if (mainModule.Language == "GER") {
        return "help.chm";
    }
    if (mainModule.Language == "ENG") {
        return "helpE.chm";
    }
    return {};
}

void ShowHelp(const std::string& page) {
    if (services.helpViewer != nullptr) {
        services.helpViewer->DisplayTopic(HelpFile(), page);
    }
}

} // namespace quavernet
