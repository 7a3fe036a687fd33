// The road of each statement that the play requests send, as StatementRoadTest has it for the rest of the
// program.
#include "support/EngineStatements.h"
#include "support/QueryPlans.h"
#include "support/StatementRoad.h"

#include "playback/PlaybackTest.h"

#include "playback/CategoryPlaylist.h"
#include "playback/PlaySelection.h"
#include "playback/RandomPlay.h"
#include "playback/SelectionPlaylist.h"
#include "playback/TreeRandomPlay.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;

// The engine is watched from before the library is opened. Each request is made twice.
class PlaybackRoadTest : private EngineStatements, public PlaybackTest {
protected:
    PlaybackRoadTest() {
        AddCategory("Jazz", {"a.mp3", "b.mp3"});
        AddCategory("Soul", {"c.mp3", "d.mp3"});
        Connection().Commit();
        mainModule.UseExternalPlayer = true;
        ListAndSelect({1, 2});
        LoadTree(tree);
    }

    void PlayList() {
        for (int round = 0; round < 2; ++round) {
            mnuPlaySelectedItems_Click(player);
        }
    }
    void PlayTree() {
        for (const char* key : {"CAT_Jazz", "CAT_Soul"}) {
            tree.Select(key);
            mnuPlay_Click(tree, player);
        }
    }
    void PlayAtRandom() {
        for (const char* key : {"CAT_Jazz", "CAT_Soul"}) {
            tree.Select(key);
            TreeRandomPlay(tree, player, work);
            cmdRandomize_Click(player, work);
        }
    }
};

TEST_F(PlaybackRoadTest, OfTheList) {
    const StatementRoad road(connection);
    PlayList();
    EXPECT_THAT(road.Kinds(),
                ElementsAre("Select Name, Length from Files where Path = ?: lifted kept",
                            "Update Files Set Hits = Hits + ? where Path = ?: partly lifted kept"));
}

TEST_F(PlaybackRoadTest, OfACategory) {
    const StatementRoad road(connection);
    PlayTree();
    EXPECT_THAT(
        road.Kinds(),
        ElementsAre(
            "Select Category_id from Categories where Category = ?: lifted kept",
            "Select File_id from FileCategories where Category_id = ? order by [Position]: lifted kept",
            "Select Path, Name, Length from Files where File_id = ?: lifted kept"));
}

TEST_F(PlaybackRoadTest, OfRandomPlays) {
    const StatementRoad road(connection);
    PlayAtRandom();
    EXPECT_THAT(road.Kinds(),
                ElementsAre("Select File_id from FileCategories where Parent = ?: lifted kept",
                            "Select Name, Length, Path from Files where File_id = ?: lifted kept",
                            "Select File_id from Files Order By File_id: remembered",
                            "Select Count(File_id) from Files: remembered"));
}

TEST_F(PlaybackRoadTest, ReadsWithoutAnOrderComeByKeyButTheEntriesOfACategory) {
    const StatementRoad road(connection);
    PlayList();
    PlayTree();
    PlayAtRandom();
    std::vector<std::string> others;
    for (const std::string& query : QueriesWithoutOrder(road)) {
        if (!ComesByKey(Connection(), query) || Sorts(Connection(), query)) {
            others.push_back(query);
        }
    }
    // Its rows lie in the order of their places, and are sorted by their keys.
    EXPECT_THAT(others, ElementsAre("Select File_id from FileCategories where Parent = 'Jazz'"));
}

} // namespace
} // namespace quavernet::test
