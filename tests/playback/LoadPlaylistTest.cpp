// What fGetM3u makes of playlists, good and bad.
#include "playback/PlayQueueTest.h"

#include "support/TestFiles.h"

#include <filesystem>

#include <sys/stat.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LoadPlaylistTest : public PlayQueueTest {
protected:
    std::string Song(const std::string& name) {
        WriteFile(music / name, "x");
        return music / name;
    }
    void Load(const std::string& contents, bool checkExists = true) {
        WriteFile(music / "List.m3u", contents);
        queue.fGetM3u(1, music / "List.m3u", checkExists);
    }

    TemporaryFolder music;
};

TEST_F(LoadPlaylistTest, LinesOfFilesThatAreThereBecomeEntries) {
    const std::string a = Song("a.mp3");
    const std::string text = Song("notes.txt");
    Load("#EXTM3U\r\n#EXTINF:7,Other title\r\n" + a + "\r\n\r\n" + (music / "gone.mp3") + "\r\n" + text +
         "\n" + a);
    EXPECT_THAT(Paths(), ElementsAre(a, text, a));
    EXPECT_THAT(Texts(), ElementsAre("a.mp3", "notes.txt", "a.mp3"));
    EXPECT_EQ(queue.ListIndex(), -1);
    EXPECT_THAT(EngineCalls(), IsEmpty());
    EXPECT_EQ(events.count, 0);
}

TEST_F(LoadPlaylistTest, APlaylistTakesTheQueuesPlaceWhateverTheOption) {
    Fill(2);
    queue.PlayFile(2);
    mainModule.AlwaysAddToPlaylist = true;
    Load(Song("a.mp3") + "\n");
    EXPECT_THAT(Texts(), ElementsAre("a.mp3"));
    EXPECT_EQ(queue.CurrentTrack(), 2);
    EXPECT_EQ(player.Next(), "");
}

TEST_F(LoadPlaylistTest, AnotherModeKeepsTheListButNotThePaths) {
    Fill(1);
    const std::string a = Song("a.mp3");
    WriteFile(music / "List.m3u", a + "\n");
    queue.fGetM3u(0, music / "List.m3u", true);
    EXPECT_THAT(Texts(), ElementsAre("P1 - T1", "a.mp3"));
    EXPECT_THAT(Paths(), ElementsAre(a));
}

TEST_F(LoadPlaylistTest, WithoutTheCheckEveryOtherLineCounts) {
    Load("#x\n/gone/b.mp3\nrelative\\c.mp3\nhttp://x/d.mp3\n/e/\xFC.mp3\n", false);
    EXPECT_THAT(Paths(), ElementsAre("/gone/b.mp3", "relative\\c.mp3", "http://x/d.mp3", "/e/\xC3\xBC.mp3"));
    EXPECT_THAT(Texts(), ElementsAre("b.mp3", "relative\\c.mp3", "d.mp3", "\xC3\xBC.mp3"));
}

TEST_F(LoadPlaylistTest, APlaylistOfCommentsGivesAnEmptyQueue) {
    Fill(1);
    Load("#EXTM3U\r\n#EXTINF:1,x\r\n#" + Song("a.mp3"));
    EXPECT_THAT(Texts(), IsEmpty());
    queue.PlayFile(1);
    EXPECT_THAT(EngineCalls(), IsEmpty());
}

