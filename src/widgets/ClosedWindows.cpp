#include "widgets/ClosedWindows.h"

#include <QAbstractEventDispatcher>
#include <QThread>

#include <utility>

namespace quavernet {

ClosedWindows::ClosedWindows() {
    // Pending events are run without waiting, and a dialog waits in a loop of its own inside the first one:
    // who waits in the first loop is nobody's handler.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, [this] {
        if (QThread::currentThread()->loopLevel() == 1) {
            std::exchange(m_windows, {}).clear();
        }
    });
}

ClosedWindows::~ClosedWindows() = default;

void ClosedWindows::Add(std::unique_ptr<QWidget> window) {
    m_windows.push_back(std::move(window));
}

} // namespace quavernet
