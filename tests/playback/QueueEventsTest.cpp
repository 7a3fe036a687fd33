// Whatever happens while the queue lets events run: it is obeyed, and the screen shows what is heard.
#include "playback/PlayQueueTest.h"

#include "support/RealAudio.h"

#include "app/Keys.h"

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class QueueEventsTest : public PlayQueueTest {
protected:
    /// The labels are those of the file that the engine plays.
    void ExpectShown(int number) {
        EXPECT_EQ(player.FileName(), PathOf(number));
        EXPECT_TRUE(player.IsPlaying());
        EXPECT_EQ(view.file, std::to_string(number) + ".mp3");
        EXPECT_EQ(view.toolTip, PathOf(number));
    }
    /// "A - B", a real file of 128 kbit/s that is inspected when it is started.
    void AddFileWithoutQuality() {
        const std::string path = RealMp3({"-b", "128"});
        AddFile(path, "A", "B", "Null");
        queue.AddPlaylist(path);
    }
    /// What happens while the next file is inspected.
    void InInspection(std::function<void()> happens) {
        events.onDoEvents = [this, happens = std::move(happens), rounds = 0]() mutable {
            if (++rounds == 2) { // After the round between Play and the labels.
                happens();
            }
        };
    }
};

// In the middle of a start.

TEST_F(QueueEventsTest, ATickBetweenPlayAndTheLabelsChangesNothingElse) {
    Fill(2);
    InEvents([&] {
        player.SetPosition(1);
        queue.Timer1_Timer();
    });
    queue.PlayFile(2);
    ExpectShown(2);
    EXPECT_EQ(view.position, 1);
    EXPECT_EQ(view.time, "01:00"); // The whole length, until the next tick.
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "|> P2 - T2"));
}

TEST_F(QueueEventsTest, AStartInsideAnotherOvertakesIt) {
    Fill(3);
    InEvents([&] { queue.PlayFile(3); });
    queue.PlayFile(2);
    ExpectShown(3);
    EXPECT_EQ(queue.CurrentTrack(), 3);
    EXPECT_EQ(queue.ListIndex(), 2);
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "P2 - T2", "|> P3 - T3"));
}

TEST_F(QueueEventsTest, EachWayOfStartingCanBeOvertaken) {
    Fill(5);
    const std::vector<std::function<void()>> starts = {
        [&] { queue.PlayFile(2); },
        [&] { queue.cmdPlay_Click(); },
        [&] { queue.cmdNext_Click(); },
        [&] { queue.cmdLast_Click(); },
        [&] { queue.lstFiles_DblClick(); },
        [&] { queue.lstFiles_KeyDown(Keys::Enter); },
        [&] { player.End(); },
        [&] {
            queue.chkRepeat_Click(true);
            player.End();
        },
        [&] {
            queue.chkRepeatAll_Click(true);
            player.End();
        },
        [&] {
            queue.SetListIndex(4);
            player.End();
        },
    };
    for (const auto& start : starts) {
        queue.PlayFile(3);
        queue.SetListIndex(2);
        InEvents([&] { queue.PlayFile(4); });
        start();
        ExpectShown(4);
        EXPECT_EQ(queue.CurrentTrack(), 4);
        EXPECT_EQ(queue.ListIndex(), 3);
        EXPECT_EQ(queue.Text(3), "|> P4 - T4");
    }
}

TEST_F(QueueEventsTest, AStartThatFailsInsideAnotherLeavesNothingPlayingAndNoLabelOfIt) {
    Fill(3);
    player.refused = {"/m/3.mp3"};
    InEvents([&] { queue.PlayFile(3); });
    queue.PlayFile(2);
    EXPECT_EQ(player.FileName(), "");
    EXPECT_EQ(view.file, "");
    EXPECT_THAT(Texts(), ElementsAre("(P1 - T1) ***FileError***", "P2 - T2", "P3 - T3"));
}

TEST_F(QueueEventsTest, AnOggEntryThatIsMetInsideAStartDoesNotEndIt) {
    Fill(2);
    queue.AddPlaylist("/m/a.ogg");
    InEvents([&] { queue.PlayFile(3); });
    queue.PlayFile(2);
    ExpectShown(2);
    EXPECT_THAT(Texts(), ElementsAre("(P1 - T1) ***FileError***", "|> P2 - T2", "a.ogg"));
}

