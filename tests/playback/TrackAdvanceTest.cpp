// The end of a track, and the file that the engine is told to go on with by itself.
#include "playback/PlayQueueTest.h"

#include <algorithm>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TrackAdvanceTest : public PlayQueueTest {
protected:
    /// Starts an entry of a new queue.
    void Play(int count, std::int16_t entry) {
        Fill(count);
        queue.PlayFile(entry);
        calls.clear();
    }
    std::size_t Nexts() {
        const auto told = EngineCalls();
        return static_cast<std::size_t>(std::count_if(
            told.begin(), told.end(), [](const std::string& call) { return call.starts_with("next"); }));
    }
};

TEST_F(TrackAdvanceTest, TheNextEntryGoesOnWithoutABreak) {
    Play(3, 1);
    player.End();
    EXPECT_THAT(EngineCalls(), ElementsAre("goes on with /m/2.mp3", "Play", "next /m/3.mp3"));
    EXPECT_EQ(queue.CurrentTrack(), 2);
    EXPECT_EQ(queue.ListIndex(), 1);
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "|> P2 - T2", "P3 - T3"));
}

TEST_F(TrackAdvanceTest, AfterTheLastEntryItsNumberStaysWithoutAMarker) {
    Play(2, 2);
    EXPECT_EQ(player.Next(), "");
    player.End();
    EXPECT_THAT(EngineCalls(), IsEmpty());
    EXPECT_EQ(queue.CurrentTrack(), 2);
    EXPECT_EQ(queue.ListIndex(), 1);
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "P2 - T2"));
    queue.cmdNext_Click();
    EXPECT_THAT(EngineCalls(), IsEmpty());
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "|> P2 - T2"));
}

TEST_F(TrackAdvanceTest, RepeatStartsTheCurrentEntryAgain) {
    Play(2, 2);
    queue.chkRepeat_Click(true);
    EXPECT_EQ(player.Next(), "/m/2.mp3");
    calls.clear();
    for (int round = 0; round < 3; ++round) {
        player.End();
        EXPECT_THAT(EngineCalls(), ElementsAre("goes on with /m/2.mp3", "Play", "next /m/2.mp3"));
        EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "|> P2 - T2"));
    }
    queue.chkRepeat_Click(false);
    EXPECT_EQ(player.Next(), "");
}

TEST_F(TrackAdvanceTest, RepeatAllGoesFromTheLastEntryToTheFirst) {
    Play(2, 1);
    queue.chkRepeatAll_Click(true);
    EXPECT_EQ(player.Next(), "/m/2.mp3");
    player.End();
    EXPECT_EQ(queue.CurrentTrack(), 2);
    EXPECT_EQ(player.Next(), "/m/1.mp3");
    EngineCalls();
    player.End();
    EXPECT_THAT(EngineCalls(), ElementsAre("goes on with /m/1.mp3", "Play", "next /m/2.mp3"));
    EXPECT_EQ(queue.CurrentTrack(), 1);
    EXPECT_EQ(queue.ListIndex(), 0);
    EXPECT_THAT(Texts(), ElementsAre("|> P1 - T1", "P2 - T2"));
}

TEST_F(TrackAdvanceTest, RepeatAllRepeatsASingleEntryForEver) {
    Play(1, 1);
    queue.chkRepeatAll_Click(true);
    for (int round = 0; round < 5; ++round) {
        player.End();
        EXPECT_EQ(player.FileName(), "/m/1.mp3");
        EXPECT_TRUE(player.IsPlaying());
        EXPECT_THAT(Texts(), ElementsAre("|> P1 - T1"));
    }
}

TEST_F(TrackAdvanceTest, RepeatAllTakesTheEndOfTheListByItsSelection) {
    Play(3, 1);
    queue.chkRepeatAll_Click(true);
    queue.SetListIndex(2);
    EXPECT_EQ(player.Next(), "/m/1.mp3");
    player.End();
    EXPECT_EQ(queue.CurrentTrack(), 1);
    queue.PlayFile(3);
    queue.SetListIndex(1);
    EXPECT_EQ(player.Next(), "");
    player.End(); // There is no entry 4, and the selected one is not the last.
    EXPECT_EQ(queue.CurrentTrack(), 4);
    EXPECT_THAT(Texts(), ElementsAre("|> P1 - T1", "(P2 - T2) ***FileError***", "P3 - T3"));
}

TEST_F(TrackAdvanceTest, TheEndOfATrackInAnEmptiedQueueDoesNothing) {
    Play(3, 2);
    queue.cmdRemAll_Click();
    EXPECT_EQ(player.Next(), "");
    EngineCalls();
    for (const bool all : {false, true}) {
        queue.chkRepeatAll_Click(all);
        player.End();
        EXPECT_THAT(EngineCalls(), IsEmpty());
    }
    queue.chkRepeat_Click(true);
    player.End();
    EXPECT_THAT(EngineCalls(), IsEmpty());
}

TEST_F(TrackAdvanceTest, AnOggEntryHaltsTheQueue) {
    Fill(1);
    queue.AddPlaylist("/m/a.ogg");
    queue.PlayFile(1);
    EXPECT_EQ(player.Next(), "");
    EngineCalls();
    player.End();
    EXPECT_THAT(EngineCalls(), IsEmpty());
    EXPECT_EQ(queue.CurrentTrack(), 2);
    EXPECT_EQ(queue.ListIndex(), 1);
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "(a.ogg) ***FileError***"));
}

