#include "app/Registry.h"

#include "app/MainModule.h"

namespace quavernet {

std::string GetSettingValue(const std::string& application, const std::string& section,
                            const std::string& name, const std::string& defaultValue) {
    return services.settings->Query(application, section, name).value_or(defaultValue);
}

void SaveSettingValue(const std::string& application, const std::string& section, const std::string& name,
                      const std::string& value) {
    services.settings->Set(application, section, name, value);
}

std::string Setting(const std::string& name, const std::string& defaultValue) {
    return GetSettingValue(SettingsApplication, SettingsSection, name, defaultValue);
}

void SaveSetting(const std::string& name, const std::string& value) {
    SaveSettingValue(SettingsApplication, SettingsSection, name, value);
}

} // namespace quavernet
