#include "playback/CategoryPlaylist.h"

#include "playback/PlaybackTest.h"

#include "support/SmallAudio.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* NoHit = "Update Files Set Hits = Hits + 1 where Path = ''";

class CategoryPlaylistTest : public PlaybackTest {
protected:
    CategoryPlaylistTest() {
        AddCategory("Jazz", {"a.mp3", "b.mp3", "c.mp3"});
        AddCategory("Soul");
        // The places do not follow the keys.
        Execute({"Update FileCategories set [Position] = 7 where FileCategory_id = 1",
                 "Update Files set Length = null where File_id = 3"});
        dialogs.file = target;
        LoadAndSelect("CAT_Jazz");
    }

    const std::string jazz = "#EXTM3U\r\n#EXTINF:60,b\r\n/m/b.mp3\r\n#EXTINF:0,c\r\n/m/c.mp3\r\n"
                             "#EXTINF:60,a\r\n/m/a.mp3\r\n";

    TemporaryFolder folder;
    std::string target = folder / "jazz";
};

TEST_F(CategoryPlaylistTest, ACategoryIsSavedInTheOrderOfItsPlacesWithoutAMessage) {
    mnuCreatePlaylist_Click(tree);
    EXPECT_THAT(dialogs.shown, ElementsAre(saveDialog));
    EXPECT_EQ(BytesOf(target), jazz);
    EXPECT_THAT(connection.statements,
                ElementsAre("Select Category_id from Categories where Category = 'Jazz'",
                            "Select File_id from FileCategories where Category_id = 1 order by [Position]",
                            "Select Path, Name, Length from Files where File_id = 2",
                            "Select Path, Name, Length from Files where File_id = 3",
                            "Select Path, Name, Length from Files where File_id = 1"));
    EXPECT_THAT(msgBox.shown, IsEmpty());
    EXPECT_THAT(calls, ElementsAre("dialog"));
}

TEST_F(CategoryPlaylistTest, AnApostropheInTheNameIsQuoted) {
    AddCategory("Rock ''n'' Roll", {"r.mp3"});
    LoadAndSelect("CAT_Rock 'n' Roll");
    mnuCreatePlaylist_Click(tree);
    EXPECT_EQ(connection.statements.front(),
              "Select Category_id from Categories where Category = 'Rock ''n'' Roll'");
    EXPECT_EQ(BytesOf(target), "#EXTM3U\r\n#EXTINF:60,r\r\n/m/r.mp3\r\n");
}

