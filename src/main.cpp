// The composition root: makes the services and runs the entry procedure inside the event boundary.
#include "mainwindow/Main.h"
#include "RealServices.h"
#include "adapters/mpv/ReadLibraryAhead.h"
#include "adapters/qt/Application.h"
#include "adapters/qt/DialogLanguage.h"
#include "app/MainModule.h"
#include "app/Registry.h"
#include "mainwindow/AppWindows.h"

#include <QTimer>

using namespace quavernet;

int main(int argc, char** argv) {
    Application application(argc, argv);
    const RealServices realServices;

    // The failure boxes of the start come before the main window, which looks after this later on.
    SetDialogLanguage(Setting("Language", "GER"));
    AppWindows windows;
    application.SetActivity([&windows] { return windows.Activity(); });
    application.RunGuarded("Main", [&windows] { Main(windows); });
    // The window has been filled long before, and its first hints have gone.
    QTimer::singleShot(5000, ReadMediaLibraryAhead);
    return Application::exec();
}
