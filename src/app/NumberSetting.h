// Settings that are numbers, as the user's region writes them. The windows read their places here.
#pragma once

#include <cstdint>
#include <string>

namespace quavernet {

/// Throws SettingError 13 for a text that is no number.
double NumberSetting(const std::string& name, const std::string& defaultValue);

/// The same as a whole number; throws SettingError 6 for one out of range.
std::int32_t TwipsSetting(const std::string& name, const std::string& defaultValue);

} // namespace quavernet
