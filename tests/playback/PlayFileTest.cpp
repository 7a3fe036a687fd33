#include "playback/PlayQueueTest.h"

#include "support/RealAudio.h"

#include "app/LoadResString.h"

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PlayFileTest : public PlayQueueTest {
protected:
    static constexpr const char* German = "Quavernet Player";
};

TEST_F(PlayFileTest, AnEmptyQueueChangesOnlyTheCaption) {
    queue.PlayFile(1);
    EXPECT_THAT(calls, ElementsAre("caption Quavernet Player"));
    EXPECT_EQ(queue.CurrentTrack(), 0);
}

TEST_F(PlayFileTest, TheStepsComeInTheirOrder) {
    Fill(2);
    RecordingConnection& connection = Record();
    connection.onStatement = [&](const std::string& statement) { calls.push_back(statement); };
    events.onDoEvents = [&] { calls.emplace_back("events"); };
    queue.PlayFile(2);
    EXPECT_THAT(calls,
                ElementsAre("caption Quavernet Player", "file /m/2.mp3", "Play", "events",
                            "Select Q.Quality, F.Length from Quality Q Inner Join Files F on Q.Quality_id = "
                            "F.Quality_id where F.Path = '/m/2.mp3'",
                            "select 1", "file label 2.mp3", "quality 128 bit", "time 01:00",
                            "length Spieldauer: 01:00 min", "text |> P2 - T2", "max 60", "next "));
    EXPECT_EQ(queue.CurrentTrack(), 2);
    EXPECT_EQ(view.toolTip, "/m/2.mp3");
}

TEST_F(PlayFileTest, FromTheTreeNoEventsRunBeforeTheEnd) {
    Fill(2);
    RecordingConnection& connection = Record();
    connection.onStatement = [&](const std::string& statement) { calls.push_back(statement); };
    events.onDoEvents = [&] { calls.emplace_back("events"); };
    queue.PlayFileFromTree(1);
    EXPECT_THAT(calls,
                ElementsAre("caption Quavernet Player", "file /m/1.mp3", "Play",
                            "Select Quality, F.Length from Quality Q Inner Join Files F on Q.Quality_id = "
                            "F.Quality_id where F.Path = '/m/1.mp3'",
                            "file label 1.mp3", "quality 128 bit", "time 01:00",
                            "length Spieldauer: 01:00 min", "text |> P1 - T1", "max 60", "next /m/2.mp3"));
}

TEST_F(PlayFileTest, TheCaptionIsTheOldTracksTextWhileTheWindowIsMinimised) {
    Fill(2);
    queue.PlayFile(1);
    view.isMinimized = true;
    queue.PlayFile(2);
    EXPECT_EQ(view.caption, " P1 - T1");
    queue.Form_Resize();
    EXPECT_EQ(view.caption, " P2 - T2");
    view.isMinimized = false;
    queue.Form_Resize();
    EXPECT_EQ(view.caption, German);
}

TEST_F(PlayFileTest, ACaptionWithoutAnEntryToNameIsTheWindowsOwn) {
    view.isMinimized = true;
    queue.Form_Resize();
    EXPECT_EQ(view.caption, German);
    Fill(1);
    queue.Form_Resize(); // Nothing has been chosen yet.
    EXPECT_EQ(view.caption, German);
    queue.PlayFile(1);
    queue.cmdRemAll_Click();
    queue.Form_Resize();
    EXPECT_EQ(view.caption, German);
}

TEST_F(PlayFileTest, TheSecondStartOfAnEntryDoesNotDoubleItsMarker) {
    Fill(2);
    queue.PlayFile(1);
    queue.PlayFile(1);
    EXPECT_THAT(Texts(), ElementsAre("|> P1 - T1", "P2 - T2"));
}

TEST_F(PlayFileTest, EveryMarkerOfAnEntryGoesBeforeItGetsOne) {
    AddFile("/m/a.mp3", "|> |> A", "B |> C");
    queue.AddPlaylist("/m/a.mp3");
    queue.PlayFile(1);
    EXPECT_THAT(Texts(), ElementsAre("|> A - B C"));
}

