#include "playback/RandomPlay.h"

#include "playback/PlaybackTest.h"

#include "support/FailureNumber.h"

#include <gmock/gmock.h>

#include <map>
#include <set>

namespace quavernet::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class RandomPlayTest : public PlaybackTest {
protected:
    void Play() { cmdRandomize_Click(player, work); }
    void PlayMany(const std::string& count) {
        settings.values = {{"CheckedRandomOpt", "FileCount"}, {"FileCountRandomPlay", count}};
        Play();
    }
    std::vector<std::string> Fills() const {
        std::vector<std::string> fills;
        for (const std::string& call : calls) {
            if (call.starts_with("FillRandomPlaylist ")) {
                fills.push_back(call.substr(19));
            }
        }
        return fills;
    }
    /// The paths of the playlist that went to the external player.
    std::vector<std::string> Paths() const {
        std::vector<std::string> paths;
        std::ifstream file(Temporary("Random.m3u"));
        for (std::string line; std::getline(file, line);) {
            if (!line.starts_with("#")) {
                paths.push_back(line.substr(0, line.size() - 1));
            }
        }
        return paths;
    }

    const std::vector<std::string> shown{"pointer 11", "panel 1: Erstelle Random Liste...",
                                         "panel 1: ", "pointer 0"};
};

TEST_F(RandomPlayTest, AnEmptyLibraryPlaysNothing) {
    for (const bool external : {false, true}) {
        mainModule.UseExternalPlayer = external;
        calls.clear();
        Play();
        EXPECT_EQ(calls, shown);
    }
    EXPECT_THAT(connection.statements, Each("Select File_id from Files Order By File_id"));
    EXPECT_TRUE(NothingWritten());
    EXPECT_THAT(shell.executed, IsEmpty());
}

TEST_F(RandomPlayTest, OneFileAndAllFilesIsOneEntry) {
    AddFiles({"a.mp3"});
    connection.statements.clear();
    Play();
    EXPECT_THAT(calls,
                ElementsAre("pointer 11", "panel 1: Erstelle Random Liste...", "Show", "ClearQueue",
                            "FillRandomPlaylist 1 1", "SelectFirst", "PlayFile 1", "panel 1: ", "pointer 0"));
    EXPECT_THAT(connection.statements, ElementsAre("Select File_id from Files Order By File_id",
                                                   "Select Count(File_id) from Files"));
    EXPECT_TRUE(NothingWritten());
}

TEST_F(RandomPlayTest, FilesThatAreAlwaysAddedReplaceTheQueueAllTheSame) {
    AddFiles({"a.mp3"});
    mainModule.AlwaysAddToPlaylist = true;
    Play();
    EXPECT_THAT(calls, ::testing::IsSupersetOf({"ClearQueue", "PlayFile 1"}));
}

