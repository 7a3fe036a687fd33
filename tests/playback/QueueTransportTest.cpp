#include "playback/PlayQueueTest.h"

#include "app/Keys.h"

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class QueueTransportTest : public PlayQueueTest {};

TEST_F(QueueTransportTest, PlayStartsTheSelectedEntryAndLeavesTheOldMarker) {
    Fill(3);
    queue.SetListIndex(1);
    queue.cmdPlay_Click();
    EXPECT_THAT(EngineCalls(), ElementsAre("file /m/2.mp3", "Play", "next /m/3.mp3"));
    queue.SetListIndex(2);
    queue.cmdPlay_Click();
    EXPECT_EQ(queue.CurrentTrack(), 3);
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "|> P2 - T2", "|> P3 - T3"));
}

TEST_F(QueueTransportTest, PlayWithoutASelectionDoesNothing) {
    queue.cmdPlay_Click();
    Fill(1);
    queue.SetListIndex(-1);
    calls.clear();
    queue.cmdPlay_Click();
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(QueueTransportTest, PauseWorksOnceATrackHasBeenShown) {
    queue.cmdPause_Click();
    EXPECT_THAT(calls, IsEmpty());
    Fill(1);
    queue.PlayFile(1);
    calls.clear();
    queue.cmdPause_Click();
    EXPECT_THAT(calls, ElementsAre("Pause", "caption Quavernet Player - Pause"));
    EXPECT_TRUE(queue.Paused());
    calls.clear();
    queue.cmdPause_Click();
    EXPECT_THAT(calls, ElementsAre("Play", "caption Quavernet Player"));
    EXPECT_FALSE(queue.Paused());
}

TEST_F(QueueTransportTest, StopRewindsTakesTheMarkerOffAndLeavesThePause) {
    Fill(2);
    queue.PlayFile(2);
    queue.cmdPause_Click();
    player.SetPosition(33);
    queue.Timer1_Timer();
    calls.clear();
    queue.cmdStop_Click();
    EXPECT_THAT(calls, ElementsAre("Stop", "position 0", "text P2 - T2", "slider 0", "time 00:00"));
    EXPECT_TRUE(queue.Paused());
    EXPECT_EQ(queue.CurrentTrack(), 2);
    queue.cmdPause_Click();
    EXPECT_FALSE(queue.Paused());
    EXPECT_TRUE(player.IsPlaying());
}

TEST_F(QueueTransportTest, NextGoesToTheNextEntry) {
    Fill(3);
    queue.PlayFile(1);
    EngineCalls();
    queue.cmdNext_Click();
    EXPECT_THAT(EngineCalls(), ElementsAre("file /m/2.mp3", "Play", "next /m/3.mp3"));
    EXPECT_EQ(queue.CurrentTrack(), 2);
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "|> P2 - T2", "P3 - T3"));
}

TEST_F(QueueTransportTest, NextFromNothingStartsTheSecondEntry) {
    Fill(3);
    queue.cmdNext_Click();
    EXPECT_EQ(queue.CurrentTrack(), 2);
    EXPECT_EQ(player.FileName(), "/m/2.mp3");
}

TEST_F(QueueTransportTest, NextAtTheEndMarksTheLastEntryWithTheSelectedOnesText) {
    Fill(3);
    queue.PlayFile(3);
    EngineCalls();
    queue.cmdNext_Click();
    EXPECT_THAT(EngineCalls(), IsEmpty());
    EXPECT_EQ(queue.CurrentTrack(), 3);
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "P2 - T2", "|> P3 - T3"));
    queue.SetListIndex(0);
    queue.cmdNext_Click();
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "P2 - T2", "|> P1 - T1"));
    queue.SetListIndex(-1);
    queue.cmdNext_Click();
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "P2 - T2", "P1 - T1"));
}

TEST_F(QueueTransportTest, LastGoesBackAndStaysAtTheFirstEntry) {
    Fill(3);
    queue.PlayFile(2);
    EngineCalls();
    queue.cmdLast_Click();
    EXPECT_THAT(EngineCalls(), ElementsAre("file /m/1.mp3", "Play", "next /m/2.mp3"));
    EXPECT_THAT(Texts(), ElementsAre("|> P1 - T1", "P2 - T2", "P3 - T3"));
    queue.cmdLast_Click();
    EXPECT_THAT(EngineCalls(), IsEmpty());
    EXPECT_EQ(queue.CurrentTrack(), 1);
    EXPECT_THAT(Texts(), ElementsAre("|> P1 - T1", "P2 - T2", "P3 - T3"));
    queue.SetListIndex(2);
    queue.cmdLast_Click();
    EXPECT_THAT(Texts(), ElementsAre("|> P3 - T3", "P2 - T2", "P3 - T3"));
}

