#include "playback/PlaylistWriter.h"

#include "support/FailureNumber.h"
#include "support/LogicTest.h"
#include "support/TemporaryFolder.h"
#include "support/TestFiles.h"

#include "platform/RuntimeError.h"

#include <filesystem>

#include <sys/stat.h>

namespace quavernet::test {
namespace {

class PlaylistWriterTest : public LogicTest {
protected:
    static ADODB::Field Text(const char* text) { return ADODB::Field(std::string_view(text)); }
    static ADODB::Field Seconds(std::int64_t seconds) { return ADODB::Field(seconds); }

    TemporaryFolder folder;
    const std::string path = folder / "List.m3u";
};

TEST_F(PlaylistWriterTest, AnEntryIsItsLengthTitleAndPath) {
    PlaylistWriter playlist(path);
    playlist.Add(Text("One.mp3"), Seconds(61), "/m/One.mp3");
    playlist.Add(Text("Two.mpeg"), Seconds(3600), "/m/it's/Two.mpeg");
    playlist.Close();
    EXPECT_EQ(ReadFile(path), "#EXTM3U\r\n"
                              "#EXTINF:61,One\r\n"
                              "/m/One.mp3\r\n"
                              "#EXTINF:3600,Two.\r\n"
                              "/m/it's/Two.mpeg\r\n");
}

TEST_F(PlaylistWriterTest, ANullLengthIsWrittenAsZero) {
    PlaylistWriter playlist(path);
    playlist.Add(Text("One.mp3"), ADODB::Field(), "/m/One.mp3");
    playlist.Close();
    EXPECT_EQ(ReadFile(path), "#EXTM3U\r\n#EXTINF:0,One\r\n/m/One.mp3\r\n");
}

TEST_F(PlaylistWriterTest, AListWithoutEntriesHasItsFirstLineAlone) {
    PlaylistWriter(path).Close();
    EXPECT_EQ(ReadFile(path), "#EXTM3U\r\n");
}

TEST_F(PlaylistWriterTest, NamesAndPathsKeepTheirBytes) {
    PlaylistWriter playlist(path);
    playlist.Add(Text("\xFC \xC3\xA4.mp3"), Seconds(1), "/m/\xFC \xC3\xA4.mp3");
    playlist.Add(Text("a\xC3\xA4\xFC\xE2\x82\xAC!"), Seconds(1), "/m/b"); // Four characters go, no bytes.
    playlist.Close();
    EXPECT_EQ(ReadFile(path), "#EXTM3U\r\n#EXTINF:1,\xFC \xC3\xA4\r\n/m/\xFC \xC3\xA4.mp3\r\n"
                              "#EXTINF:1,a\r\n/m/b\r\n");
}

TEST_F(PlaylistWriterTest, ALineBreakInANameMakesNoLineOfItsOwn) {
    PlaylistWriter playlist(path);
    playlist.Add(Text("a\nb\r.mp3"), Seconds(1), "/m/\n/50% \xC3\xA4\xFC_~-/a\nb\r.mp3");
    playlist.Close();
    EXPECT_EQ(ReadFile(path), "#EXTM3U\r\n#EXTINF:1,a b \r\n"
                              "file:///m/%0A/50%25%20%C3%A4%FC_~-/a%0Ab%0D.mp3\r\n");
}

TEST_F(PlaylistWriterTest, ANameThatIsTooShortIsAFailureAndLeavesNoPiecesOfItsEntry) {
    PlaylistWriter playlist(path);
    EXPECT_EQ(NumberOf([&] { playlist.Add(Text("mp3"), Seconds(1), "/m/mp3"); }),
              ErrorNumber::InvalidProcedureCall);
    playlist.Add(Text(".mp3"), Seconds(1), "/m/.mp3");
    playlist.Close();
    EXPECT_EQ(ReadFile(path), "#EXTM3U\r\n#EXTINF:1,\r\n/m/.mp3\r\n");
}

TEST_F(PlaylistWriterTest, AnOldListIsReplacedWhenTheNewOneIsWhole) {
    WriteFile(path, "old");
    {
        PlaylistWriter givenUp(path);
        givenUp.Add(Text("One.mp3"), Seconds(1), "/m/One.mp3");
    }
    EXPECT_EQ(ReadFile(path), "old");
    PlaylistWriter(path).Close();
    EXPECT_EQ(ReadFile(path), "#EXTM3U\r\n");
}

TEST_F(PlaylistWriterTest, ATemporaryListIsForTheUserAloneAndFollowsNoLink) {
    WriteFile(folder / "mine", "mine");
    std::filesystem::create_symlink("mine", path);
    PlaylistWriter(path, PlaylistWriter::Place::Temporary).Close();
    struct stat facts {};
    ASSERT_EQ(::lstat(path.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode, S_IFREG | 0600U);
    EXPECT_EQ(ReadFile(folder / "mine"), "mine");
}

TEST_F(PlaylistWriterTest, AFolderThatIsMissingIsAFailureAtTheStart) {
    EXPECT_EQ(NumberOf([&] { PlaylistWriter(folder / "none/List.m3u"); }), ErrorNumber::PathNotFound);
}

} // namespace
} // namespace quavernet::test
