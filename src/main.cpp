// The composition root: makes the services and runs the entry procedure inside the event boundary.
#include "mainwindow/Main.h"
#include "RealServices.h"
#include "adapters/mpv/ReadLibraryAhead.h"
#include "adapters/qt/Application.h"
#include "adapters/qt/DialogLanguage.h"
#include "adapters/qt/EndSignals.h"
#include "adapters/qt/LostDisplay.h"
#include "app/MainModule.h"
#include "app/Registry.h"
#include "mainwindow/AppWindows.h"
#include "mainwindow/OrderlyEnd.h"

#include <QTimer>

#include <cstdlib>

using namespace quavernet;

int main(int argc, char** argv) {
    Application application(argc, argv);
    const RealServices realServices;

    // The failure boxes of the start come before the main window, which looks after this later on.
    SetDialogLanguage(Setting("Language", "GER"));
    AppWindows windows;
    OrderlyEnd end(windows);
    const EndSignals endSignals;
    QObject::connect(&endSignals, &EndSignals::Received, &end, &OrderlyEnd::Begin);
    QObject::connect(&application, &Application::EndRequested, &end, &OrderlyEnd::Begin);
    const LostDisplay lostDisplay([&end] { end.AtOnce(EXIT_FAILURE); });
    application.SetActivity([&windows] { return windows.Activity(); });
    application.RunGuarded("Main", [&windows] { Main(windows); });
    // The window has been filled long before, and its first hints have gone.
    QTimer::singleShot(5000, ReadMediaLibraryAhead);
    return Application::exec();
}
