// The key numbers that the logic of the controls speaks in. The main window's controls translate their keys
// here.
#pragma once

#include "app/Keys.h"

#include <QKeyEvent>

namespace quavernet {

/// The number of an arrow, of Enter, Delete or F1; 0 for other keys.
inline int KeyCode(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Left:
        return Keys::Left;
    case Qt::Key_Up:
        return Keys::Up;
    case Qt::Key_Right:
        return Keys::Right;
    case Qt::Key_Down:
        return Keys::Down;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return Keys::Enter;
    case Qt::Key_Delete:
        return Keys::Delete;
    case Qt::Key_F1:
        return Keys::F1;
    default:
        return 0;
    }
}

} // namespace quavernet