TEST_F(PlayFileTest, TheMarkerOfTheEntryBeforeStays) {
    Fill(2);
    queue.PlayFile(1);
    queue.PlayFile(2);
    EXPECT_THAT(Texts(), ElementsAre("|> P1 - T1", "|> P2 - T2"));
}

TEST_F(PlayFileTest, AnOggFileIsNeverGivenToTheEngine) {
    AddFile("/m/a.OGG", "A", "B");
    AddFiles(2);
    for (const char* path : {"/m/1.mp3", "/m/a.OGG", "/m/2.mp3"}) {
        queue.AddPlaylist(path);
    }
    queue.PlayFile(2);
    // The number is not taken over: the entry that was current is selected and marked.
    EXPECT_THAT(EngineCalls(), IsEmpty());
    EXPECT_EQ(queue.CurrentTrack(), 1);
    EXPECT_EQ(queue.ListIndex(), 0);
    EXPECT_THAT(Texts(), ElementsAre("(P1 - T1) ***FileError***", "A - B", "P2 - T2"));
    queue.PlayFile(3);
    queue.PlayFile(2);
    EXPECT_EQ(queue.CurrentTrack(), 3);
    EXPECT_TRUE(player.IsPlaying());
    EXPECT_THAT(Texts(), ElementsAre("(P1 - T1) ***FileError***", "A - B", "(|> P2 - T2) ***FileError***"));
}

TEST_F(PlayFileTest, AFileThatTheEngineRefusesMarksTheSelectedEntry) {
    Fill(3);
    queue.PlayFile(1);
    player.refused = {"/m/3.mp3"};
    EngineCalls();
    queue.PlayFile(3);
    EXPECT_THAT(EngineCalls(), ElementsAre("file /m/3.mp3"));
    EXPECT_EQ(queue.CurrentTrack(), 1);
    EXPECT_EQ(queue.ListIndex(), 0);
    EXPECT_THAT(Texts(), ElementsAre("(|> P1 - T1) ***FileError***", "P2 - T2", "P3 - T3"));
    EXPECT_EQ(view.file, "1.mp3");
}

TEST_F(PlayFileTest, ATextIsNotMarkedTwiceAndEventsRunOnlyWithTheMark) {
    Fill(1);
    player.refused = {"/m/1.mp3"};
    queue.PlayFile(1);
    EXPECT_EQ(events.count, 1);
    queue.PlayFile(1);
    EXPECT_EQ(events.count, 1);
    EXPECT_THAT(Texts(), ElementsAre("(P1 - T1) ***FileError***"));
    player.refused.clear();
    queue.PlayFile(1);
    EXPECT_THAT(Texts(), ElementsAre("|> (P1 - T1) ***FileError***"));
}

TEST_F(PlayFileTest, TheMarkIsFoundInAnyCaseOfLetters) {
    AddFile("/m/a.mp3", "***FILEerror***", "B");
    queue.AddPlaylist("/m/a.mp3");
    player.refused = {"/m/a.mp3"};
    queue.PlayFile(1);
    EXPECT_THAT(Texts(), ElementsAre("***FILEerror*** - B"));
}

TEST_F(PlayFileTest, AFileOutsideTheLibraryIsMarkedAlthoughItIsHeard) {
    Fill(2);
    queue.PlayFile(1);
    queue.AddPlaylist("/m/unknown.mp3");
    calls.clear();
    queue.PlayFile(3);
    EXPECT_TRUE(player.IsPlaying());
    EXPECT_EQ(player.FileName(), "/m/unknown.mp3");
    EXPECT_EQ(queue.CurrentTrack(), 3);
    EXPECT_EQ(view.file, "1.mp3");
    EXPECT_EQ(view.positionMax, 60);
    // The selection has not come to it: adding the file had selected the first entry.
    EXPECT_THAT(Texts(), ElementsAre("(|> P1 - T1) ***FileError***", "P2 - T2", "unknown.mp3"));
}

