// What the menu items and toolbar buttons of the main window do. Each command that exists is connected here
// by its name.
#pragma once

#include <QObject>

#include <functional>
#include <string>
#include <string_view>

namespace quavernet {

class frmMain;
class ScanController;

class MainCommands : public QObject {
    Q_OBJECT
public:
    MainCommands(frmMain& form, ScanController& scan);

    /// Ctrl+C belongs to the search box only while text is marked there; otherwise the menu has it.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void OnMenu(std::string_view name, std::function<void()> command);
    void OnToolbar(std::string_view key, std::function<void()> command);

    /// Two items that work as one: a click sets both, then runs the command.
    void OnPair(std::string_view first, std::string_view second, const std::function<void(bool)>& command);

    void SwitchLanguage(const std::string& language);

    frmMain& m_form;
};

} // namespace quavernet
