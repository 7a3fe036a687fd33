// What the desktop shows of the program outside of its windows: notes, and progress on its entry in the task
// bar. The adapter lives in adapters/dbus; long work reaches it through its observer.
#pragma once

#include <functional>
#include <string>

namespace quavernet {

/// The name of the program to the desktop: of its desktop file, its windows and its icon.
inline constexpr const char* DesktopId = "io.greyfinch.Quavernet";

/// Plain texts, UTF-8.
struct DesktopNote {
    std::string Title;
    std::string Text;
    std::string ClickName;         ///< What a click does, for desktops that offer it by a button.
    std::function<void()> Clicked; ///< From the message loop, as long as the desktop shows the note.
};

class Desktop {
public:
    virtual ~Desktop() = default;

    /// A note beside all windows, in place of the one before. Never fails and never waits: a desktop that
    /// shows no notes shows none.
    virtual void Notify(const DesktopNote& note) = 0;

    /// How far the work is, 0 to 1. Called a few times a second at most. Never fails and never waits.
    virtual void ShowProgress(double share) = 0;
    virtual void HideProgress() = 0;
};

} // namespace quavernet