TEST_F(PlayFileTest, WithoutASelectionThereIsNothingToMark) {
    Fill(1);
    player.refused = {"/m/1.mp3"};
    queue.SetListIndex(-1);
    queue.PlayFile(1);
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1"));
}

TEST_F(PlayFileTest, AnEntryThatDoesNotExistMarksTheSelectedOne) {
    Fill(2);
    for (const std::int16_t index : {std::int16_t{0}, std::int16_t{3}, std::int16_t{-1}}) {
        queue.PlayFile(index);
    }
    EXPECT_THAT(EngineCalls(), IsEmpty());
    EXPECT_EQ(queue.CurrentTrack(), 0);
    EXPECT_THAT(Texts(), ElementsAre("(P1 - T1) ***FileError***", "P2 - T2"));
}

TEST_F(PlayFileTest, ALengthOfZeroShowsTheEnginesDuration) {
    AddFile("/m/a.mp3", "A", "B", "128", "0");
    AddFile("/m/b.mp3", "A", "B", "128", "Null");
    player.durations = {{"/m/a.mp3", 125.4}, {"/m/b.mp3", 3599.5}};
    queue.AddPlaylist("/m/a.mp3");
    queue.AddPlaylist("/m/b.mp3");
    queue.PlayFile(1);
    EXPECT_EQ(view.time, "02:05");
    EXPECT_EQ(view.length, "Spieldauer: 02:05 min");
    EXPECT_EQ(view.positionMax, 125);
    queue.PlayFile(2);
    EXPECT_EQ(view.length, "Spieldauer: 60:00 min"); // Half to even.
    EXPECT_EQ(view.positionMax, 3600);
}

