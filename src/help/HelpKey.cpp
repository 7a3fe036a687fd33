#include "help/HelpKey.h"

#include "adapters/qt/QtText.h"
#include "app/HelpPages.h"
#include "app/ShowHelp.h"

#include <QChildEvent>
#include <QKeyEvent>
#include <QWidget>

namespace quavernet {

namespace {

/// The line of the nearest control that has one of its own; otherwise the line of the form.
const HelpPage* PageOf(const std::string& form, const QObject* control) {
    for (; control != nullptr; control = control->parent()) {
        const std::string name = FromQString(control->objectName());
        if (name == form) {
            break;
        }
        if (!name.empty()) {
            if (const HelpPage* line = FindHelpPage(form, name)) {
                return line;
            }
        }
    }
    return FindHelpPage(form, "");
}

/// Lists that drop down belong to their control; any other window is a form, with a key of its own.
bool IsControl(const QObject* object) {
    const auto* widget = qobject_cast<const QWidget*>(object);
    return widget != nullptr && (!widget->isWindow() || widget->windowType() == Qt::Popup);
}

} // namespace

HelpKey::HelpKey(QWidget* form) : QObject(form), m_form(FromQString(form->objectName())) {
    Watch(form);
}

void HelpKey::Watch(QObject* object) {
    object->installEventFilter(this);
    for (QObject* child : object->children()) {
        if (IsControl(child)) {
            Watch(child);
        }
    }
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::ChildPolished: {
        QObject* child = static_cast<QChildEvent*>(event)->child();
        if (IsControl(child)) {
            Watch(child);
        }
        return false;
    }
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() != Qt::Key_F1) {
            return false;
        }
        if (!key->isAutoRepeat()) {
            event->type() == QEvent::KeyPress ? Press(watched) : Release(watched);
        }
        return true;
    }
    default:
        return false;
    }
}

void HelpKey::Press(const QObject* watched) const {
    const HelpPage* line = PageOf(m_form, watched);
    if (line != nullptr && !line->OnKeyUp) {
        ShowHelp(std::string(line->Page));
    }
}

void HelpKey::Release(const QObject* watched) const {
    const HelpPage* line = PageOf(m_form, watched);
    if (line != nullptr && line->OnKeyUp) {
        ShowHelp(std::string(line->Page));
    }
}

} // namespace quavernet