TEST_F(QueueTransportTest, NextAndLastDoNothingOnAnEmptyList) {
    queue.cmdNext_Click();
    queue.cmdLast_Click();
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_EQ(queue.CurrentTrack(), 0);
}

TEST_F(QueueTransportTest, ADoubleClickTakesTheOldMarkerAway) {
    Fill(3);
    queue.PlayFile(1);
    queue.SetListIndex(2);
    queue.lstFiles_DblClick();
    EXPECT_EQ(queue.CurrentTrack(), 3);
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "P2 - T2", "|> P3 - T3"));
}

TEST_F(QueueTransportTest, ADoubleClickOnNothingLeavesNothingCurrent) {
    Fill(2);
    queue.PlayFile(1);
    queue.SetListIndex(-1);
    EngineCalls();
    queue.lstFiles_DblClick();
    EXPECT_EQ(queue.CurrentTrack(), 0);
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "P2 - T2"));
    EXPECT_THAT(EngineCalls(), ElementsAre("next /m/1.mp3"));
}

TEST_F(QueueTransportTest, EnterStartsTheSelectedEntryAndLeavesTheOldMarker) {
    Fill(3);
    queue.PlayFile(1);
    queue.SetListIndex(1);
    EXPECT_TRUE(queue.lstFiles_KeyDown(Keys::Enter));
    EXPECT_EQ(queue.CurrentTrack(), 2);
    EXPECT_THAT(Texts(), ElementsAre("|> P1 - T1", "|> P2 - T2", "P3 - T3"));
}

TEST_F(QueueTransportTest, EnterTakesTheNumberOverAlsoIfNothingCouldBeStarted) {
    Fill(2);
    queue.AddPlaylist("/m/a.ogg");
    queue.PlayFile(1);
    queue.SetListIndex(2);
    queue.lstFiles_KeyDown(Keys::Enter);
    EXPECT_EQ(queue.CurrentTrack(), 3);
    EXPECT_EQ(queue.ListIndex(), 0); // Of the track that was current when the Ogg file was met.
    EXPECT_THAT(Texts(), ElementsAre("(|> P1 - T1) ***FileError***", "P2 - T2", "a.ogg"));
}

TEST_F(QueueTransportTest, ArrowKeysMoveTheNumberThatCountsAsCurrent) {
    Fill(3);
    queue.PlayFile(1);
    EXPECT_TRUE(queue.lstFiles_KeyDown(Keys::Down));
    EXPECT_FALSE(queue.lstFiles_KeyDown(Keys::Right));
    EXPECT_EQ(queue.CurrentTrack(), 3);
    queue.lstFiles_KeyDown(Keys::Down);
    EXPECT_EQ(queue.CurrentTrack(), 3);
    EXPECT_TRUE(queue.lstFiles_KeyDown(Keys::Up));
    EXPECT_FALSE(queue.lstFiles_KeyDown(Keys::Left));
    EXPECT_EQ(queue.CurrentTrack(), 1);
    queue.lstFiles_KeyDown(Keys::Left);
    EXPECT_EQ(queue.CurrentTrack(), 1);
    EXPECT_EQ(player.FileName(), "/m/1.mp3");
    queue.lstFiles_KeyDown(Keys::Down);
    player.End();
    EXPECT_EQ(player.FileName(), "/m/3.mp3"); // The end of a track goes on from there.
    EXPECT_THAT(Texts(), ElementsAre("|> P1 - T1", "P2 - T2", "|> P3 - T3"));
}

