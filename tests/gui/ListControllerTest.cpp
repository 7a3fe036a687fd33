#include "browser/ListController.h"

#include "browser/FilterRow.h"
#include "browser/GridView.h"
#include "browser/LetterRow.h"
#include "mainwindow/ControlState.h"
#include "support/ControlsDouble.h"
#include "support/LongWorkDouble.h"
#include "support/RecordingPlayer.h"
#include "support/TestLibrary.h"

#include <QTest>

namespace quavernet::test {

namespace {

/// The list with its real controls, without a main window around it.
class ListControllerTest : public LibraryTest {
protected:
    ListControllerTest() {
        Execute({"Insert into Interpret (Inter_id, Interpret) values (1, 'Abba')",
                 "Insert into Titel (Title_id, Name) values (1, 'One')",
                 "Insert into Quality (Quality_id, Quality) values (1, 128)",
                 "Insert into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, Drive_id, Quality_id, "
                 "Length, Extension_id, Genre_id, Album_id) select 1, 1, 'One.wav', '/m/One.wav', 1, 1, 1, "
                 "65, Extension_id, 0, 1 from Extensions where Extension = 'wav'"});
        controls.checked = {"mnump3", "mnuwav", "mnuogg"};
        mainModule.LetterFilter = "All";
        mainModule.SortInterpret = true;
        mainModule.SortDirection = "ASC";
        pane.resize(600, 200);
        grid.resize(600, 200);
    }

    QWidget pane;
    DragState drag;
    GridView grid{&pane, drag};
    FilterRow filter{&pane};
    LetterRow letters{&pane};
    CallList calls;
    LongWorkDouble work{calls};
    ControlsDouble controls;
    RecordingPlayer player{calls};
    std::vector<ControlMode> modes;
    ListController list{{grid, filter, letters},
                        work,
                        controls,
                        [this](ControlMode mode) {
                            modes.push_back(mode);
                            for (const ControlSwitch& item :
                                 ControlState(mode, grid.Selection().Row(), grid.CurrentFormat())) {
                                controls.SetEnabled(item.Name, item.Enabled);
                            }
                        },
                        player};
};

} // namespace

TEST_F(ListControllerTest, TheCommandsOfASelectionAreGreyAgainAfterEachLoad) {
    const std::vector<std::string> names{"plist",           "konvert",         "mnuPlaylist",  "mnuDetails",
                                         "mnuEditFilename", "mnuEditExchange", "mnuEditDelete"};
    list.LoadDatabase({});
    for (int round = 0; round < 2; ++round) {
        const QPoint place = grid.visualRect(grid.model()->index(0, 0)).center();
        QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, place); // Row 1 becomes the current one,
        QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, place);
        QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, place); // and the next press switches by it.
        QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, place);
        for (const std::string& name : names) {
            EXPECT_TRUE(controls.enabled.at(name)) << name;
        }
        list.LoadDatabase({});
        for (const std::string& name : names) {
            EXPECT_FALSE(controls.enabled.at(name)) << name;
        }
    }
}

TEST_F(ListControllerTest, ALoadEndsInTheStateOfTheMoment) {
    list.LoadDatabase({});
    EXPECT_EQ(modes, (std::vector{ControlMode::ListLoaded, ControlMode::Idle}));
    modes.clear();
    mainModule.ScanRunning = true;
    list.LoadDatabase({});
    EXPECT_EQ(modes, (std::vector{ControlMode::ListLoaded, ControlMode::ScanRunning}));
}

TEST_F(ListControllerTest, ALoadTellsTheObserverWhatItDoes) {
    list.LoadDatabase({});
    EXPECT_EQ(calls.front(), "panel 1: Lade Datenbank...");
    EXPECT_EQ(calls.back(), "panel 1: ");
    EXPECT_EQ(work.panels[2], "1 Datei / (0,00 MB)");
    EXPECT_EQ(work.panels[3], "1 Interpret");
    EXPECT_EQ(work.progress, 0);
}

} // namespace quavernet::test
