// What still has to be done when the display goes away: the toolkit ends the process then, by "exit" under X
// and by "_exit" under Wayland. src/main.cpp makes one.
#pragma once

#include <functional>

namespace quavernet {

class LostDisplay {
public:
    /// `lost` is called inside the end of the process, on the main thread, in whatever handler it was. It
    /// must not return to the message loop, and no window can be shown any more. One object at a time.
    explicit LostDisplay(std::function<void()> lost);
    ~LostDisplay();
    LostDisplay(const LostDisplay&) = delete;
    LostDisplay& operator=(const LostDisplay&) = delete;

private:
    std::function<void()> m_lost;
};

} // namespace quavernet
