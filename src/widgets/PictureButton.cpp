#include "widgets/PictureButton.h"

#include "widgets/Pictures.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace quavernet {

namespace {
constexpr int PictureSize = 18;
}

PictureButton::PictureButton(const QString& name, std::string key, QWidget* parent)
    : QAbstractButton(parent), m_key(std::move(key)) {
    setObjectName(name);
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
}

void PictureButton::SetAtRest() {
    m_hovered = false;
    update();
}

std::string PictureButton::PictureKey() const {
    if (isDown()) {
        return m_key + "GreenDown";
    }
    return m_hovered && isEnabled() ? m_key + "Green" : m_key;
}

QSize PictureButton::sizeHint() const {
    return {PictureSize + 2, PictureSize + 2};
}

void PictureButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QRect place(0, 0, PictureSize, PictureSize);
    place.moveCenter(rect().center());
    Picture(PictureKey())
        .paint(&painter, place, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
}

void PictureButton::mouseMoveEvent(QMouseEvent* event) {
    m_hovered = true;
    emit Entered();
    update();
    QAbstractButton::mouseMoveEvent(event);
}

void PictureButton::leaveEvent(QEvent* event) {
    SetAtRest();
    QAbstractButton::leaveEvent(event);
}

} // namespace quavernet
