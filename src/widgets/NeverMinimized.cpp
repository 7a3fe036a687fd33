#include "widgets/NeverMinimized.h"

#include <QEvent>
#include <QWidget>

namespace quavernet {

NeverMinimized::NeverMinimized(QWidget* form) : QObject(form) {
    form->installEventFilter(this);
}

bool NeverMinimized::eventFilter(QObject* watched, QEvent* event) {
    auto* form = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::WindowStateChange && form != nullptr && form->isMinimized()) {
        form->showNormal();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace quavernet
