#include "widgets/NeverMinimized.h"

#include <QEvent>
#include <QTimer>
#include <QWidget>

namespace quavernet {

namespace {
constexpr int OwnerIsToldMs = 50;
}

NeverMinimized::NeverMinimized(QWidget* form, Owner owner) : QObject(form), m_owner(owner) {
    form->installEventFilter(this);
}

bool NeverMinimized::eventFilter(QObject* watched, QEvent* event) {
    auto* form = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::WindowStateChange && form != nullptr && form->isMinimized()) {
        if (m_owner == Owner::Held) {
            form->setWindowState(form->windowState() & ~Qt::WindowMinimized);
        } else {
            // A window manager may take it along when its owner is minimised, and tell either of them first.
            QTimer::singleShot(OwnerIsToldMs, form, [form] {
                const QWidget* owner = form->parentWidget();
                if (form->isMinimized() && (owner == nullptr || !owner->window()->isMinimized())) {
                    form->setWindowState(form->windowState() & ~Qt::WindowMinimized);
                }
            });
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace quavernet
