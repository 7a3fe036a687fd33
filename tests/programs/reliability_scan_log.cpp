// Scans a folder with the program's own forms and adapters, without a screen, and prints the lines of the
// scan log, a NUL after each. Called by the script that needs to know what the log says.
//
//   scan_log DOCUMENTS MUSIC     the library is made in the folder DOCUMENTS
#include "RealServices.h"
#include "mainwindow/AppWindows.h"
#include "mainwindow/Main.h"
#include "mainwindow/frmMain.h"
#include "support/Doubles.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QListView>

#include <cstdio>

using namespace quavernet;

namespace {

void PrintLog(const QWidget& form) {
    const auto* list = form.findChild<QListView*>(QStringLiteral("lstLog"));
    for (int row = 0; row < list->model()->rowCount(); ++row) {
        const QByteArray line = list->model()->index(row, 0).data().toString().toUtf8();
        std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()) + 1, stdout);
    }
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const RealServices realServices;
    test::MapSettings settings;
    test::RecordingShell shell;
    test::ScriptedMsgBox msgBox;
    test::ScriptedDialogs dialogs;
    settings.values["Language"] = "ENG";
    shell.documents = argv[1];
    shell.programFolder = QFile::encodeName(QApplication::applicationDirPath()).toStdString();
    dialogs.folder = argv[argc - 1];

    services.settings = &settings;
    services.shell = &shell;
    services.msgBox = &msgBox;
    services.dialogs = &dialogs;

    AppWindows windows;
    Main(windows);
    windows.Form()->findChild<QAction*>(QStringLiteral("mnuScan"))->trigger();
    PrintLog(*windows.Form());
    std::fflush(stdout);
    mainModule.Connection.reset();
    std::_Exit(EXIT_SUCCESS);
}
