// The observer of long work: status bar, title and pointer of the main window. Everything that takes a while
// reports through it.
#pragma once

#include "app/LongWork.h"
#include "mainwindow/MainStatusBar.h"
#include "mainwindow/TaskBarProgress.h"

#include <QObject>
#include <QTimer>

#include <string>

class QWidget;

namespace quavernet {

class MainWork : public QObject, public LongWork {
    Q_OBJECT
public:
    MainWork(QWidget& window, MainStatusBar& status);

    void SetPanel(Panel panel, const std::string& text) override;
    std::string PanelText(Panel panel) const override;
    /// Shown twenty times a second at most; the last text always comes up.
    void SetTitle(const std::string& text) override;
    void SetMousePointer(MousePointer pointer) override;
    void SetProgress(float value) override;
    float Progress() const override;
    void DoEvents() override;
    bool Cancelled() const override { return m_cancelled; }
    void SetCancelled(bool cancelled) override { m_cancelled = cancelled; }
    /// As a note of the desktop if the user is in another window, else as a hint over the status bar, unless
    /// its first panel shows the word. That panel's tool tip tells it until the next job has ended.
    void TellEnd(const std::string& word) override;

    /// What TellEnd was told last.
    const std::string& LastEnd() const { return m_status.LastEnd(); }

signals:
    void Ended(); ///< A long job, as TellEnd was told.

private:
    void ShowTitle();
    bool IsUsersWindow() const;

    QWidget& m_window;
    MainStatusBar& m_status;
    TaskBarProgress m_taskBar;
    QTimer m_titleTimer;
    std::string m_title;
    bool m_cancelled = false;
};

} // namespace quavernet
