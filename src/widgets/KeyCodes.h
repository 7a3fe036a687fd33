// The key numbers that the logic of the controls speaks in. The main window's controls translate their keys
// here.
#pragma once

#include <QKeyEvent>

namespace quavernet {

/// 37 to 40 for the arrows (left, up, right, down), 13 for Enter, 46 for Delete, 112 for F1; 0 for others.
inline int KeyCode(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Delete:
        return 46;
    case Qt::Key_F1:
        return 112;
    default:
        return 0;
    }
}

} // namespace quavernet
