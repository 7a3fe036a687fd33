// Which play requests count plays, and of which files: one line of the table each, in both players. The
// requests are those of the list and of the tree; the player is a recording one.
#include "playback/PlaybackTest.h"

#include "browser/GridOpen.h"
#include "playback/CategoryPlaylist.h"
#include "playback/PlaySelection.h"
#include "playback/RandomPlay.h"
#include "playback/SelectionPlaylist.h"
#include "playback/TreeRandomPlay.h"
#include "tree/TreeEvents.h"

namespace quavernet::test {
namespace {

class NoSort : public SortView {
public:
    void SetRedraw(bool) override {}
    void SetHeaderPicture(const SortArrow&) override {}
    void LoadDatabase(const std::string&) override {}
};

class PlayRequestTableTest : public PlaybackTest {
protected:
    PlayRequestTableTest() {
        AddCategory("Jazz", {"a.mp3", "b.mp3", "c.mp3"});
        gridView.fileId = [](std::int32_t row) { return row; };
    }

    /// The plays of the three files after the request in both players, the internal one first.
    std::vector<std::string> CountsOf(const std::function<void()>& request) {
        std::vector<std::string> counts;
        for (const bool external : {false, true}) {
            mainModule.UseExternalPlayer = external;
            Execute("Update Files set Hits = 0");
            request();
            std::string text;
            for (const std::string& hits : Hits()) {
                text += hits;
            }
            counts.push_back(text);
        }
        return counts;
    }
    using Counts = std::vector<std::string>;
    NoSort sort;
};

TEST_F(PlayRequestTableTest, ADoubleClickOnARowCountsItsFileInBothPlayers) {
    ListAndSelect({2});
    EXPECT_EQ(CountsOf([this] { grdMp3_DblClick(0, 2, grid, player, sort, work); }), (Counts{"010", "010"}));
}

TEST_F(PlayRequestTableTest, ThePlayButtonCountsNothing) {
    ListAndSelect({1, 3});
    EXPECT_EQ(CountsOf([this] { cmdPlay_Click(grid, player); }), (Counts{"000", "000"}));
}

TEST_F(PlayRequestTableTest, TheListsPlayCountsNothingButOneRowInTheExternalPlayer) {
    ListAndSelect({1, 3});
    EXPECT_EQ(CountsOf([this] { mnuKontextPlay_Click(grid, player, work); }), (Counts{"000", "000"}));
    ListAndSelect({3});
    EXPECT_EQ(CountsOf([this] { mnuKontextPlay_Click(grid, player, work); }), (Counts{"000", "001"}));
}

TEST_F(PlayRequestTableTest, TheMainMenusPlayCountsEachSelectedFileInBothPlayers) {
    ListAndSelect({1, 3});
    EXPECT_EQ(CountsOf([this] { mnuPlaySelectedItems_Click(player); }), (Counts{"101", "101"}));
}

TEST_F(PlayRequestTableTest, PlayOnAnEntryOfTheTreeCountsInTheExternalPlayerAlone) {
    LoadAndSelect("file2pos2");
    EXPECT_EQ(CountsOf([this] { mnuPlay_Click(tree, player); }), (Counts{"000", "010"}));
}

TEST_F(PlayRequestTableTest, PlayOnACategoryCountsNothing) {
    LoadAndSelect("CAT_Jazz");
    EXPECT_EQ(CountsOf([this] { mnuPlay_Click(tree, player); }), (Counts{"000", "000"}));
}

TEST_F(PlayRequestTableTest, ADoubleClickOnTheTreeCountsAnEntryInTheExternalPlayerAlone) {
    LoadAndSelect("file2pos2");
    EXPECT_EQ(CountsOf([this] { TreeDblClick(tree, player); }), (Counts{"000", "010"}));
    LoadAndSelect("CAT_Jazz");
    EXPECT_EQ(CountsOf([this] { TreeDblClick(tree, player); }), (Counts{"000", "000"}));
}

TEST_F(PlayRequestTableTest, EnterOnSeveralRowsRandomPlaysAndSavedPlaylistsCountNothing) {
    ListAndSelect({1, 3});
    EXPECT_EQ(CountsOf([] { PlaySelectedFiles(SelectedPaths()); }), (Counts{"000", "000"}));
    EXPECT_EQ(CountsOf([this] { cmdRandomize_Click(player, work); }), (Counts{"000", "000"}));
    LoadAndSelect("CAT_Jazz");
    EXPECT_EQ(CountsOf([this] { TreeRandomPlay(tree, player, work); }), (Counts{"000", "000"}));
    dialogs.file = Temporary("saved.m3u");
    EXPECT_EQ(CountsOf([this] {
                  msgBox.answers = {MsgBox::Answer::Yes};
                  mnuPlaylist_Click(player, work);
                  mnuCreatePlaylist_Click(tree);
              }),
              (Counts{"000", "000"}));
}

} // namespace
} // namespace quavernet::test
