#include "playback/PlayQueueTest.h"

#include "playback/ShuffledOrder.h"
#include "support/FileSizeLimit.h"
#include "support/SlowDisk.h"
#include "support/TestFiles.h"

#include <algorithm>
#include <filesystem>
#include <numeric>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class QueueEditTest : public PlayQueueTest {
protected:
    static void Write(const std::string& path) { WriteFile(path, "x"); }

    TemporaryFolder music;
};

// Removing.

TEST_F(QueueEditTest, TheSelectedEntryIsRemovedAndItsPlaceStaysSelected) {
    Fill(3);
    queue.SetListIndex(1);
    queue.cmdRem_Click();
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "P3 - T3"));
    EXPECT_THAT(Paths(), ElementsAre("/m/1.mp3", "/m/3.mp3"));
    EXPECT_EQ(queue.ListIndex(), 1);
    queue.cmdRem_Click();
    EXPECT_EQ(queue.ListIndex(), 0); // The last one now.
    queue.cmdRem_Click();
    EXPECT_THAT(Texts(), IsEmpty());
    EXPECT_EQ(queue.ListIndex(), -1);
    EXPECT_EQ(view.resets, 0);
}

TEST_F(QueueEditTest, WithoutASelectionNothingIsRemoved) {
    Fill(2);
    queue.SetListIndex(-1);
    queue.cmdRem_Click();
    EXPECT_EQ(queue.ListCount(), 2);
    EXPECT_EQ(events.count, 0);
}

TEST_F(QueueEditTest, RemovingUpToTheEntryAfterTheCurrentOneShiftsItsNumber) {
    Fill(5);
    queue.PlayFile(3);
    for (const auto& [position, track] : {std::pair(4, 3), std::pair(3, 2), std::pair(0, 1)}) {
        queue.SetListIndex(position);
        queue.cmdRem_Click();
        EXPECT_EQ(queue.CurrentTrack(), track) << position;
    }
    queue.SetListIndex(0);
    queue.cmdRem_Click();
    queue.cmdRem_Click();
    EXPECT_EQ(queue.CurrentTrack(), -1); // Nothing holds it above 0.
    EXPECT_TRUE(player.IsPlaying());
}

TEST_F(QueueEditTest, RemovingThePlayingEntryDoesNotStopIt) {
    Fill(2);
    queue.PlayFile(1);
    EngineCalls();
    queue.cmdRem_Click();
    EXPECT_THAT(EngineCalls(), IsEmpty());
    EXPECT_TRUE(player.IsPlaying());
    EXPECT_EQ(player.Next(), "/m/2.mp3"); // As before.
    player.End();
    EXPECT_EQ(player.FileName(), "/m/2.mp3");
}

TEST_F(QueueEditTest, RemovingAllKeepsTheNumberAndTheSound) {
    Fill(3);
    queue.PlayFile(2);
    EngineCalls();
    queue.cmdRemAll_Click();
    EXPECT_THAT(EngineCalls(), ElementsAre("next "));
    EXPECT_EQ(queue.CurrentTrack(), 2);
    EXPECT_EQ(queue.ListCount(), 0);
    EXPECT_EQ(queue.PathCount(), 0U);
    EXPECT_EQ(queue.ListIndex(), -1);
    EXPECT_TRUE(player.IsPlaying());
    EXPECT_EQ(view.resets, 1);
}

// Shuffling.

TEST_F(QueueEditTest, AShuffleKeepsTextsWithTheirPathsAndStartsTheFirst) {
    Fill(20);
    queue.PlayFile(5);
    queue.cmdRandomize_Click();
    std::vector<std::string> paths = Paths();
    const std::vector<std::string> texts = Texts();
    int marked = 0;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const std::string number = paths[i].substr(3, paths[i].find('.') - 3);
        const std::string text = "P" + number + " - T" + number;
        const bool isMarked = i == 0 || number == "5"; // The old marker goes along with its entry.
        EXPECT_EQ(texts[i], (isMarked ? "|> " : "") + text);
        marked += isMarked ? 1 : 0;
    }
    EXPECT_GE(marked, 1);
    EXPECT_EQ(player.FileName(), paths.front());
    EXPECT_EQ(queue.CurrentTrack(), 1);
    EXPECT_EQ(queue.ListIndex(), 0);
    EXPECT_EQ(mainModule.RandomCount, 20);
    std::sort(paths.begin(), paths.end());
    EXPECT_EQ(std::unique(paths.begin(), paths.end()), paths.end());
}

