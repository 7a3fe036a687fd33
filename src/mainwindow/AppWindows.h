// The two windows that outlive each other, main window and player, with what is shared among them: they are
// shown, closed and brought back here. src/main.cpp owns it.
#pragma once

#include "app/LibraryViews.h"
#include "app/MainWindow.h"
#include "mainwindow/Main.h"
#include "playback/PlayerHost.h"
#include "widgets/ClosedWindows.h"

#include <memory>

namespace quavernet {

class frmMain;

class AppWindows : public StartView, public MainWindow, private LibraryViews {
public:
    AppWindows();
    ~AppWindows() override;

    std::string ScreenResolution() const override;
    void ShowMain() override;
    void ShowSplash() override;
    LongWork& Work() override;

    /// For the start and for the player: a load does nothing while the main window is closed.
    LibraryViews& Views() override { return *this; }

    void BringToFront() override;
    bool ListIsEmpty() const override;
    void Close() override;

    /// What the program says that it is doing: the text of the panel "Scanning"; empty while it is ready.
    std::string Activity() const;

    /// The main window, also after it has closed.
    frmMain* Form() { return m_main.get(); }
    PlayerHost& Player() { return m_player; }

private:
    void LoadDatabase(const std::string& list) override;
    void LoadTree() override;

    PlayerHost m_player{*this};
    ClosedWindows m_closed;
    std::unique_ptr<frmMain> m_main;
};

} // namespace quavernet