TEST_F(PlayFileTest, TheLabelsShowTheLibrarysLengthAndTheSliderTheEngines) {
    AddFile("/m/a.mp3", "A", "B", "128", "6005");
    player.durations = {{"/m/a.mp3", 100'000}};
    queue.AddPlaylist("/m/a.mp3");
    queue.PlayFile(1);
    EXPECT_EQ(view.length, "Spieldauer: 100:05 min");
    EXPECT_EQ(view.positionMax, 100'000);
}

TEST_F(PlayFileTest, ALengthBeyond16BitsIsAFault) {
    AddFile("/m/a.mp3", "A", "B", "128", "32768");
    AddFile("/m/b.mp3", "A", "C", "128", "0");
    player.durations = {{"/m/b.mp3", 40'000}};
    queue.AddPlaylist("/m/a.mp3");
    queue.PlayFile(1);
    EXPECT_THAT(Texts(), ElementsAre("(A - B) ***FileError***"));
    EXPECT_EQ(view.file, "");
    queue.AddPlaylist("/m/b.mp3");
    queue.PlayFile(2); // Fails late: the labels before the length are there already.
    EXPECT_EQ(view.file, "b.mp3");
    EXPECT_EQ(view.quality, "128 bit");
    EXPECT_EQ(view.length, "");
    EXPECT_THAT(Texts(), ElementsAre("(A - B) ***FileError***", "(A - C) ***FileError***"));
}

TEST_F(PlayFileTest, WithoutAStoredQualityTheFileIsAsked) {
    const std::string path = RealMp3({"-b", "192"});
    AddFile(path, "A", "B", "Null");
    queue.AddPlaylist(path);
    queue.PlayFile(1);
    EXPECT_EQ(view.quality, "192 bit");
    // From the tree it is not.
    queue.PlayFileFromTree(1);
    EXPECT_EQ(view.quality, " bit");
}

TEST_F(PlayFileTest, AnUnreadableFileWithoutAStoredQualityHasNoBits) {
    AddFile("/m/missing.mp3", "A", "B", "''");
    queue.AddPlaylist("/m/missing.mp3");
    queue.PlayFile(1);
    EXPECT_EQ(view.quality, "0 bit");
}

TEST_F(PlayFileTest, AStartEndsAPause) {
    Fill(2);
    queue.PlayFile(1);
    queue.cmdPause_Click();
    EXPECT_TRUE(queue.Paused());
    queue.PlayFile(2);
    EXPECT_FALSE(queue.Paused());
}

TEST_F(PlayFileTest, APathWithAnApostropheIsFoundInTheLibrary) {
    AddFile("/m/it's.mp3", "A", "B");
    queue.AddPlaylist("/m/it's.mp3");
    queue.PlayFile(1);
    EXPECT_THAT(Texts(), ElementsAre("|> A - B"));
}

TEST_F(PlayFileTest, TextsComeInTheLanguageOfNow) {
    settings.values["Language"] = "ENG";
    Fill(1);
    queue.PlayFile(1);
    EXPECT_EQ(view.length, LoadResString(395) + "01:00 min");
    EXPECT_NE(view.length, "Spieldauer: 01:00 min");
}

// A file that loads slowly.

TEST_F(PlayFileTest, ALateFileHasTheLibrarysLengthUntilItsOwnIsKnown) {
    Fill(1);
    player.late = {"/m/1.mp3"};
    player.durations = {{"/m/1.mp3", 61}};
    queue.PlayFile(1);
    EXPECT_EQ(view.length, "Spieldauer: 01:00 min");
    EXPECT_EQ(view.positionMax, 60);
    player.ArriveLate();
    EXPECT_EQ(view.length, "Spieldauer: 01:00 min");
    EXPECT_EQ(view.positionMax, 61);
    calls.clear();
    player.ArriveLate(); // Told twice, it changes nothing any more.
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(PlayFileTest, ALateFileWithoutALengthInTheLibraryShowsItsOwnWhenItIsKnown) {
    AddFile("/m/a.mp3", "A", "B", "128", "0");
    player.late = {"/m/a.mp3"};
    player.durations = {{"/m/a.mp3", 125}};
    queue.AddPlaylist("/m/a.mp3");
    queue.PlayFile(1);
    EXPECT_EQ(view.length, "Spieldauer: 00:00 min");
    EXPECT_EQ(view.positionMax, 0);
    player.ArriveLate();
    EXPECT_EQ(view.length, "Spieldauer: 02:05 min");
    EXPECT_EQ(view.positionMax, 125);
}

TEST_F(PlayFileTest, ALateFileThatIsRefusedIsMarkedWhereverTheSelectionIs) {
    Fill(3);
    player.late = {"/m/2.mp3"};
    queue.PlayFile(2);
    queue.SetListIndex(0);
    player.RefuseLate();
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "(|> P2 - T2) ***FileError***", "P3 - T3"));
    EXPECT_EQ(queue.CurrentTrack(), 2); // The queue does not go on by itself.
}

TEST_F(PlayFileTest, TheMarkOfALateRefusalFindsItsEntryAfterOthersWereRemoved) {
    Fill(3);
    player.late = {"/m/2.mp3"};
    queue.PlayFile(2);
    queue.SetListIndex(0);
    queue.cmdRem_Click();
    player.RefuseLate();
    EXPECT_THAT(Texts(), ElementsAre("(|> P2 - T2) ***FileError***", "P3 - T3"));
}

TEST_F(PlayFileTest, ALateRefusalOfAnEntryThatIsGoneMarksNothing) {
    Fill(3);
    player.late = {"/m/2.mp3"};
    queue.PlayFile(2);
    queue.cmdRem_Click();
    player.RefuseLate();
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "P3 - T3"));
    queue.PlayFile(1);
    queue.cmdRemAll_Click();
    queue.AddPlaylist("/m/3.mp3");
    player.RefuseLate();
    EXPECT_THAT(Texts(), ElementsAre("P3 - T3"));
}

TEST_F(PlayFileTest, ARefusalDuringTheStartIsAFaultOfTheStart) {
    Fill(2);
    player.late = {"/m/2.mp3"};
    InEvents([&] { player.RefuseLate(); });
    queue.PlayFile(2);
    EXPECT_EQ(view.file, "");
    EXPECT_THAT(Texts(), ElementsAre("(P1 - T1) ***FileError***", "P2 - T2"));
}

} // namespace
} // namespace quavernet::test
