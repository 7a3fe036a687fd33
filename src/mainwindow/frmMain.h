// The main window: the frame around the library. It takes its state from the settings when it loads, writes
// it back when it unloads, and switches its controls; its panes, lists and commands have classes of their
// own.
#pragma once

#include "mainwindow/NoPlayer.h"
#include "mainwindow/WindowState.h"

#include <QMainWindow>
#include <QTimer>

#include <cstdint>
#include <memory>
#include <string>

namespace quavernet {

class ListController;
class MainCommands;
class MainMenu;
class MainPanes;
class ScanController;
class TreePane;

class frmMain : public QMainWindow {
    Q_OBJECT
public:
    frmMain();
    ~frmMain() override;

    /// Restores the window from the settings, before it is shown.
    void Form_Load();

    /// All texts of the window in the current language; refills the combos.
    void LoadStrings();

    void LoadDatabase(const std::string& list);
    void LoadTree();

    /// The one switch for enabled controls: 0 idle, 1 scan running, 3 selection changed.
    void SetControlState(std::int16_t mode);

    /// Shown twenty times a second at most; the last text always comes up.
    void SetTitle(const std::string& text);
    void SetScanningPanel(const std::string& text);
    void SetMousePointer(int pointer);
    void SetGridLines(bool shown);

    MainMenu& Menu() { return *m_menu; }
    MainPanes& Panes() { return *m_panes; }
    ListController& List() { return *m_list; }
    TreePane& Tree() { return *m_tree; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    bool Form_QueryUnload();
    void Form_Unload();
    void AfterLoadTimer_Timer();
    void UnloadSplash();

    void PlaceWindow(const WindowState& state);
    void RestoreGrid(const WindowState& state);
    void RestoreFilters(const WindowState& state);
    void RestoreChecks(const WindowState& state);
    WindowState CurrentState() const;
    void SetColumnWidths(const ColumnWidths& widths);
    void ShowTitle();

    MainMenu* m_menu;
    MainPanes* m_panes;
    NoPlayer m_player;
    TreePane* m_tree;
    std::unique_ptr<ListController> m_list;
    std::unique_ptr<ScanController> m_scan;
    std::unique_ptr<MainCommands> m_commands;
    QTimer m_afterLoadTimer;
    QTimer m_titleTimer;
    std::string m_title;
};

} // namespace quavernet
