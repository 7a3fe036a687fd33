// The main window: it takes its state from the settings when it loads, writes it back when it unloads, and
// switches its controls. What it is made of is in MainParts.
#pragma once

#include "app/Controls.h"
#include "mainwindow/WindowState.h"

#include <QMainWindow>
#include <QSize>
#include <QTimer>

#include <memory>
#include <optional>

namespace quavernet {

class MainMenu;
class MainPanes;
class MainParts;
class PlayerWindow;
class TreePane;

class frmMain : public QMainWindow {
    Q_OBJECT
public:
    explicit frmMain(PlayerWindow& player);
    ~frmMain() override;

    /// Restores the window from the settings, before it is shown.
    void Form_Load();

    /// All texts of the window in the current language; refills the combos.
    void LoadStrings();

    /// The one switch for enabled controls.
    void SetControlState(ControlMode mode);

    /// Writes place, sizes, filters and check marks to the settings.
    void StoreState() const;

    /// What the window is made of, for the start and for whoever drives it from outside. Nothing that the
    /// window is made of reaches back here.
    MainParts& Parts() { return *m_parts; }
    MainMenu& Menu();
    MainPanes& Panes();
    TreePane& Tree();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    bool Form_QueryUnload();
    void Form_Unload();
    void AfterLoadTimer_Timer();
    void UnloadSplash();

    void PlaceWindow(const WindowState& state);
    void LimitShrinking();
    void FollowFont();
    void NoteFrame();
    void RestoreGrid(const WindowState& state);
    void RestoreFilters(const WindowState& state);
    void RestoreChecks(const WindowState& state);
    WindowState CurrentState() const;
    void SetColumnWidths(const ColumnWidths& widths);
    ColumnWidths ReadColumnWidths() const;
    void ReadPlace(WindowState& state) const;
    int ColumnPixels(std::size_t column, std::int32_t twips) const;

    std::unique_ptr<MainParts> m_parts;
    QTimer m_afterLoadTimer;
    WindowState m_loaded; ///< As the window was placed, and the size in pixels that came of it.
    QSize m_placedSize;
    bool m_wasNormal = false; ///< Has been in its normal state since it was placed.
    int m_leastUseful = 0;    ///< Pixels; what the search needed when the least width was set.
    double m_columnScale = 1; ///< Of the font for which the columns have their pixels.
    QTimer m_frameTimer;
    std::optional<QPoint> m_normalFrame; ///< From the corner of the normal window's frame to its own.
};

} // namespace quavernet