TEST_F(QueueEditTest, AShuffleDrawsEachPlaceFromThoseThatAreLeft) {
    std::uint64_t seed = 0;
    mainModule.RandomNumbers = RandomNumbers([&] { return ++seed; });
    Fill(50);
    seed = 7;
    queue.cmdRandomize_Click();
    EXPECT_EQ(seed, 7U + 1 + 50); // Once at its start, and before each draw.
    std::vector<std::string> left;
    for (int i = 1; i <= 50; ++i) {
        left.push_back(PathOf(i));
    }
    std::vector<std::string> expected;
    std::uint64_t again = 8;
    while (!left.empty()) {
        RandomNumbers numbers([&] { return ++again; });
        const double value = numbers.Rnd() * static_cast<double>(left.size() - 1) + 1;
        const auto place =
            static_cast<std::ptrdiff_t>(static_cast<double>(static_cast<float>(value)) + 0.5) - 1;
        expected.push_back(left[static_cast<std::size_t>(place)]);
        left.erase(left.begin() + place);
    }
    EXPECT_EQ(Paths(), expected);
}

TEST_F(QueueEditTest, ShufflingAnEmptyQueueChangesNothing) {
    queue.cmdRandomize_Click();
    EXPECT_THAT(EngineCalls(), IsEmpty());
    EXPECT_EQ(queue.CurrentTrack(), 0);
    EXPECT_EQ(view.caption, "Quavernet Player");
    EXPECT_EQ(mainModule.RandomCount, 0);
}

TEST_F(QueueEditTest, ShufflingOneEntryStartsItAgain) {
    Fill(1);
    queue.PlayFile(1);
    EngineCalls();
    queue.cmdRandomize_Click();
    EXPECT_THAT(EngineCalls(), ElementsAre("file /m/1.mp3", "Play", "next "));
    EXPECT_THAT(Texts(), ElementsAre("|> P1 - T1"));
}

TEST_F(QueueEditTest, AShuffledOrderHasEachPlaceOnceWhateverTheirNumber) {
    for (const std::int32_t count : {0, 1, 2, 3, 7, 8, 9, 1000, 32767}) {
        std::vector<std::int32_t> order = ShuffledOrder(count);
        std::sort(order.begin(), order.end());
        std::vector<std::int32_t> all(static_cast<std::size_t>(count));
        std::iota(all.begin(), all.end(), 0);
        EXPECT_EQ(order, all);
    }
}

// Adding.

TEST_F(QueueEditTest, AFileThatIsAddedToAnEmptyListIsStarted) {
    AddFile("/m/a.mp3", "A", "B");
    dialogs.file = "/m/a.mp3";
    queue.mnuAddFile_Click();
    EXPECT_THAT(dialogs.shown, ElementsAre("open Mp3 Audio (*.mp3)|*.mp3|Audiodatei (*.wav)|*.wav /home/me"));
    EXPECT_THAT(Texts(), ElementsAre("|> A - B"));
    queue.mnuAddFile_Click();
    EXPECT_THAT(Texts(), ElementsAre("|> A - B", "A - B"));
    EXPECT_THAT(EngineCalls(), ElementsAre("file /m/a.mp3", "Play", "next ", "next /m/a.mp3"));
}

