#include "playback/PlayerLabels.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace quavernet {

CutLabel::CutLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

QSize CutLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

void CutLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect place = contentsRect();
    style()->drawItemText(&painter, place, static_cast<int>(Qt::AlignVCenter | Qt::AlignLeft), palette(),
                          isEnabled(), fontMetrics().elidedText(text(), Qt::ElideMiddle, place.width()),
                          foregroundRole());
}

TimeLabel::TimeLabel(QWidget* parent) : QLabel(parent) {
    setFocusPolicy(Qt::TabFocus);
}

void TimeLabel::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        emit DblClick();
    }
}

void TimeLabel::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space) {
        emit DblClick();
    } else {
        QLabel::keyPressEvent(event);
    }
}

void TimeLabel::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(this);
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
}

void TimeLabel::focusInEvent(QFocusEvent* event) {
    QLabel::focusInEvent(event);
    update();
}

void TimeLabel::focusOutEvent(QFocusEvent* event) {
    QLabel::focusOutEvent(event);
    update();
}

} // namespace quavernet
