#include "playback/SelectionPlaylist.h"

#include "playback/PlaybackTest.h"

#include "support/FailureNumber.h"
#include "support/SmallAudio.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SelectionPlaylistTest : public PlaybackTest {
protected:
    SelectionPlaylistTest() { dialogs.file = target; }

    void Save() { mnuKontextPlaylist_Click(player, work); }

    const ShownBox question{"Die Datei wurde erfolgreich erstellt! Möchten Sie sie jetzt öffnen?",
                            "Datei erstellt", MsgBox::Icon::Information, MsgBox::Buttons::YesNo};
    const std::vector<std::string> shownWork{"dialog", "panel 1: Erstelle Playlist...", "pointer 11",
                                             "pointer 0", "panel 1: "};

    TemporaryFolder folder;
    std::string target = folder / "My list";
};

TEST_F(SelectionPlaylistTest, TheSelectionGoesToTheExternalPlayerInItsOwnOrder) {
    AddFiles({"a.mp3", "b.mp3", "c.mp3"});
    ListAndSelect({3, 1});
    PlaySelectedFiles(SelectedPaths());
    EXPECT_EQ(BytesOf(Temporary("Playlist.m3u")),
              "#EXTM3U\r\n#EXTINF:60,c\r\n/m/c.mp3\r\n#EXTINF:60,a\r\n/m/a.mp3\r\n");
    EXPECT_THAT(connection.statements, ElementsAre("Select Name, Length from Files where Path = '/m/c.mp3'",
                                                   "Select Name, Length from Files where Path = '/m/a.mp3'"));
    EXPECT_THAT(shell.executed, ElementsAre(Temporary("Playlist.m3u")));
    EXPECT_THAT(msgBox.shown, IsEmpty());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(SelectionPlaylistTest, ALengthThatIsMissingIsZeroAndATitleLosesFourCharacters) {
    Execute({"Insert into Files (Name, Path, Length) values ('One.mp3', '/m/One.mp3', null)",
             "Insert into Files (Name, Path, Length) values ('Two.flac', '/m/Two.flac', 3725)",
             "Insert into Files (Name, Path, Length) values ('it''s.ogg', '/m/it''s.ogg', 5)"});
    ListAndSelect({1, 2, 3});
    PlaySelectedFiles(SelectedPaths());
    EXPECT_EQ(BytesOf(Temporary("Playlist.m3u")), "#EXTM3U\r\n#EXTINF:0,One\r\n/m/One.mp3\r\n"
                                                  "#EXTINF:3725,Two.\r\n/m/Two.flac\r\n"
                                                  "#EXTINF:5,it's\r\n/m/it's.ogg\r\n");
}

TEST_F(SelectionPlaylistTest, TheTemporaryPlaylistIsReplacedEachTimeAndStays) {
    AddFiles({"a.mp3", "b.mp3"});
    ListAndSelect({1, 2});
    PlaySelectedFiles(SelectedPaths());
    ListAndSelect({2});
    PlaySelectedFiles(SelectedPaths());
    EXPECT_EQ(BytesOf(Temporary("Playlist.m3u")), "#EXTM3U\r\n#EXTINF:60,b\r\n/m/b.mp3\r\n");
}

TEST_F(SelectionPlaylistTest, OnlyAPlaylistThatIsNotFoundIsTold) {
    AddFiles({"a.mp3"});
    ListAndSelect({1});
    for (const int result : {0, 3, 5, 31}) {
        shell.executeResult = result;
        PlaySelectedFiles(SelectedPaths());
    }
    EXPECT_THAT(msgBox.shown, IsEmpty());
    shell.executeResult = 2;
    PlaySelectedFiles(SelectedPaths());
    EXPECT_THAT(msgBox.shown, ElementsAre(missingFile));
}

TEST_F(SelectionPlaylistTest, APathThatIsNotInTheLibraryIsAFailure) {
    AddFiles({"a.mp3", "b.mp3"});
    ListAndSelect({1, 2});
    Execute("Delete from Files where File_id = 2");
    EXPECT_THROW(PlaySelectedFiles(SelectedPaths()), RuntimeError);
    EXPECT_TRUE(NothingWritten());
    EXPECT_THAT(shell.executed, IsEmpty());
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(SelectionPlaylistTest, ARowThatIsNotInTheListIsAFailure) {
    AddFiles({"a.mp3"});
    ListAndSelect({1});
    mainModule.SelectedRows.Add(2);
    EXPECT_EQ(NumberOf([] { (void)SelectedPaths(); }), 5);
}

TEST_F(SelectionPlaylistTest, ASavedPlaylistIsWrittenShownAndAskedFor) {
    AddFiles({"a.mp3", "b.mp3"});
    ListAndSelect({2, 1});
    Save();
    EXPECT_THAT(dialogs.shown, ElementsAre(saveDialog));
    EXPECT_EQ(calls, shownWork);
    EXPECT_EQ(BytesOf(target), "#EXTM3U\r\n#EXTINF:60,b\r\n/m/b.mp3\r\n#EXTINF:60,a\r\n/m/a.mp3\r\n");
    EXPECT_THAT(connection.statements, ElementsAre("Select Name, Length from Files where Path = '/m/b.mp3'",
                                                   "Select Name, Length from Files where Path = '/m/a.mp3'"));
    EXPECT_THAT(msgBox.shown, ElementsAre(question));
    EXPECT_THAT(shell.executed, IsEmpty());
    EXPECT_EQ(Hits(), (std::vector<std::string>{"0", "0"}));
}

TEST_F(SelectionPlaylistTest, TheNameIsTakenAsItIsAndAnOldFileIsReplaced) {
    AddFiles({"a.mp3"});
    ListAndSelect({1});
    WriteBytes(target, std::string(1000, 'x'));
    Save();
    EXPECT_EQ(BytesOf(target), "#EXTM3U\r\n#EXTINF:60,a\r\n/m/a.mp3\r\n");
    EXPECT_FALSE(std::filesystem::exists(target + ".m3u"));
}

TEST_F(SelectionPlaylistTest, TheQuestionComesWithTheTextShownAndThePointerBack) {
    class Box : public ScriptedMsgBox {
    public:
        explicit Box(CallList& calls) : m_calls(calls) {}
        Answer Show(const std::string&, const std::string&, Icon, Buttons) override {
            m_calls.push_back("box");
            return Answer::No;
        }
        CallList& m_calls;
    } box(calls);
    services.msgBox = &box;
    AddFiles({"a.mp3"});
    ListAndSelect({1});
    Save();
    EXPECT_THAT(calls, ElementsAre("dialog", "panel 1: Erstelle Playlist...", "pointer 11", "pointer 0",
                                   "box", "panel 1: "));
}

TEST_F(SelectionPlaylistTest, AYesOpensItInTheInternalPlayer) {
    AddFiles({"a.mp3"});
    ListAndSelect({1});
    msgBox.answers = {MsgBox::Answer::Yes};
    mainModule.AlwaysAddToPlaylist = true;
    Save();
    EXPECT_THAT(calls, ElementsAre("dialog", "panel 1: Erstelle Playlist...", "pointer 11", "pointer 0",
                                   "Show", "fGetM3u 1 " + target + " checked", "PlayFile 1", "panel 1: "));
    EXPECT_THAT(shell.executed, IsEmpty());
}

TEST_F(SelectionPlaylistTest, AYesOpensItInTheExternalPlayer) {
    AddFiles({"a.mp3"});
    ListAndSelect({1});
    mainModule.UseExternalPlayer = true;
    msgBox.answers = {MsgBox::Answer::Yes};
    shell.executeResult = 2;
    Save();
    EXPECT_THAT(shell.executed, ElementsAre(target));
    EXPECT_THAT(msgBox.shown, ElementsAre(question, missingFile));
    EXPECT_EQ(calls, shownWork);
}

TEST_F(SelectionPlaylistTest, TheMainMenusItemNeedsASelectedRow) {
    AddFiles({"a.mp3"});
    ListAndSelect({});
    mnuPlaylist_Click(player, work);
    EXPECT_THAT(dialogs.shown, IsEmpty());
    EXPECT_THAT(calls, IsEmpty());
    ListAndSelect({1});
    mnuPlaylist_Click(player, work);
    EXPECT_EQ(BytesOf(target), "#EXTM3U\r\n#EXTINF:60,a\r\n/m/a.mp3\r\n");
    EXPECT_EQ(calls, shownWork);
}

TEST_F(SelectionPlaylistTest, WithNothingSelectedTheOthersWriteTheHeaderAlone) {
    Save();
    EXPECT_EQ(BytesOf(target), "#EXTM3U\r\n");
    EXPECT_THAT(msgBox.shown, ElementsAre(question));
}

TEST_F(SelectionPlaylistTest, ACancelledOrFailingDialogEndsTheCommandQuietly) {
    AddFiles({"a.mp3"});
    for (const bool fails : {false, true}) {
        dialogs.fails = fails;
        dialogs.file.reset();
        ListAndSelect({1});
        Save();
        EXPECT_THAT(calls, ElementsAre("dialog"));
    }
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_THAT(msgBox.shown, IsEmpty());
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST_F(SelectionPlaylistTest, WhatWasSelectedBeforeTheDialogIsWritten) {
    AddFiles({"a.mp3", "b.mp3"});
    ListAndSelect({2});
    dialogs.onShow = [this] { ListAndSelect({1}); };
    Save();
    EXPECT_EQ(BytesOf(target), "#EXTM3U\r\n#EXTINF:60,b\r\n/m/b.mp3\r\n");
}

TEST_F(SelectionPlaylistTest, AFailureEndsTheCommandQuietlyAndKeepsTheOldFile) {
    AddFiles({"a.mp3", "b.mp3"});
    ListAndSelect({1, 2});
    WriteBytes(target, "old");
    Execute("Delete from Files where File_id = 2");
    Save();
    EXPECT_EQ(calls, shownWork);
    EXPECT_THAT(msgBox.shown, IsEmpty());
    EXPECT_EQ(BytesOf(target), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST_F(SelectionPlaylistTest, AFolderThatIsMissingEndsTheCommandQuietly) {
    AddFiles({"a.mp3"});
    ListAndSelect({1});
    dialogs.file = folder / "gone/list.m3u";
    Save();
    EXPECT_EQ(calls, shownWork);
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

} // namespace
} // namespace quavernet::test