TEST_F(QueueEditTest, ACancelledOrFailedDialogEndsTheCommand) {
    queue.mnuAddFile_Click();
    queue.mnuAddFolder_Click();
    queue.cmdLoadPlaylist_Click();
    queue.cmdCreatePlaylist_Click();
    dialogs.fails = true;
    queue.mnuAddFile_Click();
    queue.cmdLoadPlaylist_Click();
    queue.cmdCreatePlaylist_Click();
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(QueueEditTest, AFolderAddsItsOwnFilesByNameInLowerCaseEndings) {
    for (const char* name : {"b.mp3", "A.wav", "c.MP3", "d.ogg", ".hidden.mp3", "e.mp3.txt", "C.mp3"}) {
        Write(music / name);
    }
    std::filesystem::create_directory(music / "sub.mp3");
    Write(music / "sub.mp3/f.mp3");
    dialogs.folder = music.Path() + "/";
    queue.mnuAddFolder_Click();
    EXPECT_THAT(dialogs.titles, ElementsAre("Wählen Sie einen Ordner"));
    EXPECT_THAT(Paths(), ElementsAre(music / "A.wav", music / "b.mp3", music / "C.mp3"));
    EXPECT_EQ(player.FileName(), music / "A.wav");
}

TEST_F(QueueEditTest, AFolderThatIsAddedToEntriesStartsNothing) {
    Fill(1);
    Write(music / "b.mp3");
    dialogs.folder = music.Path();
    queue.mnuAddFolder_Click();
    EXPECT_EQ(queue.ListCount(), 2);
    EXPECT_THAT(EngineCalls(), IsEmpty());
}

TEST_F(QueueEditTest, AFolderWithUpperCaseEndingsAloneAddsNothing) {
    Write(music / "a.MP3");
    dialogs.folder = music.Path();
    queue.mnuAddFolder_Click();
    EXPECT_EQ(queue.ListCount(), 0);
}

TEST_F(QueueEditTest, TheSystemsOwnFolderIsSkippedAndAMissingOneEndsTheCommand) {
    const std::string folder = music / "system volume INFORMATION/x";
    std::filesystem::create_directories(folder);
    Write(folder + "/a.mp3");
    dialogs.folder = folder;
    queue.mnuAddFolder_Click();
    dialogs.folder = music / "missing";
    queue.mnuAddFolder_Click();
    EXPECT_EQ(queue.ListCount(), 0);
}

/// A folder of a share that answers when a test lets it.
class QueueOnAShareTest : public QueueEditTest {
protected:
    QueueOnAShareTest() {
        services.fileSystem = share.fileSystem.get();
        services.readAhead = share.readAhead.get();
        Write(music / "a.mp3");
        Write(music / "b.wav");
        dialogs.folder = music.Path();
        share.disk.Hang(music.Path());
    }

    SlowServices share;
};

TEST_F(QueueOnAShareTest, AFolderThatHangsIsWaitedForWithTheWindowAliveAndTheLibraryFree) {
    Execute("Insert into Categories (Category) values ('own')");
    int waits = 0;
    events.onDoEvents = [&] {
        if (++waits == 3) {
            OpenLibrary(libraryPath)->Execute("Insert into Categories (Category) values ('another')");
            share.disk.LetGo();
        }
    };
    queue.mnuAddFolder_Click();
    EXPECT_GE(waits, 3);
    EXPECT_THAT(Rows("Select Category from Categories"), ElementsAre("own", "another"));
    EXPECT_THAT(Paths(), ElementsAre(music / "a.mp3", music / "b.wav"));
    EXPECT_EQ(player.FileName(), music / "a.mp3");
    EXPECT_THAT(share.disk.Reads(), IsEmpty()) << "no file is opened ahead";
}

TEST_F(QueueOnAShareTest, AWindowThatIsClosedEndsTheWaitForAFolder) {
    events.onDoEvents = [&] { queue.Form_Unload(); };
    queue.mnuAddFolder_Click();
    EXPECT_EQ(queue.PathCount(), 0U);
    EXPECT_EQ(player.FileName(), "");
}

TEST_F(QueueOnAShareTest, AFileThatIsAddedDuringTheWaitComesFirstAndGoesOnPlaying) {
    InEvents([&] {
        dialogs.file = "/m/other.mp3";
        queue.mnuAddFile_Click();
        share.disk.LetGo();
    });
    queue.mnuAddFolder_Click();
    EXPECT_THAT(Paths(), ElementsAre("/m/other.mp3", music / "a.mp3", music / "b.wav"));
    EXPECT_THAT(EngineCalls(),
                ElementsAre("file /m/other.mp3", "Play", "next ", "next " + (music / "a.mp3")));
}

TEST_F(QueueOnAShareTest, NoSecondFolderIsAddedDuringTheWait) {
    InEvents([&] {
        queue.mnuAddFolder_Click();
        share.disk.LetGo();
    });
    queue.mnuAddFolder_Click();
    EXPECT_THAT(dialogs.titles, ElementsAre("Wählen Sie einen Ordner"));
    EXPECT_THAT(Paths(), ElementsAre(music / "a.mp3", music / "b.wav"));
    queue.mnuAddFolder_Click();
    EXPECT_EQ(queue.PathCount(), 4U);
}

TEST_F(QueueOnAShareTest, AQueueThatIsFilledAnewDuringTheWaitTakesNoFolder) {
    Fill(2);
    InEvents([&] {
        queue.cmdRemAll_Click();
        queue.AddPlaylist("/m/1.mp3");
        share.disk.LetGo();
    });
    queue.mnuAddFolder_Click();
    EXPECT_THAT(Paths(), ElementsAre("/m/1.mp3"));
}

// Drops.

TEST_F(QueueEditTest, ADropOnTheWindowTakesTheQueuesPlaceAndStarts) {
    Fill(2);
    queue.DropOnWindow({"/n/a.MP3", "/n/b.txt", "/m/1.mp3"});
    EXPECT_THAT(Texts(), ElementsAre("(a.MP3) ***FileError***", "b.txt", "P1 - T1"));
    EXPECT_EQ(player.FileName(), "/n/a.MP3"); // Heard, but not in the library.
}

TEST_F(QueueEditTest, TheFirstNameDecidesOfADrop) {
    Fill(1);
    for (const char* name : {"/n/a.txt", "/n/list.m3u", "/n/folder", "/n/mp3", ""}) {
        queue.DropOnWindow({name, "/m/1.mp3"});
        queue.DropOnList({name, "/m/1.mp3"});
    }
    queue.DropOnWindow({});
    queue.DropOnList({});
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1"));
    for (const char* name : {"/n/a.Ogg", "/n/a.wav", "/n/a.mP3"}) {
        queue.DropOnList({name});
    }
    EXPECT_EQ(queue.ListCount(), 4);
}

TEST_F(QueueEditTest, ADropOnTheListAddsAndStartsNothing) {
    Fill(1);
    queue.DropOnList({"/n/a.mp3", "/n/b.wav"});
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "a.mp3", "b.wav"));
    EXPECT_EQ(queue.ListIndex(), 0);
    EXPECT_THAT(EngineCalls(), IsEmpty());
    EXPECT_EQ(queue.CurrentTrack(), 0);
}