TEST_F(CategoryPlaylistTest, OfAnEmptyCategoryNoFileIsWritten) {
    LoadAndSelect("CAT_Soul");
    mnuCreatePlaylist_Click(tree);
    EXPECT_FALSE(std::filesystem::exists(target));
    WriteBytes(target, "old");
    mnuCreatePlaylist_Click(tree);
    EXPECT_EQ(BytesOf(target), "old");
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(CategoryPlaylistTest, ACancelledOrFailingDialogEndsTheCommandQuietly) {
    dialogs.file.reset();
    mnuCreatePlaylist_Click(tree);
    dialogs.fails = true;
    mnuCreatePlaylist_Click(tree);
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(CategoryPlaylistTest, WithoutASelectedNodeNothingIsAskedAndNothingFails) {
    tree.ClearSelection();
    mnuCreatePlaylist_Click(tree);
    EXPECT_THAT(dialogs.shown, IsEmpty());
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(CategoryPlaylistTest, TheCategoryIsTheOneThatWasSelectedBeforeTheDialog) {
    dialogs.onShow = [this] { tree.Select("CAT_Soul"); };
    mnuCreatePlaylist_Click(tree);
    EXPECT_EQ(BytesOf(target), jazz);
}

TEST_F(CategoryPlaylistTest, ACategoryThatGoesWhileTheDialogIsOpenEndsTheCommandQuietly) {
    dialogs.onShow = [this] { Execute("Delete from Categories"); };
    mnuCreatePlaylist_Click(tree);
    EXPECT_FALSE(std::filesystem::exists(target));
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(CategoryPlaylistTest, ACategoryGoesToTheExternalPlayerUnderItsOwnName) {
    mainModule.UseExternalPlayer = true;
    mnuPlay_Click(tree, player);
    EXPECT_EQ(BytesOf(Temporary("Jazz.m3u")), jazz);
    EXPECT_THAT(shell.executed, ElementsAre(Temporary("Jazz.m3u")));
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_THAT(connection.StatementsOf("Update"), IsEmpty());
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(CategoryPlaylistTest, OnlyAPlaylistThatIsNotFoundIsTold) {
    mainModule.UseExternalPlayer = true;
    for (const int result : {2, 3, 5, 31}) {
        shell.executeResult = result;
        mnuPlay_Click(tree, player);
    }
    EXPECT_THAT(msgBox.shown, ElementsAre(missingFile));
}

TEST_F(CategoryPlaylistTest, ACategoryGoesToTheInternalPlayerAsAWholeAndIsStartedInAnyCase) {
    for (const bool add : {false, true}) {
        mainModule.AlwaysAddToPlaylist = add;
        calls.clear();
        mnuPlay_Click(tree, player);
        EXPECT_THAT(calls, ElementsAre("Show", "FillPlaylistFromTree 2", "PlayFileFromTree 1"));
    }
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_TRUE(NothingWritten());
}

TEST_F(CategoryPlaylistTest, AnEntryIsPlayedAsByADoubleClick) {
    LoadAndSelect("file2pos2");
    mnuPlay_Click(tree, player);
    EXPECT_THAT(calls, ElementsAre("Show", "FillPlaylistFromTree 1", "PlayFileFromTree 1"));
    EXPECT_THAT(connection.statements, ElementsAre(NoHit));
    mainModule.AlwaysAddToPlaylist = true;
    calls.clear();
    mnuPlay_Click(tree, player);
    EXPECT_THAT(calls, ElementsAre("Show", "FillPlaylistFromTree 1"));
    mainModule.UseExternalPlayer = true;
    mnuPlay_Click(tree, player);
    EXPECT_THAT(shell.executed, ElementsAre("/m/b.mp3"));
    EXPECT_THAT(Hits(), ElementsAre("0", "1", "0"));
}

TEST_F(CategoryPlaylistTest, FailuresOfPlayingAreToldInBothPlayers) {
    player.fillFails = true;
    mnuPlay_Click(tree, player);
    EXPECT_THAT(msgBox.shown, ElementsAre(cannotPlay));
    mainModule.UseExternalPlayer = true;
    LoadAndSelect("CAT_Soul");
    mnuPlay_Click(tree, player);
    EXPECT_THAT(msgBox.shown, ElementsAre(cannotPlay, cannotPlay)) << "a category without entries";
    tree.ClearSelection();
    mnuPlay_Click(tree, player);
    EXPECT_EQ(msgBox.shown.size(), 3U) << "no node";
    EXPECT_TRUE(NothingWritten());
    EXPECT_THAT(shell.executed, IsEmpty());
}

TEST_F(CategoryPlaylistTest, AFailingCountOfAnEntryIsTold) {
    LoadAndSelect("file2pos2");
    connection.failOn = "Update";
    mnuPlay_Click(tree, player);
    EXPECT_THAT(msgBox.shown, ElementsAre(cannotPlay));
}

TEST_F(CategoryPlaylistTest, ANameWithASlashIsNoFilesName) {
    mainModule.UseExternalPlayer = true;
    std::filesystem::create_directory(Temporary("a"));
    AddCategory("a/b", {"r.mp3"});
    LoadAndSelect("CAT_a/b");
    mnuPlay_Click(tree, player);
    EXPECT_THAT(msgBox.shown, ElementsAre(cannotPlay));
    EXPECT_TRUE(std::filesystem::is_empty(Temporary("a")));
    EXPECT_THAT(shell.executed, IsEmpty());
}

} // namespace
} // namespace quavernet::test
