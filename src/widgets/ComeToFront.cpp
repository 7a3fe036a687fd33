#include "widgets/ComeToFront.h"

#include <QApplication>
#include <QWidget>

namespace quavernet {

void ComeToFront(QWidget& window) {
    if (window.isMinimized()) {
        window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    }
    window.raise();
    QWidget* modal = QApplication::activeModalWidget();
    QWidget& front = modal != nullptr ? *modal : window;
    front.raise();
    front.activateWindow();
}

} // namespace quavernet
