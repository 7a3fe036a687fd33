// A setting that is no number where one is needed, or one out of range. Thrown by whoever reads the state of
// the main window, told by the event boundary in the second text of its box.
#pragma once

#include "platform/RuntimeError.h"

#include <string>
#include <utility>

namespace quavernet {

class SettingError : public RuntimeError {
public:
    SettingError(std::string name, int number, std::string description)
        : RuntimeError(number, std::move(description)), m_name(std::move(name)) {}

    const std::string& Name() const { return m_name; }

private:
    std::string m_name;
};

/// The setting with its text, where it is kept, and how the program starts again.
std::string SettingFailureText(const SettingError& error);

} // namespace quavernet
