// The one rule for enabled controls: which are on and off when the window is idle, while a scan runs, and
// when the selection has changed. The main window applies it by control name.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quavernet {

struct ControlSwitch {
    std::string_view Name; ///< Control or menu item, or the key of a toolbar button.
    bool Enabled;

    bool operator==(const ControlSwitch&) const = default;
};

/// Mode 0 is idle, 1 a running scan, 3 a changed selection; others switch nothing. `row` is the grid's
/// current row (0: none) and `format` the text of its last column, which decides over conversion.
std::vector<ControlSwitch> ControlState(std::int16_t mode, std::int32_t row, const std::string& format);

} // namespace quavernet