TEST_F(QueueEventsTest, AnEndInsideTheStartGoesOnFromTheNumberOfThen) {
    Fill(3);
    queue.PlayFile(1);
    InEvents([&] { player.End(); }); // Of a file of no length.
    queue.cmdNext_Click();
    ExpectShown(3);
    EXPECT_EQ(queue.CurrentTrack(), 3);
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "P2 - T2", "|> P3 - T3"));
}

TEST_F(QueueEventsTest, AQueueThatIsEmptiedInsideAStartPlaysOnWithoutAnEntry) {
    Fill(2);
    InEvents([&] { queue.cmdRemAll_Click(); });
    queue.PlayFile(2);
    ExpectShown(2);
    EXPECT_EQ(queue.CurrentTrack(), 2);
    EXPECT_THAT(Texts(), IsEmpty());
    EXPECT_EQ(player.Next(), "");
}

TEST_F(QueueEventsTest, AQueueThatIsFilledAnewInsideAStartKeepsItsTexts) {
    Fill(3);
    for (const bool isKnown : {true, false}) {
        queue.Clear();
        for (const char* path : {"/m/1.mp3", isKnown ? "/m/2.mp3" : "/m/unknown.mp3"}) {
            queue.AddPlaylist(path);
        }
        InEvents([&] {
            queue.Clear();
            queue.AddPlaylist("/m/3.mp3");
            queue.AddPlaylist("/m/1.mp3");
        });
        queue.PlayFile(2);
        EXPECT_EQ(player.FileName(), isKnown ? "/m/2.mp3" : "/m/unknown.mp3");
        EXPECT_THAT(Texts(), ElementsAre("P3 - T3", "P1 - T1"));
        EXPECT_EQ(queue.ListIndex(), 0);
    }
}

TEST_F(QueueEventsTest, AnEntryThatMovesWhileItIsStartedIsFollowed) {
    Fill(4);
    for (const int removed : {0, 1}) { // One before the entry; then the entry after it.
        InEvents([&] {
            queue.SetListIndex(removed);
            queue.cmdRem_Click();
        });
        queue.PlayFile(removed == 0 ? 2 : 1);
        ExpectShown(2);
        EXPECT_EQ(queue.CurrentTrack(), 1);
        EXPECT_EQ(queue.ListIndex(), 0);
        EXPECT_EQ(queue.Text(0), "|> P2 - T2");
    }
    EXPECT_THAT(Texts(), ElementsAre("|> P2 - T2", "P4 - T4"));
    InEvents([&] {
        queue.SetListIndex(1);
        queue.cmdRem_Click(); // The entry itself.
    });
    queue.PlayFile(2);
    ExpectShown(4);
    EXPECT_THAT(Texts(), ElementsAre("|> P2 - T2"));
}

TEST_F(QueueEventsTest, AWindowThatIsClosedInsideAStartStaysQuiet) {
    Fill(3);
    for (const bool again : {false, true}) {
        queue.Form_Load();
        for (int i = 1; i <= 3; ++i) {
            queue.AddPlaylist(PathOf(i));
        }
        queue.SetListIndex(1);
        InEvents([&] {
            queue.Form_Unload();
            if (again) {
                queue.Form_Load();
            }
        });
        view.file = "-";
        queue.cmdPlay_Click();
        EXPECT_FALSE(player.IsPlaying());
        EXPECT_EQ(view.file, again ? "" : "-");
        EXPECT_EQ(queue.ListCount(), 0);
        EXPECT_EQ(player.HasListener(), again);
        queue.Form_Unload();
    }
}

TEST_F(QueueEventsTest, AStartOvertakenWhileItsFileIsInspectedEndsThere) {
    AddFileWithoutQuality();
    AddFiles(1);
    queue.AddPlaylist("/m/1.mp3");
    InInspection([&] { queue.PlayFile(2); });
    queue.PlayFile(1);
    ExpectShown(1);
    EXPECT_EQ(view.quality, "128 bit");
    EXPECT_THAT(Texts(), ElementsAre("A - B", "|> P1 - T1"));
    EXPECT_EQ(queue.CurrentTrack(), 2);
}

