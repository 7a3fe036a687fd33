#include "adapters/qt/QtEvents.h"

#include <QCoreApplication>

namespace quavernet {

namespace {
constexpr qint64 IntervalMs = 5;
}

void QtEvents::DoEvents() {
    if (m_sinceLast.isValid() && m_sinceLast.elapsed() < IntervalMs) {
        return;
    }
    QCoreApplication::processEvents();
    // Counted from the end, so that slow painting can't eat the whole of a long operation.
    m_sinceLast.start();
}

} // namespace quavernet
