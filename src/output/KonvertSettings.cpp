#include "output/KonvertSettings.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/NumberSetting.h"
#include "app/Registry.h"
#include "app/SettingFailure.h"
#include "app/TextHelpers.h"
#include "app/TextNumbers.h"

namespace quavernet {

namespace {

void SaveCheckBox(const std::string& name, bool checked) {
    SaveSetting(name, checked ? "1" : "0");
}

} // namespace

bool CheckBoxSetting(const std::string& name, const std::string& defaultValue) {
    const double number = NumberSetting(name, defaultValue);
    try {
        return Narrow16(number) == 1;
    } catch (const RuntimeError& error) {
        throw SettingError(name, error.Number(), error.Description());
    }
}

KonvertOptions LoadKonvertOptions() {
    KonvertOptions options;
    options.txtTarget = Setting(Konvert::Target, "");
    options.cboBitrates = Setting(Konvert::Bitrate, Konvert::FirstBitrate);
    const std::string monoStereo = Setting(Konvert::MonoStereo, Konvert::Stereo);
    options.optStereo = monoStereo == Konvert::Stereo;
    options.optMono = monoStereo == Konvert::Mono;
    options.chkCombine = CheckBoxSetting(Konvert::Combine, "0");
    options.chkNoGap = CheckBoxSetting(Konvert::NoGap, "0");
    options.chkDelete = CheckBoxSetting(Konvert::Delete, "0");
    options.chkShowKonvert = CheckBoxSetting(Konvert::Show, "0");
    return options;
}

void SaveKonvertOptions(const KonvertOptions& options) {
    SaveSetting(Konvert::Bitrate, options.cboBitrates);
    SaveSetting(Konvert::Target, options.txtTarget);
    SaveSetting(Konvert::MonoStereo, options.optMono ? Konvert::Mono : Konvert::Stereo);
    SaveCheckBox(Konvert::Combine, options.chkCombine);
    SaveCheckBox(Konvert::NoGap, options.chkNoGap);
    SaveCheckBox(Konvert::Delete, options.chkDelete);
    SaveCheckBox(Konvert::Show, options.chkShowKonvert);
}

std::optional<std::string> BrowseTarget() {
    const std::string path =
        StripAtNull(services.dialogs->BrowseForFolder(LoadResString(Texts::ChooseFolder)).value_or(""));
    if (path.empty()) {
        return std::nullopt;
    }
    return path.ends_with('/') ? path : path + "/";
}

} // namespace quavernet
