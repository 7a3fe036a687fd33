#include "browser/GridCommands.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/Registry.h"
#include "platform/RuntimeError.h"

namespace quavernet {

namespace {

void OpenWithSystem(const std::string& path) {
    const int result = services.shell->ShellExecute(path);
    const auto tell = [](int text) {
        services.msgBox->Show(LoadResString(text), LoadResString(329), MsgBox::Icon::Exclamation,
                              MsgBox::Buttons::Ok);
    };
    if (result == 2 || result == 5) {
        tell(330);
    } else if (result == 3) {
        tell(392);
    }
}

} // namespace

void SortByColumn(int column) {
    mainModule.SortDirection = mainModule.SortDirection == "ASC" ? "DESC" : "ASC";
    mainModule.SortInterpret = column == 0;
    mainModule.SortTitle = column == 1;
    mainModule.SortLength = column == 2;
    mainModule.SortSize = column == 3;
    mainModule.SortQuality = column == 4;
    mainModule.SortFormat = column == 5;
}

void PlayRowExternally(std::int32_t row, std::int64_t fileId) {
    try {
        OpenWithSystem(mainModule.FilePaths.Item(row));
        mainModule.Connection->Execute("Update Files Set Hits = Hits + 1 where File_id = " +
                                       std::to_string(fileId));
    } catch (const RuntimeError&) {
        // A play that can't be started or counted is no reason to disturb the user.
    }
}

bool SearchBoxClicked(const char* setting, bool nowChecked, bool otherChecked) {
    const bool cleared = !nowChecked && otherChecked;
    SaveSettingValue(SettingsApplication, SettingsSection, setting, cleared ? "0" : "1");
    return !cleared;
}

} // namespace quavernet
