#include "app/SettingFailure.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/Registry.h"
#include "app/TextHelpers.h"

namespace quavernet {

namespace {

constexpr std::size_t LongestShown = 80; // Characters: enough to find the line by.

} // namespace

std::string SettingFailureText(const SettingError& error) {
    const std::string value = Setting(error.Name(), "");
    std::string text =
        LoadResString(773) + error.Name() + "=" + std::string(LeftCharacters(value, LongestShown));
    if (error.Advice() != 0) {
        return text + "\n\n" + LoadResString(error.Advice());
    }
    const std::string place = services.settings->Place();
    if (!place.empty()) {
        text += "\n" + LoadResString(774) + place + "\n\n" + LoadResString(775);
    }
    return text;
}

} // namespace quavernet
