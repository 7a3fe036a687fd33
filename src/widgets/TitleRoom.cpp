#include "widgets/TitleRoom.h"

#include "widgets/WindowFrame.h"

#include <QBoxLayout>
#include <QEvent>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QWidget>

#include <algorithm>

namespace quavernet {

TitleRoom::TitleRoom(QWidget* form) : QObject(form), m_leastWidth(form->minimumWidth()) {
    form->installEventFilter(this);
}

bool TitleRoom::eventFilter(QObject* watched, QEvent* event) {
    auto* form = qobject_cast<QWidget*>(watched);
    if (form != nullptr && (event->type() == QEvent::WindowTitleChange || event->type() == QEvent::Show)) {
        QFont font = QFontDatabase::systemFont(QFontDatabase::TitleFont);
        font.setBold(true); // As many frames have it.
        const int title = QFontMetrics(font).horizontalAdvance(form->windowTitle());
        Widen(*form, title + TitleBarControls);
    }
    return QObject::eventFilter(watched, event);
}

void TitleRoom::Widen(QWidget& form, int width) {
    auto* const box = qobject_cast<QBoxLayout*>(form.layout());
    if (box == nullptr || box->sizeConstraint() != QLayout::SetFixedSize) {
        form.setMinimumWidth(std::max(m_leastWidth, width));
    } else if (width > form.sizeHint().width()) {
        // A form that is as large as what is in it: something in it has to be as wide.
        const QMargins margins = box->contentsMargins();
        box->addStrut(width - margins.left() - margins.right());
    }
}

} // namespace quavernet
