// The composition root: builds the adapters, fills in the services and runs the entry procedure inside the
// event boundary. The only place that knows all.
#include "mainwindow/Main.h"
#include "app/MainModule.h"
#include "app/Registry.h"
#include "help/QtHelpViewer.h"
#include "mainwindow/AppWindows.h"
#include "platform/posix/PosixFileSystem.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/Application.h"
#include "platform/qt/DialogLanguage.h"
#include "platform/qt/QtDialogs.h"
#include "platform/qt/QtEvents.h"
#include "platform/qt/QtMsgBox.h"
#include "platform/qt/QtRegionalSettings.h"
#include "platform/qt/QtSettings.h"
#include "platform/qt/QtShell.h"
#include "platform/sqlite/SqliteConnection.h"
#include "platform/taglib/TagLibComponent.h"
#include "platform/vorbis/OggInfoReader.h"

using namespace quavernet;

int main(int argc, char** argv) {
    Application application(argc, argv);

    QtSettings settings;
    QtShell shell([&settings] {
        if (mainModule.Connection) {
            Skip([] { mainModule.Connection->Commit(); });
        }
        settings.Sync();
    });
    QtMsgBox msgBox;
    QtDialogs dialogs;
    QtEvents events;
    SystemClock clock;
    OggInfoReader oggInfo;
    QtHelpViewer helpViewer;
    const auto fileSystem = CreatePosixFileSystem();

    services.settings = &settings;
    services.fileSystem = fileSystem.get();
    services.shell = &shell;
    services.msgBox = &msgBox;
    services.dialogs = &dialogs;
    services.oggInfo = &oggInfo;
    services.events = &events;
    services.clock = &clock;
    services.helpViewer = &helpViewer;
    services.regional = ReadRegionalSettings();
    services.createConnection = [] { return CreateSqliteConnection(services.regional); };
    services.createTagComponent = CreateTagLibComponent;

    // The failure boxes of the start come before the main window, which looks after this later on.
    SetDialogLanguage(GetSettingValue(SettingsApplication, SettingsSection, "Language", "GER"));
    AppWindows windows;
    application.SetActivity([&windows] { return windows.Activity(); });
    application.RunGuarded("Main", [&windows] { Main(windows); });
    return Application::exec();
}