TEST_F(QueueEventsTest, AnArrowKeyWhileTheFileIsInspectedMovesTheNumberForGood) {
    AddFileWithoutQuality();
    AddFiles(3);
    for (int i = 1; i <= 3; ++i) {
        queue.AddPlaylist(PathOf(i));
    }
    const std::vector<std::function<void()>> starts = {
        [&] { queue.PlayFile(1); },
        [&] { queue.lstFiles_KeyDown(Keys::Enter); },
        [&] {
            queue.chkRepeatAll_Click(true);
            queue.SetListIndex(3);
            player.End();
        },
    };
    for (const auto& start : starts) {
        queue.PlayFile(4);
        queue.SetListIndex(0);
        InInspection([&] {
            queue.lstFiles_KeyDown(Keys::Right);
            queue.lstFiles_KeyDown(Keys::Right);
        });
        start();
        EXPECT_EQ(queue.CurrentTrack(), 3);
        EXPECT_EQ(queue.ListIndex(), 2);
        EXPECT_EQ(queue.Text(0), "|> A - B"); // What is heard.
        EXPECT_EQ(queue.Text(2), "P2 - T2");
        EXPECT_EQ(player.Next(), "/m/3.mp3");
    }
}

TEST_F(QueueEventsTest, AnEntryThatMovesWhileItsFileIsInspectedKeepsItsMarker) {
    AddFiles(1);
    queue.AddPlaylist("/m/1.mp3");
    AddFileWithoutQuality();
    InInspection([&] {
        queue.SetListIndex(0);
        queue.cmdRem_Click();
    });
    queue.PlayFile(2);
    EXPECT_EQ(queue.CurrentTrack(), 1);
    EXPECT_THAT(Texts(), ElementsAre("|> A - B"));
}

TEST_F(QueueEventsTest, ARefusalWhileTheFileIsInspectedMarksItsEntryWhereverTheSelectionIs) {
    AddFileWithoutQuality();
    AddFiles(1);
    queue.AddPlaylist("/m/1.mp3");
    InInspection([&] {
        queue.SetListIndex(1);
        player.RefuseLate();
    });
    queue.PlayFile(1);
    EXPECT_THAT(Texts(), ElementsAre("(A - B) ***FileError***", "P1 - T1"));
}

TEST_F(QueueEventsTest, WhatIsDoneInsideIsToldToTheEngineAtOnce) {
    Fill(3);
    queue.PlayFile(1);
    InEvents([&] {
        queue.SetListIndex(2);
        queue.cmdRem_Click();
        EXPECT_EQ(view.texts.size(), 2U);
    });
    queue.PlayFile(2);
    EXPECT_EQ(player.Next(), "");
}

TEST_F(QueueEventsTest, AStartInsideTheErrorMarkIsTheOneThatCounts) {
    Fill(3);
    player.refused = {"/m/2.mp3"};
    queue.PlayFile(1);
    InEvents([&] { queue.PlayFile(3); });
    player.End();
    ExpectShown(3);
    EXPECT_EQ(queue.CurrentTrack(), 3);
    EXPECT_EQ(queue.ListIndex(), 2);
}

// In the middle of a fill.

TEST_F(QueueEventsTest, TheListsFillUsesTheSelectionAfterTheEvents) {
    AddFiles(2);
    mainModule.FilePaths.Add("/m/1.mp3");
    mainModule.FilePaths.Add("/m/2.mp3");
    mainModule.SelectedRows.Add(1);
    InEvents([&] {
        mainModule.SelectedRows.Clear();
        mainModule.SelectedRows.Add(2);
        queue.AddPlaylist("/m/1.mp3");
    });
    queue.FillPlaylist();
    EXPECT_THAT(Paths(), ElementsAre("/m/2.mp3"));
}

TEST_F(QueueEventsTest, AFillOfAWindowThatWasClosedMeanwhileEnds) {
    AddFiles(1);
    mainModule.FilePaths.Add("/m/1.mp3");
    mainModule.SelectedRows.Add(1);
    InEvents([&] { queue.Form_Unload(); });
    queue.FillPlaylist();
    EXPECT_EQ(queue.ListCount(), 0);
}

// In the middle of removing an entry: events run before and after.

