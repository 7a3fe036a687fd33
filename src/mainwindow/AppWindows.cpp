#include "mainwindow/AppWindows.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextNumbers.h"
#include "mainwindow/MainParts.h"
#include "mainwindow/frmMain.h"
#include "mainwindow/frmSplash.h"
#include "widgets/ComeToFront.h"

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
    if (m_main) {
        m_closed.Add(std::move(m_main));
    }
    m_main = std::make_unique<frmMain>(m_player);
    m_main->Form_Load();
    m_main->show();
}

void AppWindows::ShowSplash() {
    (new frmSplash(m_main.get()))->show();
}

LongWork& AppWindows::Work() {
    return m_main->Parts().Work;
}

void AppWindows::LoadDatabase(const std::string& list) {
    if (mainModule.MainOpen) {
        m_main->Parts().Views.LoadDatabase(list);
    }
}

void AppWindows::LoadTree() {
    if (mainModule.MainOpen) {
        m_main->Parts().Views.LoadTree();
    }
}

void AppWindows::BringToFront() {
    if (!mainModule.MainOpen) {
        ShowMain();
    }
    ComeToFront(*m_main);
}

bool AppWindows::ListIsEmpty() const {
    return m_main->Panes().Grid().Model().Rows().Count() == 0;
}

void AppWindows::Close() {
    if (mainModule.MainOpen) {
        m_main->close();
    }
}

std::string AppWindows::Activity() const {
    if (!m_main) {
        return {};
    }
    const MainWork& work = m_main->Parts().Work;
    const std::string text = work.PanelText(Panel::Scanning);
    // "Ready!", also with faults of the tree after it, names nothing that is being done, nor does the end of
    // what was done before.
    return text == work.LastEnd() || text.starts_with(LoadResString(Texts::Ready)) ? std::string() : text;
}

} // namespace quavernet
