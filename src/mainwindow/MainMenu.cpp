#include "mainwindow/MainMenu.h"

#include "adapters/qt/QtText.h"
#include "app/CommandRegistry.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "mainwindow/MainMenuTable.h"
#include "mainwindow/MenuMnemonics.h"
#include "widgets/Pictures.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quavernet {

namespace {

// Whether the entry is shown: a command that is registered, or what holds or parts such commands.
bool IsBuilt(const MenuEntry& entry, const CommandRegistry& commands) {
    if (!entry.Is(MenuEntry::Menu) && !entry.Is(MenuEntry::Bar)) {
        return commands.Contains(entry.Name);
    }
    const std::string_view menu = entry.Is(MenuEntry::Menu) ? entry.Name : entry.Parent;
    return std::any_of(MainMenuTable.begin(), MainMenuTable.end(), [&](const MenuEntry& other) {
        return other.Parent == menu && !other.Is(MenuEntry::Bar) && IsBuilt(other, commands);
    });
}

// Items that do what a button of the toolbar does show its picture.
void SetPicture(const MenuEntry& entry, QAction& item) {
    constexpr auto Pictures =
        std::to_array<std::pair<std::string_view, std::string_view>>({{"mnuScan", "scan"},
                                                                      {"mnuPrint", "print"},
                                                                      {"mnuKontextPrint", "print"},
                                                                      {"mnuPlaylist", "plist"},
                                                                      {"mnuKontextPlaylist", "plist"},
                                                                      {"mnuKonvert", "konvert"},
                                                                      {"mnuKontextKonvert", "konvert"}});
    for (const auto& [name, picture] : Pictures) {
        if (name == entry.Name) {
            item.setIcon(Picture(picture));
        }
    }
}

bool IsTop(const MenuEntry& entry) {
    return entry.Parent.empty() || entry.Parent == "popup";
}

} // namespace

MainMenu::MainMenu(QMenuBar* bar) : QObject(bar), m_bar(bar), m_oneOf(this) {}

void MainMenu::OpenFirst() {
    for (QAction* menu : m_bar->actions()) {
        if (menu->isEnabled()) {
            m_bar->setActiveAction(menu);
            return;
        }
    }
}

void MainMenu::Build(const CommandRegistry& commands) {
    for (const MenuEntry& entry : MainMenuTable) {
        if (!IsBuilt(entry, commands)) {
            continue;
        }
        if (!IsTop(entry) && entry.Is(MenuEntry::Separated) && !Parent(entry).isEmpty()) {
            Parent(entry).addSeparator();
        }
        QAction* action = AddEntry(entry);
        action->setObjectName(ToQString(entry.Name));
        action->setCheckable(entry.Is(MenuEntry::Checkable));
        action->setEnabled(!entry.Is(MenuEntry::StartsDisabled));
        if (entry.Shortcut != 0) {
            const auto modifiers =
                entry.Is(MenuEntry::Shifted) ? Qt::CTRL | Qt::SHIFT : Qt::Modifiers(Qt::CTRL);
            action->setShortcut(QKeySequence(modifiers | static_cast<Qt::Key>(entry.Shortcut)));
            if (Parent(entry).menuAction()->associatedObjects().isEmpty()) {
                m_bar->window()->addAction(action); // A popup menu has no keys of its own.
            }
        }
        SetPicture(entry, *action);
        Group(entry, *action);
        m_items.emplace(entry.Name, action);
        if (commands.Contains(entry.Name)) {
            Connect(entry, *action, commands);
        }
    }
}

QMenu& MainMenu::Parent(const MenuEntry& entry) const {
    return *m_items.at(entry.Parent)->menu();
}

QAction* MainMenu::AddEntry(const MenuEntry& entry) {
    if (entry.Is(MenuEntry::Bar)) {
        return Parent(entry).addSeparator();
    }
    if (!entry.Is(MenuEntry::Menu)) {
        return Parent(entry).addAction(QString());
    }
    auto* menu = new QMenu(m_bar);
    if (!IsTop(entry)) {
        Parent(entry).addMenu(menu);
    } else if (entry.Parent.empty()) {
        m_bar->addMenu(menu);
    }
    return menu->menuAction();
}

void MainMenu::Group(const MenuEntry& entry, QAction& item) {
    if (entry.Is(MenuEntry::OneOf)) {
        m_oneOf.addAction(&item); // Exclusive: its items carry the mark of a choice among several.
    }
}

// A click has turned a check mark round already; a command that does not run gives it back.
void MainMenu::Connect(const MenuEntry& entry, QAction& item, const CommandRegistry& commands) {
    connect(&item, &QAction::triggered, this, [this, &item, &commands, name = entry.Name](bool checked) {
        if (commands.Run(name) || !item.isCheckable()) {
            return;
        }
        if (item.actionGroup() == nullptr) {
            item.setChecked(!checked);
        } else if (m_chosen != nullptr) {
            m_chosen->setChecked(true);
        }
    });
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
        if (checked && item->actionGroup() != nullptr) {
            m_chosen = item;
        }
    }
}

void MainMenu::LoadStrings() {
    for (const MenuEntry& entry : MainMenuTable) {
        QAction* item = Item(entry.Name);
        if (item != nullptr && entry.Text != 0) {
            const std::string caption = LoadResString(entry.Text);
            item->setText(ToQString(WithMnemonic(caption, MenuMnemonic(entry.Name, mainModule.Language))));
        }
    }
}

} // namespace quavernet
