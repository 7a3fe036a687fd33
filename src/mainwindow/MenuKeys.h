// The keys of the menus that the toolkit leaves out on some desktops: F10 opens the menu bar, Shift+F10 the
// context menu of the control that has the keyboard, as the menu key does. Made by frmMain.
#pragma once

#include <QObject>

class QWidget;

namespace quavernet {

class MainMenu;

class MenuKeys : public QObject {
    Q_OBJECT
public:
    /// The window owns the object.
    MenuKeys(QWidget& window, MainMenu& menu);

private:
    void OpenContextMenu();

    QWidget& m_window;
};

} // namespace quavernet
