// The hourglass over every window of the program, for handlers of dialogs that do something at once.
#pragma once

#include <QGuiApplication>

namespace quavernet {

class HourglassPointer {
public:
    HourglassPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~HourglassPointer() { QGuiApplication::restoreOverrideCursor(); }
    HourglassPointer(const HourglassPointer&) = delete;
    HourglassPointer& operator=(const HourglassPointer&) = delete;
};

} // namespace quavernet
