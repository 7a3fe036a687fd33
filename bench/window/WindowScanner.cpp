#include "window/WindowScanner.h"

#include "app/MainModule.h"
#include "app/Registry.h"
#include "mainwindow/Main.h"
#include "mainwindow/MainMenu.h"

#include <QAbstractItemView>

#include <filesystem>
#include <stdexcept>

namespace quavernet::bench {

WindowScanner::WindowScanner(RealWindow& window, const std::string& music) : m_window(window) {
    SaveSettingValue(SettingsApplication, SettingsSection, "ScanpathValue", "1");
    SaveSettingValue(SettingsApplication, SettingsSection, "Scanpath", music);
    m_window.Form().Menu().SetChecked("mnuScanOgg", false);
}

std::string WindowScanner::LibraryPath() const {
    return LocateDatabase();
}

void WindowScanner::OpenEmpty() {
    Close();
    RemoveLibrary(LibraryPath());
    mainModule.Connection = services.createConnection();
    mainModule.Connection->Open("Data Source=" + LocateDatabase()); // Which copies the empty library there.
    m_window.UntilPainted([&] { m_window.Form().Parts().Views.LoadDatabase({}); });
}

void WindowScanner::Scan(bool quick) {
    MainMenu& menu = m_window.Form().Menu();
    menu.SetChecked("mnuQuickscan", quick);
    CloseLog();
    m_window.UntilPainted([&] {
        menu.Item("mnuScan")->trigger();
        mainModule.Connection->Commit();
    });
    const auto& log = m_window.Control<QAbstractItemView>("lstLog");
    if (!log.isVisible() || log.model()->rowCount() < 2) {
        throw std::runtime_error("the scan has shown no log");
    }
}

Timed WindowScanner::ListAtEnd() {
    return {WriteIntoLibrary,
            [this] { m_window.UntilPainted([&] { m_window.Form().Parts().Views.LoadDatabase({}); }); }};
}

// A closed log begins the next scan with an empty list, so that the rounds are alike.
void WindowScanner::CloseLog() {
    m_window.Control<QWidget>("frmScanLog").close();
}

void WindowScanner::Close() {
    if (mainModule.Connection) {
        mainModule.Connection->Commit();
    }
    mainModule.Connection.reset();
}

} // namespace quavernet::bench
