#include "mainwindow/MenuKeys.h"

#include "mainwindow/MainMenu.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QShortcut>
#include <QWidget>

namespace quavernet {

MenuKeys::MenuKeys(QWidget& window, MainMenu& menu) : QObject(&window), m_window(window) {
    const auto* bar = new QShortcut(Qt::Key_F10, &window);
    connect(bar, &QShortcut::activated, &menu, &MainMenu::OpenFirst);
    const auto* context = new QShortcut(Qt::SHIFT | Qt::Key_F10, &window);
    connect(context, &QShortcut::activated, this, &MenuKeys::OpenContextMenu);
}

void MenuKeys::OpenContextMenu() {
    QWidget* const focused = m_window.focusWidget();
    if (focused == nullptr) {
        return;
    }
    const QPoint place = focused->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, place, focused->mapToGlobal(place));
    QCoreApplication::sendEvent(focused, &event);
}

} // namespace quavernet
