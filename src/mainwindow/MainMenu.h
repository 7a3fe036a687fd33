// The menu bar and the popup menus of frmMain, made from the menu table. The commands reach their items by
// name here.
#pragma once

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <string_view>
#include <unordered_map>

namespace quavernet {

class MainMenu : public QObject {
    Q_OBJECT
public:
    explicit MainMenu(QMenuBar* bar);

    /// The item, or for a menu the action that opens it. Null if the command is not in the menus.
    QAction* Item(std::string_view name) const;
    QMenu* Popup(std::string_view name) const;

    bool Checked(std::string_view name) const;
    void SetChecked(std::string_view name, bool checked);

    /// All captions in the current language.
    void LoadStrings();

private:
    std::unordered_map<std::string_view, QAction*> m_items;
};

} // namespace quavernet
