#include "scanner/ScanPathSettings.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/Registry.h"
#include "app/TextHelpers.h"

namespace quavernet {

namespace {

// This dialog keeps its German title in every language, unlike the one of the scan command.
constexpr const char* BrowseTitle = "Wählen Sie einen Ordner";

} // namespace

ScanPathSettings LoadScanPathSettings() {
    return {Val(Setting("ScanpathValue", "0")) == 1, Setting("Scanpath", "")};
}

std::optional<std::string> BrowseScanPath() {
    const std::string path = StripAtNull(services.dialogs->BrowseForFolder(BrowseTitle).value_or(""));
    if (path.empty()) {
        return std::nullopt;
    }
    return path.ends_with('/') ? path : path + "/";
}

bool SaveScanPathSettings(const ScanPathSettings& scanPath) {
    if (scanPath.Scanpath.empty() || !services.fileSystem->FolderExists(scanPath.Scanpath)) {
        services.msgBox->Show(LoadResString(412) + "\n" + LoadResString(413), LoadResString(414),
                              MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok);
        return false;
    }
    SaveSetting("Scanpath", scanPath.Scanpath);
    SaveSetting("ScanpathValue", scanPath.ScanpathValue ? "1" : "0");
    return true;
}

} // namespace quavernet
