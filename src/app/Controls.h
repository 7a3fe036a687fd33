// The menu items, toolbar buttons and controls of the main window by their names, for whoever reads a check
// mark or switches one of them. A name that is not on the screen is passed over: its command may come later.
#pragma once

#include <functional>
#include <string_view>

namespace quavernet {

/// A place on the screen, in pixels.
struct ScreenPlace {
    int X = 0;
    int Y = 0;
};

class Controls {
public:
    virtual ~Controls() = default;

    virtual bool Checked(std::string_view item) const = 0; ///< False for an item that is not there.
    virtual void SetChecked(std::string_view item, bool checked) = 0;
    virtual void SetEnabled(std::string_view name, bool enabled) = 0;
    /// Menu items and separators with a name.
    virtual void SetVisible(std::string_view item, bool visible) = 0;
    /// Opens a popup menu; nothing happens if none of its commands exists.
    virtual void PopUp(std::string_view menu, ScreenPlace place) = 0;
};

/// What decides which controls are enabled.
enum class ControlMode {
    Idle,             ///< The window has loaded, or work has ended.
    ScanRunning,      ///< Nothing but "cancel" acts.
    SelectionChanged, ///< The current row of the list decides.
    ListLoaded        ///< No row is selected after a load.
};

/// The one switch for enabled controls.
using SwitchControls = std::function<void(ControlMode mode)>;

} // namespace quavernet
