#include "app/LoadResString.h"

#include "app/MainModule.h"
#include "app/Registry.h"

#include <algorithm>

namespace quavernet {

std::optional<std::string_view> clsResources::GetResourceString(std::int32_t id) const {
    const Entry* entry = std::lower_bound(begin(), end(), id,
                                          [](const Entry& e, std::int32_t wanted) { return e.id < wanted; });
    if (entry == end() || entry->id != id) {
        return std::nullopt;
    }
    return entry->text;
}

std::string LoadResString(std::int32_t id) {
    mainModule.Language = GetSettingValue(SettingsApplication, SettingsSection, "Language", "GER");
    const clsResources* resources = nullptr;
    if (mainModule.Language == "GER") {
        resources = &QuavernetGER;
        mainModule.HelpDocument = "Hilfe zum Quavernet.doc";
    } else if (mainModule.Language == "ENG") {
        resources = &QuavernetENG;
        mainModule.HelpDocument = "Help for Quavernet.doc";
    }
    if (resources == nullptr) {
        return "Error : No Local Data";
    }
    if (const auto text = resources->GetResourceString(id)) {
        return std::string(*text);
    }
    return "Not found:" + std::string(id < 0 ? "" : " ") + std::to_string(id);
}

} // namespace quavernet
