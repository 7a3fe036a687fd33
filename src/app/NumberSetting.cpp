#include "app/NumberSetting.h"

#include "app/MainModule.h"
#include "app/Registry.h"
#include "app/SettingFailure.h"

namespace quavernet {

double NumberSetting(const std::string& name, const std::string& defaultValue) {
    if (const auto number = ParseNumber(Setting(name, defaultValue), services.regional)) {
        return *number;
    }
    throw SettingError(name, ErrorNumber::TypeMismatch, "Type mismatch");
}

std::int32_t TwipsSetting(const std::string& name, const std::string& defaultValue) {
    const double number = NumberSetting(name, defaultValue);
    try {
        return Narrow32(number);
    } catch (const RuntimeError& error) {
        throw SettingError(name, error.Number(), error.Description());
    }
}

} // namespace quavernet
