// The program with its real services and its real main window on a screen, for jobs whose end is a painted
// list.
#pragma once

#include "RealServices.h"
#include "adapters/qt/Application.h"
#include "mainwindow/AppWindows.h"
#include "mainwindow/MainParts.h"
#include "mainwindow/frmMain.h"

#include <functional>
#include <string>

namespace quavernet::bench {

/// Path of the library that is open.
std::string LibraryPath();

/// Writes one number into the library, so that nothing that was read before is known to hold still.
void WriteIntoLibrary();

class RealWindow {
public:
    /// The library and the settings are those of the home folder that the environment names.
    RealWindow(int& count, char** arguments);
    ~RealWindow();
    RealWindow(const RealWindow&) = delete;
    RealWindow& operator=(const RealWindow&) = delete;

    /// Runs the start sequence and waits until the window is there, without the splash window.
    void Start();

    frmMain& Form() { return *m_windows.Form(); }
    GridView& Grid() { return Form().Panes().Grid(); }
    template <typename T> T& Control(const char* name) { return *Form().findChild<T*>(QLatin1String(name)); }

    /// Runs an action that ends in a new list, and returns when its rows have been painted and the screen has
    /// got them.
    void UntilPainted(const std::function<void()>& action) { UntilPainted(action, Grid()); }
    /// The same for an action that ends in a view whose rows are new.
    void UntilPainted(const std::function<void()>& action, QAbstractItemView& view);

    /// Runs events until what the last action has left is painted as well: a scroll bar that has come or
    /// gone, the panels that are painted a little later.
    void Rest();

    /// Paints the rows that are shown once more, until the screen has got them.
    void PaintAgain();

    /// Throws unless the screen shows what the list's rows look like.
    void RequireShown();

private:
    void WaitForScreen();

    Application m_application;
    RealServices m_services;
    AppWindows m_windows;
};

} // namespace quavernet::bench
