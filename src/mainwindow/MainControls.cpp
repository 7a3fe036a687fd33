#include "mainwindow/MainControls.h"

#include "adapters/qt/QtText.h"
#include "mainwindow/MainMenu.h"
#include "mainwindow/MainToolbar.h"

#include <QWidget>

namespace quavernet {

bool MainControls::Checked(std::string_view item) const {
    return m_menu.Checked(item);
}

void MainControls::SetChecked(std::string_view item, bool checked) {
    m_menu.SetChecked(item, checked);
}

void MainControls::SetEnabled(std::string_view name, bool enabled) {
    if (QAction* item = m_menu.Item(name)) {
        item->setEnabled(enabled);
    } else if (QAction* button = m_toolbar.Button(name)) {
        button->setEnabled(enabled);
    } else if (auto* control = m_panes.findChild<QWidget*>(ToQString(name))) {
        control->setEnabled(enabled);
    }
}

void MainControls::SetVisible(std::string_view item, bool visible) {
    if (QAction* action = m_menu.Item(item)) {
        action->setVisible(visible);
    }
}

void MainControls::PopUp(std::string_view menu, ScreenPlace place) {
    if (QMenu* popup = m_menu.Popup(menu)) {
        popup->popup(QPoint(place.X, place.Y));
    }
}

} // namespace quavernet
