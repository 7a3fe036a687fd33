#include "mainwindow/AppWindows.h"

#include "app/LoadResString.h"
#include "app/TextNumbers.h"
#include "mainwindow/MainParts.h"
#include "mainwindow/frmMain.h"
#include "mainwindow/frmSplash.h"

#include <QApplication>
#include <QScreen>

namespace quavernet {

AppWindows::AppWindows() = default;
AppWindows::~AppWindows() = default;

std::string AppWindows::ScreenResolution() const {
    const QSize size = QApplication::primaryScreen()->size();
    return std::to_string(size.width()) + "x" + std::to_string(size.height());
}

void AppWindows::ShowMain() {
    m_main = std::make_unique<frmMain>();
    m_main->Form_Load();
    m_main->show();
}

void AppWindows::ShowSplash() {
    (new frmSplash(m_main.get()))->show();
}

LongWork& AppWindows::Work() {
    return m_main->Parts().Work;
}

LibraryViews& AppWindows::Views() {
    return m_main->Parts().Views;
}

std::string AppWindows::Activity() const {
    const std::string text = m_main ? m_main->Parts().Work.PanelText(Panel::Scanning) : std::string();
    // "Ready!", also with faults of the tree after it, names nothing that is being done.
    return text.starts_with(LoadResString(Texts::Ready)) ? std::string() : text;
}

} // namespace quavernet
