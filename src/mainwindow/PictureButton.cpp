#include "mainwindow/PictureButton.h"

#include "mainwindow/Pictures.h"

#include <QMouseEvent>

namespace quavernet {

namespace {
constexpr int PictureSize = 18;
}

PictureButton::PictureButton(const QString& name, std::string key, QWidget* parent)
    : QLabel(parent), m_key(std::move(key)) {
    setObjectName(name);
    setAlignment(Qt::AlignCenter);
    SetAtRest();
}

void PictureButton::Show(const char* suffix) {
    const QIcon::Mode mode = isEnabled() ? QIcon::Normal : QIcon::Disabled;
    setPixmap(Picture(m_key + suffix).pixmap(QSize(PictureSize, PictureSize), devicePixelRatio(), mode));
}

void PictureButton::enterEvent(QEnterEvent*) {
    Show("Green");
    emit Entered();
}

void PictureButton::leaveEvent(QEvent*) {
    SetAtRest();
}

void PictureButton::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        Show("GreenDown");
    }
}

void PictureButton::mouseReleaseEvent(QMouseEvent* event) {
    const bool inside = rect().contains(event->pos());
    Show(inside ? "Green" : "");
    if (inside && event->button() == Qt::LeftButton) {
        emit Clicked();
    }
}

void PictureButton::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange) {
        SetAtRest();
    }
    QLabel::changeEvent(event);
}

} // namespace quavernet
