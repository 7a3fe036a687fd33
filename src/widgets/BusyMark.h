// Marks a window while a handler of its own lets events run. Dialogs set it; windows that work beside an open
// dialog ask.
#pragma once

#include <QVariant>
#include <QWidget>

namespace quavernet {

inline constexpr const char* BusyProperty = "Busy";

class BusyMark {
public:
    explicit BusyMark(QWidget& window) : m_window(window) { m_window.setProperty(BusyProperty, true); }
    ~BusyMark() { m_window.setProperty(BusyProperty, false); }
    BusyMark(const BusyMark&) = delete;
    BusyMark& operator=(const BusyMark&) = delete;

private:
    QWidget& m_window;
};

inline bool IsBusy(const QWidget& window) {
    return window.property(BusyProperty).toBool();
}

} // namespace quavernet
