#include "playback/PlaySelection.h"

#include "playback/PlaybackTest.h"

#include "playback/SelectionPlaylist.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string twoFiles = "#EXTM3U\r\n#EXTINF:60,b\r\n/m/b.mp3\r\n#EXTINF:60,it's\r\n/m/it's.mp3\r\n";

class PlaySelectionTest : public PlaybackTest {
protected:
    PlaySelectionTest() {
        AddFiles({"it''s.mp3", "b.mp3", "c.mp3"});
        gridView.fileId = [](std::int32_t row) { return row; };
        ListAndSelect({2, 1});
    }

    std::vector<std::string> Updates() const { return connection.StatementsOf("Update"); }
};

TEST_F(PlaySelectionTest, ThePlayButtonFillsTheInternalPlayerAndStartsIt) {
    cmdPlay_Click(grid, player);
    EXPECT_THAT(calls, ElementsAre("Show", "FillPlaylist", "PlayFile 1"));
    EXPECT_THAT(Updates(), IsEmpty());
}

TEST_F(PlaySelectionTest, ThePlayButtonStartsAlsoWhereFilesAreAlwaysAdded) {
    mainModule.AlwaysAddToPlaylist = true;
    cmdPlay_Click(grid, player);
    EXPECT_THAT(calls, ElementsAre("Show", "FillPlaylist", "PlayFile 1"));
}

TEST_F(PlaySelectionTest, ThePlayButtonHandsAPlaylistToTheExternalPlayerAndCountsNothing) {
    mainModule.UseExternalPlayer = true;
    cmdPlay_Click(grid, player);
    EXPECT_THAT(shell.executed, ElementsAre(Temporary("Playlist.m3u")));
    EXPECT_EQ(BytesOf(Temporary("Playlist.m3u")), twoFiles);
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_THAT(Updates(), IsEmpty());
}

TEST_F(PlaySelectionTest, WithoutASelectionOrRowsThePlayButtonDoesNothing) {
    for (const bool external : {false, true}) {
        mainModule.UseExternalPlayer = external;
        ListAndSelect({});
        cmdPlay_Click(grid, player);
        ListAndSelect({1});
        grid.Reset(1);
        cmdPlay_Click(grid, player);
    }
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_THAT(shell.executed, IsEmpty());
    EXPECT_TRUE(NothingWritten());
}