TEST_F(QueueEditTest, AFileThatCannotBeLookedUpIsLeftOutByItself) {
    RecordingConnection& connection = Record();
    connection.failOn = "Select I.Interpret, T.Name from (Files F inner join Interpret I on F.Inter_id = "
                        "I.Inter_id) inner join Titel T on T.Title_id = F.Title_id where F.Path = '/n/b";
    queue.DropOnList({"/n/a.mp3", "/n/b.mp3", "/n/c.mp3"});
    EXPECT_THAT(Texts(), ElementsAre("a.mp3", "c.mp3"));
}

// Playlists.

TEST_F(QueueEditTest, TheQueueIsWrittenWithWhatTheLibraryTells) {
    AddFile("/m/a.mp3", "A", "B", "128", "61");
    AddFile("/m/long.mpeg", "A", "B", "128", "Null");
    queue.AddPlaylist("/m/long.mpeg");
    queue.AddPlaylist("/m/a.mp3");
    const RecordingConnection& connection = Record();
    dialogs.file = music / "List"; // No extension is added.
    queue.cmdCreatePlaylist_Click();
    EXPECT_THAT(dialogs.shown, ElementsAre("save Playlist (*.m3u)|*.m3u /home/me"));
    EXPECT_THAT(connection.statements,
                ElementsAre("Select Name, Length from Files where Path = '/m/long.mpeg'",
                            "Select Name, Length from Files where Path = '/m/a.mp3'"));
    EXPECT_EQ(ReadFile(music / "List"),
              "#EXTM3U\r\n#EXTINF:0,long.\r\n/m/long.mpeg\r\n#EXTINF:61,a\r\n/m/a.mp3\r\n");
}