TEST_F(TrackAdvanceTest, AnEntryThatTheEngineRefusesHaltsTheQueueAndMarksTheOneBefore) {
    Play(3, 1);
    player.refused = {"/m/2.mp3"};
    player.End();
    EXPECT_THAT(EngineCalls(), ElementsAre("goes on with /m/2.mp3"));
    EXPECT_EQ(queue.CurrentTrack(), 2);
    // The selection had not come to it when it was refused.
    EXPECT_THAT(Texts(), ElementsAre("(P1 - T1) ***FileError***", "P2 - T2", "P3 - T3"));
    EXPECT_EQ(queue.ListIndex(), 1);
}

TEST_F(TrackAdvanceTest, TheRepeatBoxesExcludeEachOther) {
    queue.chkRepeat_Click(true);
    EXPECT_TRUE(view.repeat);
    queue.chkRepeatAll_Click(true);
    EXPECT_FALSE(queue.Repeat());
    EXPECT_TRUE(queue.RepeatAll());
    EXPECT_FALSE(view.repeat);
    EXPECT_TRUE(view.repeatAll);
    queue.chkRepeat_Click(true);
    EXPECT_TRUE(queue.Repeat());
    EXPECT_FALSE(queue.RepeatAll());
    queue.chkRepeatAll_Click(false); // Was off.
    EXPECT_TRUE(queue.Repeat());
    queue.chkRepeat_Click(false);
    EXPECT_FALSE(queue.Repeat() || queue.RepeatAll());
}

// What the engine is to go on with.

TEST_F(TrackAdvanceTest, NothingIsToldBeforeAFileWasGivenToTheEngine) {
    Fill(2);
    queue.SetListIndex(1);
    queue.lstFiles_KeyDown(40);
    EXPECT_THAT(EngineCalls(), IsEmpty());
    player.refused = {"/m/1.mp3"};
    queue.PlayFile(1);
    EXPECT_THAT(EngineCalls(), ElementsAre("file /m/1.mp3"));
}

TEST_F(TrackAdvanceTest, AFillTellsOfTheNextEntryOnce) {
    AddFiles(1);
    queue.AddPlaylist("/m/1.mp3");
    queue.PlayFile(1);
    EXPECT_THAT(EngineCalls(), ElementsAre("file /m/1.mp3", "Play", "next "));
    for (int i = 0; i < 1000; ++i) {
        queue.FillRandomPlaylist("1", i);
    }
    EXPECT_EQ(Nexts(), 1U);
    EXPECT_EQ(player.Next(), "/m/1.mp3");
}

TEST_F(TrackAdvanceTest, EachChangeOfTheOrderIsTold) {
    Play(4, 1);
    EXPECT_EQ(player.Next(), "/m/2.mp3");
    queue.SetListIndex(1);
    queue.cmdRem_Click(); // The one after the current one shifts the number too.
    EXPECT_EQ(queue.CurrentTrack(), 0);
    EXPECT_EQ(player.Next(), "/m/1.mp3");
    queue.lstFiles_KeyDown(39);
    EXPECT_EQ(queue.CurrentTrack(), 2);
    EXPECT_EQ(player.Next(), "/m/4.mp3");
    queue.lstFiles_KeyDown(37);
    EXPECT_EQ(player.Next(), "/m/3.mp3");
    queue.cmdRemAll_Click();
    EXPECT_EQ(player.Next(), "");
    queue.AddPlaylist("/m/4.mp3");
    EXPECT_EQ(player.Next(), "");
    queue.AddPlaylist("/m/3.mp3");
    EXPECT_EQ(player.Next(), "/m/3.mp3");
    queue.DropOnList({"/m/2.mp3"});
    EXPECT_EQ(player.Next(), "/m/3.mp3");
    EXPECT_LE(Nexts(), 6U);
}

TEST_F(TrackAdvanceTest, AQueueThatIsChangedAfterTheEngineHasGoneOnIsObeyed) {
    Play(3, 1);
    // The engine has begun 2 by itself when the user removes it, and only then is the end told.
    EXPECT_EQ(player.Next(), "/m/2.mp3");
    player.GoOn();
    queue.SetListIndex(1);
    queue.cmdRem_Click();
    queue.lstFiles_KeyDown(40);
    queue.lstFiles_KeyDown(38);
    EXPECT_EQ(queue.CurrentTrack(), 1); // As before.
    calls.clear();
    player.TellEnd();
    EXPECT_THAT(EngineCalls(), ElementsAre("file /m/3.mp3", "Play", "next "));
}

TEST_F(TrackAdvanceTest, AClosedWindowHearsNoMoreOfTheEngine) {
    Play(3, 1);
    queue.Form_Unload();
    EXPECT_THAT(EngineCalls(), ElementsAre("Stop", "next "));
    EXPECT_FALSE(player.HasListener());
    queue.EndOfStream();
    queue.LoadedLate();
    queue.RefusedLate();
    queue.PlayingChanged();
    EXPECT_THAT(EngineCalls(), IsEmpty());
    EXPECT_EQ(queue.ListCount(), 0);
}

} // namespace
} // namespace quavernet::test
