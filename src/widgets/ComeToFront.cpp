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
    // One of the desktop's portal is only stood for by a widget, which is never on the screen.
    const bool isSeen =
        modal != nullptr && modal->isVisible() && !modal->testAttribute(Qt::WA_DontShowOnScreen);
    QWidget& front = isSeen ? *modal : window;
    front.raise();
    front.activateWindow();
}

} // namespace quavernet
