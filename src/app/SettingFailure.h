// A setting that is no number where one is needed, or one out of range. Thrown by whoever reads the state of
// a window or the count of the random play, told by the event boundary in the second text of its box.
#pragma once

#include "platform/RuntimeError.h"

#include <cstdint>
#include <string>
#include <utility>

namespace quavernet {

class SettingError : public RuntimeError {
public:
    SettingError(std::string name, int number, std::string description)
        : RuntimeError(number, std::move(description)), m_name(std::move(name)) {}

    /// With the number of a text that says how to set it right in the program itself, for a setting that is
    /// not read at the start.
    SettingError(std::string name, int number, std::string description, std::int32_t advice)
        : RuntimeError(number, std::move(description)), m_name(std::move(name)), m_advice(advice) {}

    const std::string& Name() const { return m_name; }
    std::int32_t Advice() const { return m_advice; } ///< 0 without one.

private:
    std::string m_name;
    std::int32_t m_advice = 0;
};

/// The setting with its text, and its advice; without one, where it is kept and how the program starts again.
std::string SettingFailureText(const SettingError& error);

} // namespace quavernet
