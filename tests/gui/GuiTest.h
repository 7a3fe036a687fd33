// The base of GUI tests: the start sequence with real forms and a real library in a temporary folder; the
// user's boxes and dialogs are scripted.
#pragma once

#include "gui/Caption.h"
#include "support/LogicTest.h"
#include "support/TemplatePath.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <string>

#include <QAction>
#include <QCoreApplication>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QMimeData>
#include <QTest>

#include "adapters/id3v2/TagLibComponent.h"
#include "adapters/posix/PosixFileSystem.h"
#include "adapters/qt/FileUris.h"
#include "adapters/qt/QtEvents.h"
#include "adapters/qt/QtText.h"
#include "adapters/sqlite/SqliteConnection.h"
#include "mainwindow/AppWindows.h"
#include "mainwindow/MainParts.h"
#include "mainwindow/frmMain.h"
#include "platform/Paths.h"

namespace quavernet::test {

class GuiTest : public LogicTest {
protected:
    GuiTest() {
        services.events = &realEvents;
        services.fileSystem = fileSystem.get();
        services.createConnection = [] { return CreateSqliteConnection(services.regional); };
        services.createTagComponent = [] { return CreateTagLibComponent(RealFiles()); };
        shell.documents = folder.Path();
        shell.programFolder = FolderFromPath(TemplatePath());
    }
    ~GuiTest() override { windows.reset(); }

    /// Makes the library before the start, with one file per call.
    void AddFile(const std::string& performer, const std::string& title, const std::string& format = "mp3",
                 const std::string& drive = "/") {
        if (!mainModule.Connection) {
            mainModule.Connection = services.createConnection();
            mainModule.Connection->Open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + LocateDatabase());
        }
        const std::string id = std::to_string(++files);
        const std::string path = "/music/" + title + "." + format;
        for (const std::string& statement :
             {"Insert into Interpret (Inter_id, Interpret) values (" + id + ", '" + performer + "')",
              "Insert into Titel (Title_id, Name) values (" + id + ", '" + title + "')",
              "Insert into Quality (Quality_id, Quality) values (" + id + ", 128)",
              "Insert into Albums (Album_id, Name) values (" + id + ", 'Album " + id + "')",
              "Insert into Drive (Drive_id, Drive) values (" + id + ", '" + drive + id + "')",
              "Insert into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, Drive_id, Quality_id, Length, "
              "Extension_id, Genre_id, Album_id) select " +
                  id + ", " + id + ", '" + title + "." + format + "', '" + path + "', 1048576, " + id + ", " +
                  id + ", 65, Extension_id, 0, " + id + " from Extensions where Extension = '" + format +
                  "'"}) {
            mainModule.Connection->Execute(statement);
        }
    }

    /// Runs the whole start sequence; the splash window is closed.
    void Start() {
        windows = std::make_unique<AppWindows>();
        Main(*windows);
        QTest::keyClick(Form().findChild<QWidget*>(QStringLiteral("frmSplash")), Qt::Key_Escape);
        Form().activateWindow();
        (void)QTest::qWaitForWindowActive(&Form());
    }
    /// Closes the main window without ending the process, and forgets it.
    void CloseMain() {
        mainModule.PlayerOpen = true;
        Form().close();
        windows.reset();
        mainModule.Connection.reset();
    }

    frmMain& Form() { return *windows->Form(); }
    GridView& Grid() { return Form().Panes().Grid(); }
    template <typename T> T& Control(const char* name) {
        T* found = Form().findChild<T*>(QLatin1String(name));
        if (found == nullptr) {
            throw std::runtime_error(std::string("no control ") + name);
        }
        return *found;
    }
    QAction& Action(const char* name) { return Control<QAction>(name); }
    std::string PanelText(Panel panel) { return Form().Panes().Status().Text(panel); }

    /// The title comes up with the next frame at the latest.
    void ExpectTitle(const std::string& title) {
        (void)QTest::qWaitFor([&] { return FromQString(Form().windowTitle()) == title; }, 1000);
        EXPECT_EQ(FromQString(Form().windowTitle()), title);
    }

    /// First column of the list.
    std::vector<std::string> Listed() {
        std::vector<std::string> texts;
        for (std::size_t row = 1; row <= Grid().Model().Rows().Count(); ++row) {
            texts.push_back(Grid().Model().Rows().Text(row, ListColumn::Interpret));
        }
        return texts;
    }
    QPoint CellCentre(int row, int column = 0) {
        return Grid().visualRect(Grid().model()->index(row - 1, column)).center();
    }
    void ClickRow(int row, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(Grid().viewport(), button, modifiers, CellCentre(row));
    }

    /// Drags these files over the target and drops them there. True if it took the drop.
    static bool Drop(QWidget& target, const std::vector<std::string>& paths, const QPoint& place) {
        const std::unique_ptr<QMimeData> data(FilesToOffer(paths));
        QDragEnterEvent enter(place, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&target, &enter);
        if (!enter.isAccepted()) {
            return false;
        }
        QDragMoveEvent move(place, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&target, &move);
        QDropEvent drop(place, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&target, &drop);
        return move.isAccepted() && drop.isAccepted();
    }

    using Texts = std::vector<std::string>;
    TemporaryFolder folder;
    QtEvents realEvents;
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
    std::unique_ptr<AppWindows> windows;
    int files = 0;
};

} // namespace quavernet::test
