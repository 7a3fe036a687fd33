#include "playback/TreeRandomPlay.h"

#include "playback/PlaybackTest.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class TreeRandomPlayTest : public PlaybackTest {
protected:
    TreeRandomPlayTest() {
        AddCategory("Jazz", {"a.mp3", "b.mp3", "c.mp3"});
        AddCategory("Soul");
        LoadAndSelect("CAT_Jazz");
    }

    void Play() { TreeRandomPlay(tree, player, work); }
    /// Each draw is the same one: this share of the way from low to high.
    static void DrawAt(double share) {
        // The generator is a function of its seed: a seed is looked for whose first number lies there.
        for (std::uint64_t seed = 0;; ++seed) {
            if (std::abs(RandomNumbers([seed] { return seed; }).Rnd() - share) < 0.001) {
                mainModule.RandomNumbers = RandomNumbers([seed] { return seed; });
                return;
            }
        }
    }
    std::vector<std::string> Paths() const {
        std::vector<std::string> paths;
        std::ifstream file(Temporary("Random.m3u"));
        for (std::string line; std::getline(file, line);) {
            if (line.starts_with("/")) {
                paths.push_back(line.substr(0, line.size() - 1));
            }
        }
        return paths;
    }
};

TEST_F(TreeRandomPlayTest, EachEntryIsHandedOverOnceAndTheFirstStarted) {
    DrawAt(0.999); // The last one of those that are left.
    mainModule.AlwaysAddToPlaylist = true;
    Play();
    EXPECT_THAT(connection.statements,
                ElementsAre("Select File_id from FileCategories where Parent = 'Jazz'"));
    EXPECT_THAT(calls, ElementsAre("Show", "ClearQueue", "FillRandomPlaylist 3 1", "FillRandomPlaylist 2 2",
                                   "FillRandomPlaylist 1 3", "PlayFile 1", "panel 1: "));
    EXPECT_EQ(mainModule.RandomCount, 3);
    EXPECT_TRUE(NothingWritten());
}

TEST_F(TreeRandomPlayTest, ADrawIsThatOfTheEntriesThatAreLeft) {
    DrawAt(0.5);
    Play();
    EXPECT_THAT(calls, ::testing::IsSupersetOf(
                           {"FillRandomPlaylist 2 1", "FillRandomPlaylist 3 2", "FillRandomPlaylist 1 3"}));
    calls.clear();
    DrawAt(0.001);
    Play();
    EXPECT_THAT(calls, ::testing::IsSupersetOf(
                           {"FillRandomPlaylist 1 1", "FillRandomPlaylist 2 2", "FillRandomPlaylist 3 3"}));
}

TEST_F(TreeRandomPlayTest, TheExternalPlayerGetsEachEntryOnce) {
    mainModule.UseExternalPlayer = true;
    std::set<std::vector<std::string>> orders;
    for (int round = 0; round < 100; ++round) {
        Play();
        EXPECT_THAT(Paths(), UnorderedElementsAre("/m/a.mp3", "/m/b.mp3", "/m/c.mp3"));
        orders.insert(Paths());
    }
    EXPECT_EQ(orders.size(), 6U);
    EXPECT_EQ(shell.executed, std::vector<std::string>(100, Temporary("Random.m3u")));
}

TEST_F(TreeRandomPlayTest, TheExternalListHasTheFormOfEveryPlaylistAndTheDisplayIsReset) {
    Execute("Update Files set Length = null where File_id = 2");
    DrawAt(0.001);
    mainModule.UseExternalPlayer = true;
    connection.statements.clear();
    Play();
    EXPECT_EQ(
        BytesOf(Temporary("Random.m3u")),
        "#EXTM3U\r\n#EXTINF:60,a\r\n/m/a.mp3\r\n#EXTINF:0,b\r\n/m/b.mp3\r\n#EXTINF:60,c\r\n/m/c.mp3\r\n");
    EXPECT_THAT(connection.statements, ElementsAre("Select File_id from FileCategories where Parent = 'Jazz'",
                                                   "Select Name, Length, Path from Files where File_id = 1",
                                                   "Select Name, Length, Path from Files where File_id = 2",
                                                   "Select Name, Length, Path from Files where File_id = 3"));
    EXPECT_THAT(calls, ElementsAre("pointer 0", "panel 1: "));
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(TreeRandomPlayTest, AnEntryWhoseFileIsGoneIsLeftOut) {
    Execute("Delete from Files where File_id = 2");
    mainModule.UseExternalPlayer = true;
    Play();
    EXPECT_THAT(Paths(), UnorderedElementsAre("/m/a.mp3", "/m/c.mp3"));
    EXPECT_EQ(shell.executed.size(), 1U);
}

TEST_F(TreeRandomPlayTest, AnEmptyCategoryIsAnEmptyQueueOrAHeader) {
    LoadAndSelect("CAT_Soul");
    Play();
    EXPECT_THAT(calls, ElementsAre("Show", "ClearQueue", "PlayFile 1", "panel 1: "));
    EXPECT_EQ(mainModule.RandomCount, 0);
    mainModule.UseExternalPlayer = true;
    Play();
    EXPECT_EQ(BytesOf(Temporary("Random.m3u")), "#EXTM3U\r\n");
    EXPECT_EQ(shell.executed.size(), 1U);
}

TEST_F(TreeRandomPlayTest, AnApostropheInTheNameIsAFailureAndNothingIsSent) {
    AddCategory("It''s", {"x.mp3"});
    LoadAndSelect("CAT_It's");
    EXPECT_THROW(Play(), RuntimeError);
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(TreeRandomPlayTest, WithoutASelectedNodeNothingHappens) {
    tree.ClearSelection();
    Play();
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_THAT(connection.statements, IsEmpty());
}

TEST_F(TreeRandomPlayTest, OnlyAPlaylistThatIsNotFoundIsTold) {
    mainModule.UseExternalPlayer = true;
    for (const int result : {2, 3, 5, 31}) {
        shell.executeResult = result;
        Play();
    }
    EXPECT_THAT(msgBox.shown, ElementsAre(missingFile));
}

TEST_F(TreeRandomPlayTest, APlaylistThatCanNotBeWrittenIsToldAndTheDisplayIsReset) {
    mainModule.UseExternalPlayer = true;
    const TemporaryPlace missing(temporary / "gone");
    Play();
    EXPECT_THAT(msgBox.shown, ElementsAre(cannotPlay));
    EXPECT_THAT(calls, ElementsAre("pointer 0", "panel 1: "));
}

TEST_F(TreeRandomPlayTest, NoPlayIsCounted) {
    for (const bool external : {false, true}) {
        mainModule.UseExternalPlayer = external;
        Play();
    }
    EXPECT_THAT(Hits(), ElementsAre("0", "0", "0"));
}

} // namespace
} // namespace quavernet::test
