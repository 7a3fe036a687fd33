// The windows that the entry procedure brings up, and what is shared among them. src/main.cpp owns it.
#pragma once

#include "mainwindow/Main.h"

#include <memory>

namespace quavernet {

class frmMain;

class AppWindows : public StartView {
public:
    AppWindows();
    ~AppWindows() override;

    std::string ScreenResolution() const override;
    void ShowMain() override;
    void ShowSplash() override;
    LongWork& Work() override;
    LibraryViews& Views() override;

    /// What the program says that it is doing: the text of the panel "Scanning"; empty while it is ready.
    std::string Activity() const;

    frmMain* Form() { return m_main.get(); }

private:
    std::unique_ptr<frmMain> m_main;
};

} // namespace quavernet
