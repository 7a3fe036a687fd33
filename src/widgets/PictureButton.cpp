#include "widgets/PictureButton.h"

#include "widgets/Pictures.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include <utility>

namespace quavernet {

namespace {
constexpr int SmallSide = 18; // Beside fields and texts.
}

PictureButton::PictureButton(QWidget* parent) : QAbstractButton(parent), m_side(SmallSide) {
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

PictureButton::PictureButton(const QString& name, PictureLooks looks, QWidget* parent)
    : PictureButton(parent) {
    setObjectName(name);
    SetLooks(std::move(looks), SmallSide);
}

void PictureButton::SetLooks(PictureLooks looks, int side) {
    m_looks = std::move(looks);
    m_side = side;
    updateGeometry();
    update();
}

void PictureButton::SetScale(double scale) {
    SetLooks(m_looks, static_cast<int>(SmallSide * scale));
}

void PictureButton::SetAtRest() {
    SetLook(Look::Rest);
}

void PictureButton::SetLook(Look look) {
    m_look = look;
    update();
}

std::string PictureButton::PictureKey() const {
    const bool isDownByKey = isDown() && !m_mouseIsDown;
    if (isDownByKey || (m_look == Look::Pressed && isEnabled())) {
        return m_looks.Pressed;
    }
    return m_look == Look::Hovered && isEnabled() ? m_looks.Hovered : m_looks.Rest;
}

QSize PictureButton::sizeHint() const {
    // A ninth around the picture, so that a large one has room for the focus frame too.
    const int margin = m_side / 9;
    return {m_side + margin, m_side + margin};
}

void PictureButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QRect place(0, 0, m_side, m_side);
    place.moveCenter(rect().center());
    Picture(PictureKey())
        .paint(&painter, place, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
}

void PictureButton::mousePressEvent(QMouseEvent* event) {
    m_mouseIsDown = true;
    SetLook(Look::Pressed);
    QAbstractButton::mousePressEvent(event);
    event->accept(); // Also a button that does not click.
}

void PictureButton::mouseMoveEvent(QMouseEvent* event) {
    SetLook(Look::Hovered);
    emit Entered();
    QAbstractButton::mouseMoveEvent(event);
    event->accept(); // What is around the button, and sends it to rest, does not get the movement too.
}

void PictureButton::mouseReleaseEvent(QMouseEvent* event) {
    // Before the click: its command may show other windows, and the mouse be elsewhere when it returns.
    m_mouseIsDown = event->buttons() != Qt::NoButton;
    SetLook(Look::Hovered);
    QAbstractButton::mouseReleaseEvent(event);
}

void PictureButton::leaveEvent(QEvent* event) {
    if (m_restsOnLeave) {
        SetAtRest();
    }
    QAbstractButton::leaveEvent(event);
}

} // namespace quavernet
