// One setting by name, as text. Called by whoever reads or keeps one: every reader passes its own default at
// the call site; a missing value is never an error and a default is never stored.
#pragma once

#include <string>

namespace quavernet {

/// Where the program keeps all of its settings.
inline const std::string SettingsApplication = "Greyfinch Labs\\Quavernet";
inline const std::string SettingsSection = "Settings";

/// The text stored under the name, or `defaultValue` if none ever was.
std::string GetSettingValue(const std::string& application, const std::string& section,
                            const std::string& name, const std::string& defaultValue);

/// Stores the text; a failed write leaves the old value.
void SaveSettingValue(const std::string& application, const std::string& section, const std::string& name,
                      const std::string& value);

/// The same for a setting of the program's own.
std::string Setting(const std::string& name, const std::string& defaultValue);
void SaveSetting(const std::string& name, const std::string& value);

} // namespace quavernet
