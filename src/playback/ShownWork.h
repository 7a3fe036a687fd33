// What the main window shows while a playback command works, for the length of a scope: the hourglass, and
// the name of the work in the status bar. A failure takes them away too.
#pragma once

#include "app/LongWork.h"

#include <string>

namespace quavernet {

class ShownHourglass {
public:
    explicit ShownHourglass(LongWork& work) : m_work(work) {
        m_work.SetMousePointer(MousePointer::Hourglass);
    }
    ~ShownHourglass() { m_work.SetMousePointer(MousePointer::Default); }
    ShownHourglass(const ShownHourglass&) = delete;
    ShownHourglass& operator=(const ShownHourglass&) = delete;

private:
    LongWork& m_work;
};

class ShownPanelText {
public:
    ShownPanelText(LongWork& work, const std::string& text) : m_work(work) {
        m_work.SetPanel(Panel::Scanning, text);
    }
    ~ShownPanelText() { m_work.SetPanel(Panel::Scanning, {}); }
    ShownPanelText(const ShownPanelText&) = delete;
    ShownPanelText& operator=(const ShownPanelText&) = delete;

private:
    LongWork& m_work;
};

} // namespace quavernet
