#include "mainwindow/MainWork.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextNumbers.h"
#include "platform/Desktop.h"
#include "widgets/ComeToFront.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>

namespace quavernet {

namespace {
constexpr int TitleTimeMs = 50; // Painting takes time away from a scan.
}

MainWork::MainWork(QWidget& window, MainStatusBar& status) : m_window(window), m_status(status) {
    m_titleTimer.setSingleShot(true);
    m_titleTimer.setInterval(TitleTimeMs);
    connect(&m_titleTimer, &QTimer::timeout, this, &MainWork::ShowTitle);
}

void MainWork::SetPanel(Panel panel, const std::string& text) {
    m_status.SetText(panel, text);
}

std::string MainWork::PanelText(Panel panel) const {
    return m_status.Text(panel);
}

void MainWork::SetTitle(const std::string& text) {
    m_title = text;
    if (!m_titleTimer.isActive()) {
        ShowTitle();
        m_titleTimer.start();
    }
}

void MainWork::ShowTitle() {
    const QString title = ToQString(m_title);
    if (title != m_window.windowTitle()) {
        m_window.setWindowTitle(title);
    }
}

void MainWork::SetMousePointer(MousePointer pointer) {
    if (pointer == MousePointer::Hourglass) {
        m_window.setCursor(Qt::WaitCursor);
    } else {
        m_window.unsetCursor();
    }
}

void MainWork::SetProgress(float value) {
    m_status.SetProgress(value);
    m_taskBar.Show(value);
}

float MainWork::Progress() const {
    return m_status.Progress();
}

// Its boxes, dialogs and the log are the window as well.
bool MainWork::IsUsersWindow() const {
    for (const QWidget* active = QApplication::activeWindow(); active != nullptr;
         active = active->parentWidget()) {
        if (active == &m_window) {
            return true;
        }
    }
    return false;
}

void MainWork::TellEnd(const std::string& word) {
    m_status.SetLastEnd(word);
    if (!IsUsersWindow()) {
        if (services.desktop != nullptr) {
            services.desktop->Notify({"Quavernet", word, LoadResString(Texts::ShowProgram),
                                      [window = QPointer<QWidget>(&m_window)] {
                                          if (window && window->isVisible()) {
                                              ComeToFront(*window);
                                          }
                                      }});
        }
    } else if (m_status.Text(Panel::Scanning) != word) {
        m_status.HintLastEnd();
    }
    emit Ended();
}

void MainWork::DoEvents() {
    services.events->DoEvents();
}

} // namespace quavernet