TEST_F(LoadPlaylistTest, APlaylistThatCannotBeReadLeavesAnEmptyQueue) {
    ASSERT_EQ(::mkfifo((music / "pipe").c_str(), 0600), 0);
    for (const std::string& path : {music / "missing.m3u", music.Path(), music / "pipe", std::string()}) {
        queue.AddPlaylist("/m/a.mp3");
        queue.fGetM3u(1, path, true);
        EXPECT_EQ(queue.ListCount(), 0) << path;
        EXPECT_EQ(queue.PathCount(), 0U);
    }
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(LoadPlaylistTest, OnlyPlainFilesByTheirFullPathArePresent) {
    const std::string hidden = Song(".hidden.mp3");
    std::filesystem::create_directory(music / "folder.mp3");
    ASSERT_EQ(::mkfifo((music / "pipe.mp3").c_str(), 0600), 0);
    std::filesystem::create_symlink(hidden, music / "link.mp3");
    std::filesystem::create_symlink(music / "nowhere", music / "dangling.mp3");
    Load(hidden + "\n" + (music / "folder.mp3") + "\n" + (music / "pipe.mp3") + "\n" + (music / "link.mp3") +
         "\n" + (music / "dangling.mp3") + "\n.hidden.mp3\n~/.hidden.mp3\n*\n\n \n/\n/dev/zero\n");
    EXPECT_THAT(Paths(), ElementsAre(hidden, music / "link.mp3"));
}

TEST_F(LoadPlaylistTest, AddressesAndNetworkPathsAreNotEvenLookedUp) {
    class Watched : public ChosenVolumes {
    public:
        bool FileExists(const std::string& path) override {
            asked.push_back(path);
            return true;
        }
        std::vector<std::string> asked;
    } watched;
    services.fileSystem = &watched;
    Load("http://example.org/a.mp3\nsmb://host/a.mp3\nfile:///m/a.mp3\nfile:///m/%61.mp3\n//host/share/"
         "a.mp3\nfile://host/a%0A.mp3\nfile:///m/%0a.mp3\nfile:///m/%0A%61.mp3\nfile:///m/%0A%00.mp3\n"
         "file:////m/%0A.mp3\nfile:///m/%0A%\nfile:///m/%0A%2\nfile:///m/%0A%x0\nfile:///m/%0A "
         "b\nFile:///m/%0A\n"
         "\\\\host\\share\\a.mp3\n"
         "/net//host/a.mp3\nC:\\a.mp3\n/m/./a.mp3\n/m/" +
         std::string(1, '\0') + "a.mp3\n/m/b.mp3\n");
    EXPECT_THAT(watched.asked, ElementsAre("/m/b.mp3"));
    EXPECT_THAT(Paths(), ElementsAre("/m/b.mp3"));
}

TEST_F(LoadPlaylistTest, ANameWithALineBreakIsReadBackAndNoOtherFileForIt) {
    const std::string plain = Song("b.mp3");
    std::filesystem::create_directories(music / "a\n" + music.Path());
    const std::string broken = Song("a\n" + plain);
    const std::string strange = Song("50%\r \xFC.mp3");
    AddFile(broken, "A", "T");
    AddFile(strange, "B", "T");
    for (const std::string& path : {broken, strange, broken}) {
        queue.AddPlaylist(path);
    }
    queue.WritePlayerPlaylist(music / "List.m3u");
    queue.fGetM3u(1, music / "List.m3u", true);
    EXPECT_THAT(Paths(), ElementsAre(broken, strange, broken));
}

TEST_F(LoadPlaylistTest, EachLineIsReadInTheCodeSetThatFindsItsFile) {
    const std::string utf8 = Song("\xC3\xA4.mp3");
    const std::string bytes = Song("\xFC.mp3");
    const std::string both = Song("\xF6.mp3");
    Song("\xC3\xB6.mp3");
    Load("\xEF\xBB\xBF" + utf8 + "\r\n" + bytes + "\r\n" + both + "\r\n" + (music / "\xE4.mp3") + "\r\n");
    EXPECT_THAT(Paths(), ElementsAre(utf8, bytes, both, utf8));
}

TEST_F(LoadPlaylistTest, StrangeBytesEndNothing) {
    const std::string a = Song("a.mp3");
    const std::string cr = Song("b\rc.mp3");
    std::string contents = std::string("\0#x\n", 4) + a + std::string("\0junk\n", 6) + cr + "\n" +
                           std::string(10'000'000, '/') + "\n" + a + "\r\r\n" + a + "\n";
    Load(contents);
    EXPECT_THAT(Paths(), ElementsAre(cr, a));
    EXPECT_THAT(Texts(), ElementsAre("b\rc.mp3", "a.mp3"));
}

TEST_F(LoadPlaylistTest, BeyondTheLimitTheRestIsLeft) {
    const std::string a = Song("a.mp3");
    std::string contents;
    for (int i = 0; i < 40'000; ++i) {
        contents += a + "\n";
    }
    Load(contents);
    EXPECT_EQ(queue.ListCount(), 32767);
    EXPECT_EQ(queue.PathCount(), 32767U);
}

TEST_F(LoadPlaylistTest, ALongPlaylistLetsEventsRun) {
    std::string contents;
    for (int i = 0; i < 20'000; ++i) {
        contents += "/m/none\n";
    }
    const std::string a = Song("a.mp3");
    Load(contents + a + "\n");
    EXPECT_EQ(events.count, 4);
    EXPECT_THAT(Paths(), ElementsAre(a));
    // What happens there holds: a fill that takes its place, and the end of the window.
    InEvents([&] {
        queue.Clear();
        queue.AddPlaylist("/m/other.mp3");
    });
    Load(contents + a + "\n");
    EXPECT_THAT(Paths(), ElementsAre("/m/other.mp3"));
    InEvents([&] { queue.Form_Unload(); });
    Load(contents + a + "\n");
    EXPECT_THAT(Paths(), IsEmpty());
}

} // namespace
} // namespace quavernet::test
