#include "widgets/DragFiles.h"

#include "app/MayAct.h"
#include "widgets/Pictures.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

namespace quavernet {

namespace {

// The toolkit takes the middle of a pointer's picture for the place that it points at: the tip of the arrow
// goes there.
QPixmap Pointer(std::string_view picture, qreal pixelRatio) {
    constexpr QSize Side(48, 48);
    constexpr QSize PictureSide(24, 24);
    constexpr QPoint Tip(5, 3);
    QPixmap pointer(Side * pixelRatio);
    pointer.setDevicePixelRatio(pixelRatio);
    pointer.fill(Qt::transparent);
    QPainter painter(&pointer);
    Picture(picture).paint(&painter, QRect(QPoint(Side.width(), Side.height()) / 2 - Tip, PictureSide));
    return pointer;
}

} // namespace

void DragFiles(QWidget& source, QMimeData* data, std::string_view picture) {
    auto* drag = new QDrag(&source); // Qt deletes it when the other side is through with the data.
    drag->setMimeData(data);
    // The same everywhere, also where nothing takes the files.
    const QPixmap pointer = Pointer(picture, source.devicePixelRatioF());
    drag->setDragCursor(pointer, Qt::CopyAction);
    drag->setDragCursor(pointer, Qt::IgnoreAction);
    drag->exec(Qt::CopyAction);
}

bool MayTakeDrop() {
    return MayAct() && QApplication::activeModalWidget() == nullptr;
}

bool AnswerDrag(QDropEvent& event, bool takes) {
    return AnswerDragIf(event, takes && MayTakeDrop());
}

bool AnswerDragIf(QDropEvent& event, bool takes) {
    const bool accepts = takes && event.possibleActions().testFlag(Qt::CopyAction);
    event.setDropAction(Qt::CopyAction); // Whatever the drop does with it, the source keeps what it has.
    event.setAccepted(accepts);
    return accepts;
}

} // namespace quavernet
