#include "widgets/EnterKey.h"

#include "widgets/KeyCodes.h"

#include <QWidget>

#include <utility>

namespace quavernet {

EnterKey::EnterKey(QWidget* control, std::function<void()> action)
    : QObject(control), m_action(std::move(action)) {
    control->installEventFilter(this);
}

bool EnterKey::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && KeyCode(*static_cast<QKeyEvent*>(event)) == Keys::Enter) {
        m_action(); // May close the form.
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace quavernet
