// Toolbar1: the buttons of the commands that exist, by their keys. The panes place it; what a button does
// is in the registry of commands.
#pragma once

#include <QToolBar>

#include <string_view>
#include <vector>

namespace quavernet {

class CommandRegistry;

class MainToolbar : public QToolBar {
    Q_OBJECT
public:
    explicit MainToolbar(QWidget* parent);

    /// Keys of the buttons in their order, whether their commands exist or not.
    static std::vector<std::string_view> Keys();

    /// Makes the buttons of the registered commands.
    void Build(const CommandRegistry& commands);

    /// How many times larger than usual icons and buttons are.
    void SetScale(double scale);

    /// Null if the command does not exist.
    QAction* Button(std::string_view key) const;

    void LoadStrings();

protected:
    bool event(QEvent* event) override;

private:
    void Pack();

    double m_scale = 1;
};

} // namespace quavernet
