// The one rule for enabled controls: which are on and off when the window is idle, while a scan runs, when
// the selection has changed and when the list has been loaded. The main window applies it by control name.
#pragma once

#include "app/Controls.h"

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

/// What to switch in their order. `row` is the grid's current row (0: none) and `format` the text of its last
/// column, which decides over conversion; only a changed selection asks for them.
std::vector<ControlSwitch> ControlState(ControlMode mode, std::int32_t row, const std::string& format);

} // namespace quavernet
