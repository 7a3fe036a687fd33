#include "mainwindow/MainMenu.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "mainwindow/MainMenuTable.h"

namespace quavernet {

MainMenu::MainMenu(QMenuBar* bar) : QObject(bar) {
    for (const MenuEntry& entry : MainMenuTable) {
        if (!entry.Is(MenuEntry::Built)) {
            continue;
        }
        const auto parent = [&]() -> QMenu& { return *m_items.at(entry.Parent)->menu(); };
        const bool top = entry.Parent.empty() || entry.Parent == "popup";
        if (!top && entry.Is(MenuEntry::Separated) && !parent().isEmpty()) {
            parent().addSeparator();
        }
        QAction* action = nullptr;
        if (entry.Is(MenuEntry::Bar)) {
            action = parent().addSeparator();
        } else if (entry.Is(MenuEntry::Menu)) {
            auto* menu = new QMenu(bar);
            action = menu->menuAction();
            if (!top) {
                parent().addMenu(menu);
            } else if (entry.Parent.empty()) {
                bar->addMenu(menu);
            }
        } else {
            action = parent().addAction(QString());
        }
        action->setObjectName(ToQString(entry.Name));
        action->setCheckable(entry.Is(MenuEntry::Checkable));
        action->setEnabled(!entry.Is(MenuEntry::StartsDisabled));
        if (entry.Shortcut != 0) {
            action->setShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(entry.Shortcut)));
        }
        m_items.emplace(entry.Name, action);
    }
}

QAction* MainMenu::Item(std::string_view name) const {
    const auto found = m_items.find(name);
    return found == m_items.end() ? nullptr : found->second;
}

QMenu* MainMenu::Popup(std::string_view name) const {
    QAction* item = Item(name);
    return item == nullptr ? nullptr : item->menu();
}

bool MainMenu::Checked(std::string_view name) const {
    const QAction* item = Item(name);
    return item != nullptr && item->isChecked();
}

void MainMenu::SetChecked(std::string_view name, bool checked) {
    if (QAction* item = Item(name)) {
        item->setChecked(checked);
    }
}

void MainMenu::LoadStrings() {
    for (const MenuEntry& entry : MainMenuTable) {
        QAction* item = Item(entry.Name);
        if (item != nullptr && entry.Text != 0) {
            QString text = ToQString(LoadResString(entry.Text));
            // An ampersand in a text is no keyboard mark.
            item->setText(text.replace(u'&', QStringLiteral("&&")));
        }
    }
}

} // namespace quavernet
