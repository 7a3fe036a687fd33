#include "browser/GridCommands.h"

#include "support/TestLibrary.h"

namespace quavernet::test {

namespace {

class GridCommandsTest : public LibraryTest {
protected:
    GridCommandsTest() {
        Execute("Insert into Files (Name, Path) values ('a.mp3', '/music/a.mp3')");
        mainModule.FilePaths.Add("/music/a.mp3");
    }
    std::string Hits() { return Value("Select Hits from Files where File_id = 1"); }
    std::vector<ShownBox> Boxes(const std::string& text) {
        return {{text, "Öffnen nicht möglich", MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok}};
    }
};

std::vector<bool> SortFlags() {
    return {mainModule.SortInterpret, mainModule.SortTitle,   mainModule.SortLength,
            mainModule.SortSize,      mainModule.SortQuality, mainModule.SortFormat};
}

} // namespace

TEST_F(GridCommandsTest, EachColumnHasItsOnlySortFlagAndEveryClickTurnsTheDirection) {
    for (int column = 0; column < 6; ++column) {
        SortByColumn(column);
        std::vector<bool> expected(6, false);
        expected[static_cast<std::size_t>(column)] = true;
        EXPECT_EQ(SortFlags(), expected);
        EXPECT_EQ(mainModule.SortDirection, column % 2 == 0 ? "DESC" : "ASC");
    }
}

TEST_F(GridCommandsTest, AnUnknownDirectionBecomesAscending) {
    mainModule.SortDirection = "sideways";
    SortByColumn(1);
    EXPECT_EQ(mainModule.SortDirection, "ASC");
}

TEST_F(GridCommandsTest, AnExternalPlayIsOpenedAndCounted) {
    PlayRowExternally(1, 1);
    EXPECT_EQ(shell.executed, std::vector<std::string>{"/music/a.mp3"});
    EXPECT_EQ(Hits(), "1");
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(GridCommandsTest, AMissingOrUnreadableFileIsToldAndStillCounted) {
    for (const int result : {2, 5}) {
        msgBox.shown.clear();
        shell.executeResult = result;
        PlayRowExternally(1, 1);
        EXPECT_EQ(msgBox.shown, Boxes("Die Datei konnte nicht gefunden werden!"));
    }
    EXPECT_EQ(Hits(), "2");
}

TEST_F(GridCommandsTest, AMissingFolderIsToldAsANetworkDrive) {
    shell.executeResult = 3;
    PlayRowExternally(1, 1);
    EXPECT_EQ(msgBox.shown, Boxes("Netzlaufwerk nicht verfügbar!"));
}

TEST_F(GridCommandsTest, AStaleRowIsPassedOverInSilence) {
    PlayRowExternally(7, 1);
    EXPECT_TRUE(shell.executed.empty());
    EXPECT_EQ(Hits(), "0");
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(GridCommandsTest, TheLastCheckedSearchBoxStaysChecked) {
    EXPECT_FALSE(SearchBoxClicked("SearchTitle", false, true));
    EXPECT_EQ(settings.values["SearchTitle"], "0");
    EXPECT_TRUE(SearchBoxClicked("SearchTitle", false, false));
    EXPECT_EQ(settings.values["SearchTitle"], "1");
    EXPECT_TRUE(SearchBoxClicked("SearchInterpret", true, true));
    EXPECT_EQ(settings.values["SearchInterpret"], "1");
}

} // namespace quavernet::test
