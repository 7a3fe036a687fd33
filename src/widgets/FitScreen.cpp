#include "widgets/FitScreen.h"

#include "widgets/WindowFrame.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace quavernet {

void FitScreen(QWidget& window, QSize wanted) {
    const QRect room = window.screen()->availableGeometry();
    window.resize(wanted.boundedTo(room.size() - WindowFrame));
    if (!window.testAttribute(Qt::WA_Moved)) {
        return; // The desktop finds a place.
    }
    const QSize size = window.size() + WindowFrame;
    const QPoint last(std::max(room.left(), room.right() + 1 - size.width()),
                      std::max(room.top(), room.bottom() + 1 - size.height()));
    window.move(std::clamp(window.x(), room.left(), last.x()), std::clamp(window.y(), room.top(), last.y()));
}

} // namespace quavernet
