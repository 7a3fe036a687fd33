// The menu bar and the popup menus of frmMain, made from the menu table and the registered commands. Items
// are reached by name here.
#pragma once

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>

#include <string_view>
#include <unordered_map>

namespace quavernet {

class CommandRegistry;
struct MenuEntry;

class MainMenu : public QObject {
    Q_OBJECT
public:
    explicit MainMenu(QMenuBar* bar);

    /// Makes the menus: an item whose command is not registered stays out, and so does a menu without items.
    void Build(const CommandRegistry& commands);

    /// The item, or for a menu the action that opens it. Null if the command is not in the menus.
    QAction* Item(std::string_view name) const;
    QMenu* Popup(std::string_view name) const;

    bool Checked(std::string_view name) const;
    void SetChecked(std::string_view name, bool checked);

    /// All captions in the current language, with their mnemonics.
    void LoadStrings();

    /// Opens the first menu of the bar that is enabled; the arrow keys go on from there.
    void OpenFirst();

private:
    QAction* AddEntry(const MenuEntry& entry);
    QMenu& Parent(const MenuEntry& entry) const;
    void Connect(const MenuEntry& entry, QAction& item, const CommandRegistry& commands);

    void Group(const MenuEntry& entry, QAction& item);

    QMenuBar* m_bar;
    QActionGroup m_oneOf;        ///< The languages: one of them is checked.
    QAction* m_chosen = nullptr; ///< The one that was checked last, not by a click alone.
    std::unordered_map<std::string_view, QAction*> m_items;
};

} // namespace quavernet