TEST_F(QueueTransportTest, ArrowKeysBeforeTheFirstTrack) {
    Fill(3);
    for (const int key : {Keys::Left, Keys::Up}) {
        queue.Form_Load();
        Fill(0);
        queue.lstFiles_KeyDown(key);
        EXPECT_EQ(queue.CurrentTrack(), 1);
    }
    for (const int key : {Keys::Right, Keys::Down}) {
        queue.Form_Load();
        for (int i = 1; i <= 3; ++i) {
            queue.AddPlaylist(PathOf(i));
        }
        queue.lstFiles_KeyDown(key);
        EXPECT_EQ(queue.CurrentTrack(), 2);
    }
    queue.cmdRemAll_Click();
    queue.lstFiles_KeyDown(Keys::Down);
    EXPECT_EQ(queue.CurrentTrack(), 0); // Not above the number of entries.
}

TEST_F(QueueTransportTest, LeftAndRightMoveTheSelection) {
    queue.lstFiles_KeyDown(Keys::Right); // An empty list has none.
    Fill(3);
    queue.lstFiles_KeyDown(Keys::Right);
    queue.lstFiles_KeyDown(Keys::Right);
    queue.lstFiles_KeyDown(Keys::Right);
    EXPECT_EQ(queue.ListIndex(), 2);
    queue.lstFiles_KeyDown(Keys::Left);
    EXPECT_EQ(queue.ListIndex(), 1);
    queue.lstFiles_KeyDown(Keys::Left);
    queue.lstFiles_KeyDown(Keys::Left);
    EXPECT_EQ(queue.ListIndex(), 0);
    queue.lstFiles_KeyDown(Keys::Down); // The list box itself moves it.
    EXPECT_EQ(queue.ListIndex(), 0);
}

TEST_F(QueueTransportTest, DeleteRemovesAndF1IsSwallowedByTheHelp) {
    Fill(2);
    EXPECT_TRUE(queue.lstFiles_KeyDown(Keys::Delete));
    EXPECT_THAT(Texts(), ElementsAre("P2 - T2"));
    mainModule.Language = "GER";
    EXPECT_FALSE(queue.lstFiles_KeyDown(Keys::F1));
    EXPECT_THAT(helpViewer.shown,
                ElementsAre(std::pair<std::string, std::string>("help.chm", "HTML\\player.html")));
    EXPECT_TRUE(queue.lstFiles_KeyDown('A'));
    EXPECT_EQ(queue.ListCount(), 1);
}

TEST_F(QueueTransportTest, AFailingEngineEndsAButtonSilently) {
    Fill(1);
    queue.PlayFile(1);
    player.failing = "Pause";
    queue.cmdPause_Click();
    EXPECT_FALSE(queue.Paused());
    player.failing = "Stop";
    EngineCalls();
    queue.cmdStop_Click();
    EXPECT_THAT(EngineCalls(), ElementsAre("Stop")); // What follows it is not reached.
    EXPECT_THAT(Texts(), ElementsAre("|> P1 - T1"));
}

TEST_F(QueueTransportTest, AFailingPlayIsAFaultOfTheStart) {
    Fill(1);
    player.failing = "Play";
    queue.PlayFile(1);
    EXPECT_THAT(Texts(), ElementsAre("(P1 - T1) ***FileError***"));
}

// Time and position.

TEST_F(QueueTransportTest, ATickShowsThePositionAndTheElapsedTime) {
    Fill(1);
    queue.PlayFile(1);
    player.SetPosition(61.5);
    calls.clear();
    queue.Timer1_Timer();
    EXPECT_THAT(calls, ElementsAre("slider 62", "time 01:02")); // Half to even.
    calls.clear();
    player.SetPosition(62.4);
    queue.Timer1_Timer();
    EXPECT_THAT(calls, IsEmpty()); // Nothing that is shown has changed.
}

TEST_F(QueueTransportTest, WithoutAFileThePositionIsZero) {
    queue.Timer1_Timer();
    EXPECT_THAT(calls, ElementsAre("time 00:00"));
    queue.lblTime_DblClick();
    EXPECT_EQ(view.time, "00:00");
    EXPECT_EQ(view.position, 0);
}

TEST_F(QueueTransportTest, ADoubleClickOnTheTimeShowsWhatRemains) {
    AddFile("/m/a.mp3", "A", "B", "128", "200");
    player.durations = {{"/m/a.mp3", 200}};
    queue.AddPlaylist("/m/a.mp3");
    queue.PlayFile(1);
    player.SetPosition(65);
    queue.Timer1_Timer();
    EXPECT_EQ(view.time, "01:05");
    queue.lblTime_DblClick();
    EXPECT_EQ(view.time, "02:15");
    player.SetPosition(MediaPlayer::NotReady);
    queue.Timer1_Timer();
    EXPECT_EQ(view.time, "00:00");
    EXPECT_EQ(view.position, 0);
    queue.lblTime_DblClick();
    player.SetPosition(66);
    queue.Timer1_Timer();
    EXPECT_EQ(view.time, "01:06");
}

