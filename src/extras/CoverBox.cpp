#include "extras/CoverBox.h"

#include "adapters/qt/FileUris.h"
#include "extras/CoverPicture.h"
#include "widgets/Colours.h"
#include "widgets/DragFiles.h"
#include "widgets/Twips.h"

#include <QApplication>
#include <QDropEvent>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace quavernet {

namespace {

constexpr int Side = ToPixels(5500);

// The pixels of the screen that the box covers. At a fractional scale its sides lie between two of them.
QRect PixelsOf(const QRect& box, const QTransform& toPixels) {
    const QRectF exact = toPixels.mapRect(QRectF(box));
    const auto round = [](qreal value) { return static_cast<int>(std::lround(value)); };
    return {QPoint(round(exact.left()), round(exact.top())),
            QPoint(round(exact.right()) - 1, round(exact.bottom()) - 1)};
}

} // namespace

CoverBox::CoverBox(QWidget* parent) : QWidget(parent) {
    setFixedSize(Side, Side);
    setAcceptDrops(true);
}

QSize CoverBox::sizeHint() const {
    return {Side, Side};
}

void CoverBox::RemovePicture() {
    m_path.clear();
    m_picture = {};
    m_readFor = {};
    update();
}

void CoverBox::ShowPicture(const std::string& path) {
    m_path = path;
    m_readFor = {};
    update();
}

bool CoverBox::LoadPicture(const std::string& path) {
    const QSize pixels = (QSizeF(size()) * devicePixelRatioF()).toSize();
    QImage picture = ReadCoverPicture(path, pixels);
    if (picture.isNull()) {
        return false;
    }
    m_path = path;
    m_picture = std::move(picture);
    m_readFor = pixels;
    update();
    return true;
}

// Again when the box has come to a screen of another scale. If the file has gone by then, the old one is
// stretched.
void CoverBox::ReadPicture(const QSize& pixels) {
    if (m_path.empty() || m_readFor == pixels) {
        return;
    }
    m_readFor = pixels;
    QImage picture = ReadCoverPicture(m_path, pixels);
    if (!picture.isNull()) {
        m_picture = std::move(picture);
    }
}

// Pixel by pixel: drawn at the exact sides of the box a picture would be blurred where they lie between two.
void CoverBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect pixels = PixelsOf(rect(), painter.deviceTransform());
    ReadPicture(pixels.size());
    if (m_picture.isNull()) {
        painter.fillRect(rect(), palette().base());
        painter.setPen(ColourOf(OwnColour::Edge, palette()));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform, m_picture.size() != pixels.size());
    painter.drawImage(painter.deviceTransform().inverted().mapRect(QRectF(pixels)), m_picture);
}

void CoverBox::mousePressEvent(QMouseEvent* event) {
    m_mayDrag = event->button() == Qt::LeftButton;
    m_pressed = event->position().toPoint();
}

void CoverBox::mouseMoveEvent(QMouseEvent* event) {
    const int distance = (event->position().toPoint() - m_pressed).manhattanLength();
    if (m_mayDrag && event->buttons().testFlag(Qt::LeftButton) &&
        distance >= QApplication::startDragDistance()) {
        m_mayDrag = false;
        emit DragBegins();
    }
}

void CoverBox::mouseDoubleClickEvent(QMouseEvent* event) {
    m_mayDrag = false;
    if (event->button() == Qt::LeftButton) {
        emit DoubleClicked();
    }
}

void CoverBox::dragEnterEvent(QDragEnterEvent* event) {
    dragMoveEvent(event);
}

// What was dragged out of this box and is let go here again was no wish for another image.
void CoverBox::dragMoveEvent(QDragMoveEvent* event) {
    AnswerDragIf(*event, event->source() != this && TakesDrop() && !LocalFiles(*event->mimeData()).empty());
}

void CoverBox::dropEvent(QDropEvent* event) {
    const std::vector<std::string> paths = LocalFiles(*event->mimeData());
    if (AnswerDragIf(*event, event->source() != this && TakesDrop() && !paths.empty())) {
        emit this->FileDropped(paths.front());
    }
}

} // namespace quavernet