TEST_F(PlaySelectionTest, AFailureOfThePlayButtonPassesThrough) {
    player.fillFails = true;
    EXPECT_THROW(cmdPlay_Click(grid, player), RuntimeError);
    mainModule.UseExternalPlayer = true;
    Execute("Delete from Files");
    EXPECT_THROW(cmdPlay_Click(grid, player), RuntimeError);
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(PlaySelectionTest, ThePlayButtonAsksForThePathsOfTheSelectionForTheExternalPlayerAlone) {
    mainModule.SelectedRows.Add(99); // Not in the list.
    cmdPlay_Click(grid, player);
    EXPECT_THAT(calls, ElementsAre("Show", "FillPlaylist", "PlayFile 1"));
    mainModule.UseExternalPlayer = true;
    EXPECT_THROW(cmdPlay_Click(grid, player), RuntimeError);
    EXPECT_TRUE(NothingWritten());
}

TEST_F(PlaySelectionTest, APlaylistThatCanNotBeWrittenPassesThroughTheOthersAndNothingIsCounted) {
    mainModule.UseExternalPlayer = true;
    std::filesystem::create_directory(Temporary("Playlist.m3u"));
    EXPECT_THROW(cmdPlay_Click(grid, player), RuntimeError);
    EXPECT_THROW(mnuPlaySelectedItems_Click(player), RuntimeError);
    EXPECT_THROW(PlaySelectedFiles(SelectedPaths()), RuntimeError); // Enter.
    EXPECT_THAT(msgBox.shown, IsEmpty());
    EXPECT_THAT(shell.executed, IsEmpty());
    EXPECT_THAT(Hits(), ElementsAre("0", "0", "0"));
    EXPECT_TRUE(NothingWritten());
}

TEST_F(PlaySelectionTest, TheMainMenusPlayCountsEachSelectedRowAfterTheRequest) {
    connection.onStatement = [this](const std::string& statement) { calls.push_back(statement); };
    mnuPlaySelectedItems_Click(player);
    EXPECT_THAT(calls, ElementsAre("Show", "FillPlaylist", "PlayFile 1",
                                   "Update Files Set Hits = Hits + 1 where Path = '/m/b.mp3'",
                                   "Update Files Set Hits = Hits + 1 where Path = '/m/it''s.mp3'"));
    EXPECT_THAT(Hits(), ElementsAre("1", "1", "0"));
}

TEST_F(PlaySelectionTest, TheMainMenusPlayCountsInTheExternalPlayerToo) {
    mainModule.UseExternalPlayer = true;
    shell.executeResult = 2;
    mnuPlaySelectedItems_Click(player);
    EXPECT_EQ(BytesOf(Temporary("Playlist.m3u")), twoFiles);
    EXPECT_THAT(shell.executed, ElementsAre(Temporary("Playlist.m3u")));
    EXPECT_THAT(msgBox.shown, ElementsAre(missingFile)) << "the request counts all the same";
    EXPECT_THAT(Hits(), ElementsAre("1", "1", "0"));
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(PlaySelectionTest, WithoutASelectionTheMainMenusPlayDoesNothing) {
    ListAndSelect({});
    for (const bool external : {false, true}) {
        mainModule.UseExternalPlayer = external;
        mnuPlaySelectedItems_Click(player);
    }
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_THAT(shell.executed, IsEmpty());
    EXPECT_THAT(connection.statements, IsEmpty());
}

TEST_F(PlaySelectionTest, ASelectionThatChangesMeanwhileIsNotCounted) {
    player.onShow = [this] { ListAndSelect({3}); };
    mnuPlaySelectedItems_Click(player);
    EXPECT_THAT(Hits(), ElementsAre("1", "1", "0"));
}

TEST_F(PlaySelectionTest, AListThatIsLoadedMeanwhileLosesNoCount) {
    player.onShow = [] {
        mainModule.FilePaths.Clear();
        mainModule.SelectedRows.Clear();
    };
    mnuPlaySelectedItems_Click(player);
    EXPECT_THAT(Hits(), ElementsAre("1", "1", "0"));
}

TEST_F(PlaySelectionTest, AFailureOfTheMainMenusPlayPassesThroughAndCountsNothing) {
    player.fillFails = true;
    EXPECT_THROW(mnuPlaySelectedItems_Click(player), RuntimeError);
    EXPECT_THAT(Hits(), ElementsAre("0", "0", "0"));
}

TEST_F(PlaySelectionTest, TheListsPlayStartsTheInternalPlayerUnlessFilesAreAlwaysAdded) {
    for (const std::initializer_list<std::int32_t> rows : {std::initializer_list<std::int32_t>{2, 1}, {3}}) {
        ListAndSelect(rows);
        mnuKontextPlay_Click(grid, player, work);
        EXPECT_THAT(calls, ElementsAre("Show", "FillPlaylist", "PlayFile 1"));
        calls.clear();
        mainModule.AlwaysAddToPlaylist = true;
        mnuKontextPlay_Click(grid, player, work);
        EXPECT_THAT(calls, ElementsAre("Show", "FillPlaylist"));
        mainModule.AlwaysAddToPlaylist = false;
    }
    EXPECT_THAT(Hits(), ElementsAre("0", "0", "0"));
}

TEST_F(PlaySelectionTest, TheListsPlayHandsSeveralRowsToTheExternalPlayerWithoutACount) {
    mainModule.UseExternalPlayer = true;
    mnuKontextPlay_Click(grid, player, work);
    EXPECT_EQ(BytesOf(Temporary("Playlist.m3u")), twoFiles);
    EXPECT_THAT(shell.executed, ElementsAre(Temporary("Playlist.m3u")));
    EXPECT_THAT(Hits(), ElementsAre("0", "0", "0"));
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(PlaySelectionTest, WithOneRowTheExternalWayIsThatOfADoubleClickWhateverButtonWasPressedLast) {
    mainModule.UseExternalPlayer = true;
    ListAndSelect({2});
    grid.MouseDown(2, GridButton::Right, {});
    calls.clear();
    mnuKontextPlay_Click(grid, player, work);
    EXPECT_THAT(shell.executed, ElementsAre("/m/b.mp3"));
    EXPECT_THAT(Updates(), ElementsAre("Update Files Set Hits = Hits + 1 where File_id = 2"));
    EXPECT_THAT(calls, ElementsAre("pointer 11", "pointer 0"));
    EXPECT_TRUE(NothingWritten());
}

TEST_F(PlaySelectionTest, WithoutASelectionTheExternalWayPlaysTheCurrentRow) {
    mainModule.UseExternalPlayer = true;
    ListAndSelect({3});
    mainModule.SelectedRows.Clear();
    mnuKontextPlay_Click(grid, player, work);
    EXPECT_THAT(shell.executed, ElementsAre("/m/c.mp3"));
    grid.SetRow(0);
    mnuKontextPlay_Click(grid, player, work);
    EXPECT_EQ(shell.executed.size(), 1U) << "without a current row it ends silently, as a double click does";
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(PlaySelectionTest, TheOneRowTellsWhyItCouldNotBeOpened) {
    mainModule.UseExternalPlayer = true;
    ListAndSelect({2});
    for (const int result : {2, 3, 5, 31}) {
        shell.executeResult = result;
        mnuKontextPlay_Click(grid, player, work);
    }
    const ShownBox networkMissing{"Netzlaufwerk nicht verfügbar!", "Öffnen nicht möglich",
                                  MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok};
    EXPECT_THAT(msgBox.shown, ElementsAre(missingFile, networkMissing, missingFile));
    EXPECT_THAT(Hits(), ElementsAre("0", "4", "0"));
}

TEST_F(PlaySelectionTest, SeveralRowsTellAMissingPlaylistAlone) {
    mainModule.UseExternalPlayer = true;
    for (const int result : {2, 3, 5, 31}) {
        shell.executeResult = result;
        mnuKontextPlay_Click(grid, player, work);
    }
    EXPECT_THAT(msgBox.shown, ElementsAre(missingFile));
}

TEST_F(PlaySelectionTest, AFailureOfTheListsPlayIsTold) {
    player.fillFails = true;
    mnuKontextPlay_Click(grid, player, work);
    EXPECT_THAT(msgBox.shown, ElementsAre(cannotPlay));
    msgBox.shown.clear();
    mainModule.UseExternalPlayer = true;
    Execute("Delete from Files where File_id = 1");
    mnuKontextPlay_Click(grid, player, work);
    EXPECT_THAT(msgBox.shown, ElementsAre(cannotPlay));
    EXPECT_THAT(shell.executed, IsEmpty());
}

TEST_F(PlaySelectionTest, APlaylistThatCanNotBeWrittenIsToldByTheListsPlay) {
    mainModule.UseExternalPlayer = true;
    const TemporaryPlace missing(temporary / "gone");
    mnuKontextPlay_Click(grid, player, work);
    EXPECT_THAT(msgBox.shown, ElementsAre(cannotPlay));
}

} // namespace
} // namespace quavernet::test
