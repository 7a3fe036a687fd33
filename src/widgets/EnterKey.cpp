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
    if (event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        const bool isPlain = (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        if (isPlain && KeyCode(key) == Keys::Enter) {
            if (!key.isAutoRepeat()) {
                m_action(); // May close the form.
            }
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace quavernet