TEST_F(RandomPlayTest, TheExternalPlayerGetsOneEntryOfOneFile) {
    AddFiles({"a.mp3"});
    Execute("Update Files set Length = null");
    mainModule.UseExternalPlayer = true;
    connection.statements.clear();
    Play();
    EXPECT_EQ(BytesOf(Temporary("Random.m3u")), "#EXTM3U\r\n#EXTINF:0,a\r\n/m/a.mp3\r\n");
    EXPECT_THAT(shell.executed, ElementsAre(Temporary("Random.m3u")));
    EXPECT_THAT(connection.statements,
                ElementsAre("Select File_id from Files Order By File_id", "Select Count(File_id) from Files",
                            "Select Name, Length, Path from Files where File_id = 1"));
    EXPECT_EQ(calls, shown);
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(RandomPlayTest, EveryDrawGivesTheOnlyIdThereIs) {
    AddFiles({"a.mp3", "b.mp3", "c.mp3"});
    Execute("Delete from Files where File_id <> 2");
    PlayMany("4");
    EXPECT_THAT(Fills(), ElementsAre("2 1", "2 2", "2 3", "2 4"));
}

TEST_F(RandomPlayTest, AThousandOfTenFilesAreAThousandEntriesFromFirstToLast) {
    AddFiles({"0.mp3", "1.mp3", "2.mp3", "3.mp3", "4.mp3", "5.mp3", "6.mp3", "7.mp3", "8.mp3", "9.mp3"});
    mainModule.UseExternalPlayer = true;
    PlayMany("1000");
    std::map<std::string, int> times;
    for (const std::string& path : Paths()) {
        ++times[path];
    }
    EXPECT_EQ(Paths().size(), 1000U);
    EXPECT_EQ(times.size(), 10U);
    EXPECT_GT(times["/m/4.mp3"], times["/m/0.mp3"]) << "the ends are half as likely";
    EXPECT_GT(times["/m/5.mp3"], times["/m/9.mp3"]);
    mainModule.UseExternalPlayer = false;
    PlayMany("1000");
    EXPECT_EQ(Fills().size(), 1000U);
}

TEST_F(RandomPlayTest, AnIdWithoutAFileIsAskedForOnceInTheInternalPlayerAndDrawnAgainInTheExternalOne) {
    AddFiles({"a.mp3", "b.mp3", "c.mp3"});
    Execute("Delete from Files where File_id = 2");
    PlayMany("50");
    EXPECT_EQ(Fills().size(), 50U) << "the player itself leaves out what is missing";
    EXPECT_THAT(Fills(), ::testing::Contains(StartsWith("2 ")));
    mainModule.UseExternalPlayer = true;
    PlayMany("50");
    EXPECT_EQ(Paths().size(), 50U);
    EXPECT_THAT(Paths(), Each(::testing::AnyOf("/m/a.mp3", "/m/c.mp3")));
}

TEST_F(RandomPlayTest, AThousandVainDrawsInARowEndTheExternalList) {
    AddFiles({"a.mp3", "b.mp3"});
    Execute("Update Files set File_id = 2000000000 where File_id = 2");
    mainModule.UseExternalPlayer = true;
    connection.statements.clear();
    PlayMany("5");
    EXPECT_EQ(connection.StatementsOf("Select Name, Length, Path").size(), 1000U);
    EXPECT_EQ(BytesOf(Temporary("Random.m3u")), "#EXTM3U\r\n");
    EXPECT_THAT(shell.executed, ElementsAre(Temporary("Random.m3u")));
    EXPECT_EQ(calls, shown);
}

TEST_F(RandomPlayTest, AFoundFileBeginsTheCountOfVainDrawsAgain) {
    AddFiles({"a.mp3", "b.mp3"});
    mainModule.UseExternalPlayer = true;
    connection.hide = "Select Name, Length, Path";
    connection.hideRounds = 999;
    PlayMany("2");
    EXPECT_EQ(Paths().size(), 2U);
}

TEST_F(RandomPlayTest, TheInternalPlayerTakesAtMost32767) {
    AddFiles({"a.mp3"});
    PlayMany("40000");
    EXPECT_EQ(Fills().size(), 32767U);
    EXPECT_EQ(Fills().back(), "1 32767");
    EXPECT_EQ(mainModule.RandomCount, 32767);
}

TEST_F(RandomPlayTest, TheExternalPlayerHasNoLimit) {
    AddFiles({"a.mp3"});
    mainModule.UseExternalPlayer = true;
    PlayMany("32768");
    EXPECT_EQ(Paths().size(), 32768U);
    EXPECT_EQ(mainModule.RandomCount, 32768);
}

TEST_F(RandomPlayTest, ACountOfZeroEmptiesTheQueueOrHandsOverAHeader) {
    AddFiles({"a.mp3"});
    for (const char* count : {"0", "-3"}) {
        mainModule.UseExternalPlayer = false;
        calls.clear();
        PlayMany(count);
        EXPECT_THAT(calls, ElementsAre("pointer 11", "panel 1: Erstelle Random Liste...", "Show",
                                       "ClearQueue", "SelectFirst", "PlayFile 1", "panel 1: ", "pointer 0"));
        mainModule.UseExternalPlayer = true;
        PlayMany(count);
        EXPECT_EQ(BytesOf(Temporary("Random.m3u")), "#EXTM3U\r\n");
    }
    EXPECT_EQ(shell.executed.size(), 2U);
}

TEST_F(RandomPlayTest, ADrawHasSevenDigitsAtMost) {
    AddFiles({"a.mp3"});
    const std::pair<const char*, const char*> ids[] = {
        {"9999999", "9999999 1"}, {"10000000", "1E+07 1"}, {"12345678", "1.234568E+07 1"}};
    for (const auto& [id, text] : ids) {
        Execute("Update Files set File_id = " + std::string(id));
        calls.clear();
        Play();
        EXPECT_THAT(Fills(), ElementsAre(text));
    }
}

TEST_F(RandomPlayTest, ACountThatIsNoNumberFailsAndTakesTheDisplayBack) {
    AddFiles({"a.mp3"});
    for (const bool external : {false, true}) {
        mainModule.UseExternalPlayer = external;
        calls.clear();
        EXPECT_EQ(NumberOf([this] { PlayMany("many"); }), 13);
        EXPECT_EQ(calls, shown);
    }
    EXPECT_TRUE(NothingWritten());
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(RandomPlayTest, OnlyAPlaylistThatIsNotFoundIsTold) {
    AddFiles({"a.mp3"});
    mainModule.UseExternalPlayer = true;
    for (const int result : {2, 3, 5, 31}) {
        shell.executeResult = result;
        Play();
    }
    EXPECT_THAT(msgBox.shown, ElementsAre(missingFile));
}

TEST_F(RandomPlayTest, APlaylistThatCanNotBeWrittenIsToldAndTheDisplayTakenBack) {
    AddFiles({"a.mp3"});
    mainModule.UseExternalPlayer = true;
    const TemporaryPlace missing(temporary / "gone");
    Play();
    EXPECT_THAT(msgBox.shown, ElementsAre(cannotPlay));
    EXPECT_EQ(calls, shown);
    EXPECT_THAT(shell.executed, IsEmpty());
}

TEST_F(RandomPlayTest, AnOldTemporaryListIsReplaced) {
    AddFiles({"a.mp3"});
    mainModule.UseExternalPlayer = true;
    PlayMany("5");
    PlayMany("1");
    EXPECT_EQ(Paths().size(), 1U);
}

TEST_F(RandomPlayTest, NoPlayIsCounted) {
    AddFiles({"a.mp3"});
    for (const bool external : {false, true}) {
        mainModule.UseExternalPlayer = external;
        Play();
    }
    EXPECT_THAT(Hits(), ElementsAre("0"));
}

} // namespace
} // namespace quavernet::test
