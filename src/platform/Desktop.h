// What the desktop shows of the program outside of its windows: notes, and progress on its entry in the task
// bar. The adapter lives in adapters/dbus; long work reaches it through its observer.
#pragma once

#include <string>

namespace quavernet {

class Desktop {
public:
    virtual ~Desktop() = default;

    /// A note beside all windows, in place of the one before. Plain text, UTF-8. Never fails and never waits:
    /// a desktop that shows no notes shows none.
    virtual void Notify(const std::string& title, const std::string& text) = 0;

    /// How far the work is, 0 to 1. Called a few times a second at most. Never fails and never waits.
    virtual void ShowProgress(double share) = 0;
    virtual void HideProgress() = 0;
};

} // namespace quavernet