TEST_F(QueueEditTest, TheFirstEntryThatTheLibraryCannotTellOfEndsThePlaylist) {
    AddFiles(2);
    AddFile("/m/it's.mp3", "A", "B");
    AddFile("/m/rock ''n'' roll.mp3", "A", "B");
    for (const char* bad : {"/m/it's.mp3", "/m/rock ''n'' roll.mp3", "/m/unknown.mp3"}) {
        queue.Clear();
        for (const char* path : {"/m/1.mp3", bad, "/m/2.mp3"}) {
            queue.AddPlaylist(path);
        }
        queue.WritePlayerPlaylist(music / "List.m3u");
        EXPECT_EQ(ReadFile(music / "List.m3u"), "#EXTM3U\r\n#EXTINF:60,1\r\n/m/1.mp3\r\n") << bad;
    }
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(QueueEditTest, AnEmptyQueueIsWrittenAsAHeader) {
    queue.WritePlayerPlaylist(music / "List.m3u");
    EXPECT_EQ(ReadFile(music / "List.m3u"), "#EXTM3U\r\n");
}

TEST_F(QueueEditTest, APlaylistThatCannotBeWrittenIsToldAndTheQueueStays) {
    Fill(2);
    for (const std::string& place : {music / "missing/List.m3u", music.Path()}) {
        dialogs.file = place;
        queue.cmdCreatePlaylist_Click();
        EXPECT_THAT(msgBox.shown,
                    ElementsAre(ShownBox{"Die Datei konnte nicht geöffnet werden!", "Speichern abgebrochen",
                                         MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok}));
        msgBox.shown.clear();
    }
    EXPECT_THAT(Paths(), ElementsAre("/m/1.mp3", "/m/2.mp3"));
    dialogs.file = music / "List.m3u";
    queue.cmdCreatePlaylist_Click();
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(QueueEditTest, AFullDiskIsNamedWhenAPlaylistIsSaved) {
    Fill(2);
    dialogs.file = music / "List.m3u";
    const FileSizeLimit limit(4);
    queue.cmdCreatePlaylist_Click();
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_THAT(msgBox.shown[0].text, HasSubstr("61"));
    EXPECT_EQ(msgBox.shown[0].title, "Speichern abgebrochen");
    EXPECT_FALSE(std::filesystem::exists(music / "List.m3u"));
}

TEST_F(QueueEditTest, TheListIsEmptiedBeforeThePathsButForARandomPlay) {
    const auto pathsAtReset = [this](const std::function<void()>& emptying) {
        queue.AddPlaylist("/m/a.mp3");
        emptying();
        EXPECT_EQ(queue.PathCount(), 0U);
        return view.pathsAtReset;
    };
    EXPECT_EQ(pathsAtReset([this] { queue.cmdRemAll_Click(); }), 1U);
    EXPECT_EQ(pathsAtReset([this] { queue.FillPlaylist(); }), 1U);
    EXPECT_EQ(pathsAtReset([this] { queue.Clear(); }), 0U);
}

TEST_F(QueueEditTest, LoadingAPlaylistStartsItsFirstEntry) {
    Fill(1);
    for (const char* name : {"a.mp3", "b.mp3"}) {
        Write(music / name);
    }
    WriteFile(music / "List.m3u", "#EXTM3U\r\n#EXTINF:1,x\r\n" + (music / "b.mp3") + "\r\n" +
                                      (music / "gone.mp3") + "\r\n" + (music / "a.mp3") + "\r\n");
    dialogs.file = music / "List.m3u";
    const RecordingConnection& connection = Record();
    InEvents([&] { EXPECT_THAT(connection.statements, IsEmpty()); }); // No statement for the texts.
    queue.cmdLoadPlaylist_Click();
    EXPECT_THAT(dialogs.shown, ElementsAre("open Playlist (*.m3u)|*.m3u /home/me"));
    EXPECT_THAT(Paths(), ElementsAre(music / "b.mp3", music / "a.mp3"));
    EXPECT_EQ(player.FileName(), music / "b.mp3");
}

TEST_F(QueueEditTest, WhatIsReadAndWrittenAgainIsTheSame) {
    for (const char* name : {"one.mp3", "two.wav"}) {
        Write(music / name);
        AddFile(music / name, "A", "B", "128", "75");
    }
    const std::string written = "#EXTM3U\r\n#EXTINF:75,two\r\n" + (music / "two.wav") +
                                "\r\n#EXTINF:75,one\r\n" + (music / "one.mp3") + "\r\n";
    WriteFile(music / "List.m3u", written);
    queue.fGetM3u(1, music / "List.m3u", true);
    queue.WritePlayerPlaylist(music / "Again.m3u");
    EXPECT_EQ(ReadFile(music / "Again.m3u"), written);
}

} // namespace
} // namespace quavernet::test