TEST_F(QueueEventsTest, TheStoresAreInStepWheneverEventsRun) {
    Fill(3);
    events.onDoEvents = [&] {
        EXPECT_EQ(static_cast<std::size_t>(queue.ListCount()), queue.PathCount());
        EXPECT_EQ(view.texts, Texts());
    };
    queue.SetListIndex(1);
    queue.cmdRem_Click();
    EXPECT_EQ(events.count, 2);
}

TEST_F(QueueEventsTest, TheSelectionOfTheMomentIsRemoved) {
    Fill(3);
    InEvents([&] { queue.SetListIndex(2); });
    queue.cmdRem_Click();
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "P2 - T2"));
    EXPECT_EQ(queue.ListIndex(), 1);
}

TEST_F(QueueEventsTest, AQueueThatIsFilledAnewBeforeTheRemovalLosesNothing) {
    Fill(2);
    InEvents([&] {
        queue.Clear();
        queue.AddPlaylist("/m/2.mp3");
    });
    queue.cmdRem_Click();
    EXPECT_THAT(Paths(), ElementsAre("/m/2.mp3"));
    InEvents([&] { queue.SetListIndex(-1); });
    queue.cmdRem_Click();
    EXPECT_THAT(Paths(), ElementsAre("/m/2.mp3"));
}

TEST_F(QueueEventsTest, ARemovalInsideARemovalRemovesBoth) {
    for (const int round : {1, 2}) {
        queue.Clear();
        if (round == 1) {
            Fill(4);
        } else {
            for (int i = 1; i <= 4; ++i) {
                queue.AddPlaylist(PathOf(i));
            }
        }
        int count = 0;
        events.onDoEvents = [&] {
            if (++count == round) {
                queue.cmdRem_Click();
            }
        };
        queue.SetListIndex(1);
        queue.cmdRem_Click();
        EXPECT_EQ(queue.ListCount(), round == 1 ? 2 : 3);
        EXPECT_EQ(queue.PathCount(), round == 1 ? 2U : 3U);
    }
}

TEST_F(QueueEventsTest, AFillAfterTheRemovalKeepsItsSelection) {
    Fill(3);
    int count = 0;
    events.onDoEvents = [&] {
        if (++count == 2) {
            queue.Clear();
            queue.AddPlaylist("/m/1.mp3");
            queue.AddPlaylist("/m/2.mp3");
        }
    };
    queue.SetListIndex(2);
    queue.cmdRem_Click();
    EXPECT_EQ(queue.ListIndex(), 0);
}

TEST_F(QueueEventsTest, AShuffleAStartAndAnEndInsideARemoval) {
    Fill(5);
    queue.PlayFile(1);
    queue.SetListIndex(3);
    InEvents([&] { queue.cmdRandomize_Click(); });
    queue.cmdRem_Click();
    EXPECT_EQ(queue.ListCount(), 5); // The queue is another one by then.
    queue.SetListIndex(3);
    InEvents([&] { player.End(); });
    queue.cmdRem_Click();
    EXPECT_EQ(queue.ListCount(), 4);
    EXPECT_TRUE(player.IsPlaying());
    InEvents([&] { queue.Form_Unload(); });
    queue.cmdRem_Click();
    EXPECT_EQ(queue.ListCount(), 0);
}

// In the middle of a dialog.

TEST_F(QueueEventsTest, AQueueThatIsChangedWhileADialogIsOpen) {
    AddFiles(2);
    dialogs.file = "/m/2.mp3";
    dialogs.onShow = [&] {
        queue.AddPlaylist("/m/1.mp3");
        queue.PlayFile(1);
        EXPECT_EQ(view.texts.size(), 1U);
    };
    queue.mnuAddFile_Click(); // The list was empty when it was chosen.
    EXPECT_THAT(Paths(), ElementsAre("/m/1.mp3", "/m/2.mp3"));
    EXPECT_EQ(player.FileName(), "/m/1.mp3");
    dialogs.onShow = [&] { queue.Form_Unload(); };
    queue.mnuAddFile_Click();
    EXPECT_EQ(queue.ListCount(), 0);
    queue.Form_Load();
    queue.cmdLoadPlaylist_Click();
    EXPECT_EQ(queue.ListCount(), 0);
}

} // namespace
} // namespace quavernet::test