TEST_F(QueueTransportTest, ATrackThatIsLongerThanItSaysHasNegativeTimeLeft) {
    Fill(1);
    queue.PlayFile(1);
    queue.lblTime_DblClick();
    for (const auto& [position, text] : {std::pair(61.0, "00:00"), std::pair(62.0, "00:-02"),
                                         std::pair(121.0, "-01:00"), std::pair(125.0, "-01:-05")}) {
        player.SetPosition(position);
        queue.Timer1_Timer();
        EXPECT_EQ(view.time, text);
    }
}

TEST_F(QueueTransportTest, APositionBeyond16BitsLeavesTheTimeAsItIs) {
    Fill(1);
    queue.PlayFile(1);
    player.SetPosition(32767);
    queue.Timer1_Timer();
    EXPECT_EQ(view.time, "546:07");
    player.SetPosition(32768);
    queue.Timer1_Timer();
    EXPECT_EQ(view.time, "546:07");
    EXPECT_EQ(view.position, 32768);
}

TEST_F(QueueTransportTest, MovingThePositionSeeks) {
    Fill(1);
    queue.PlayFile(1);
    calls.clear();
    view.statusChanges = 0;
    queue.Slider1_Scroll(42);
    EXPECT_THAT(calls, ElementsAre("position 42", "time 00:42"));
    EXPECT_EQ(view.statusChanges, 1);
}

TEST_F(QueueTransportTest, ASeekThatTheEngineDoesNotTakePutsTheSliderBack) {
    queue.Slider1_Scroll(42);
    EXPECT_EQ(view.position, 0);
    EXPECT_EQ(calls.back(), "time 00:00");
    EXPECT_THAT(calls, ElementsAre("position 42", "slider 0", "time 00:00"));
}

TEST_F(QueueTransportTest, TheVolumeIsTheSlidersDistanceFromItsTop) {
    EXPECT_EQ(view.percent, "100%"); // Without a blank until it is moved.
    EXPECT_EQ(player.Volume(), 0);
    queue.Slider3_Scroll(1250);
    EXPECT_EQ(player.Volume(), -1250);
    EXPECT_EQ(view.percent, "50 %");
    queue.Slider3_Scroll(0);
    EXPECT_EQ(player.Volume(), -2500);
    EXPECT_EQ(view.percent, "0 %");
    queue.Slider3_Scroll(24);
    EXPECT_EQ(view.percent, "0 %");
    queue.Slider3_Scroll(2499);
    EXPECT_EQ(player.Volume(), -1);
    EXPECT_EQ(view.percent, "99 %");
    queue.Slider3_Scroll(2500);
    EXPECT_EQ(view.percent, "100 %");
}

TEST_F(QueueTransportTest, EachWindowBeginsFresh) {
    Fill(2);
    queue.PlayFile(2);
    queue.chkRepeat_Click(true);
    queue.cmdPause_Click();
    queue.Slider3_Scroll(0);
    queue.lblTime_DblClick();
    queue.Form_Unload();
    queue.Form_Load();
    EXPECT_EQ(queue.ListCount(), 0);
    EXPECT_EQ(queue.CurrentTrack(), 0);
    EXPECT_FALSE(queue.Paused() || queue.Repeat());
    EXPECT_EQ(view.percent, "100%");
    EXPECT_EQ(player.Volume(), 0);
    calls.clear();
    queue.cmdPause_Click(); // No track has been shown.
    EXPECT_THAT(calls, IsEmpty());
    player.SetPosition(5);
    queue.Timer1_Timer();
    EXPECT_EQ(view.time, "00:05"); // Elapsed again.
}

TEST_F(QueueTransportTest, AChangeOfPlayingIsHandedOnWithThePosition) {
    Fill(1);
    queue.PlayFile(1);
    player.SetPosition(7);
    view.statusChanges = 0;
    player.ChangePlaying();
    EXPECT_EQ(view.position, 7);
    EXPECT_EQ(view.statusChanges, 1);
}

} // namespace
} // namespace quavernet::test
