#include "tree/TreeDropTest.h"

#include "app/MayAct.h"
#include "support/SlowDisk.h"
#include "tree/PlaylistFile.h"

#include <cstring>
#include <memory>
#include <span>

namespace quavernet::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

/// A playlist on a device that fails after its first block of bytes.
class FailingDevice : public UserFiles {
public:
    explicit FailingDevice(std::string firstBytes) : m_firstBytes(std::move(firstBytes)) {}

    std::unique_ptr<BinaryFile> Open(const std::string&, BinaryFile::Access) override {
        return std::make_unique<File>(m_firstBytes);
    }
    std::unique_ptr<NewFile> Create(const std::string&) override { return nullptr; }
    std::unique_ptr<NewFile> CreatePrivate(const std::string&) override { return nullptr; }

private:
    class File : public BinaryFile {
    public:
        explicit File(const std::string& firstBytes) : m_firstBytes(firstBytes) {}
        std::uint64_t Size() const override { return m_firstBytes.size() * 2; }
        std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const override {
            if (offset > 0) {
                throw RuntimeError(ErrorNumber::DeviceInputOutput, "the device");
            }
            std::memcpy(bytes.data(), m_firstBytes.data(), m_firstBytes.size());
            return m_firstBytes.size();
        }
        std::uint64_t NextData(std::uint64_t offset) const override { return offset; }
        void Overwrite(std::uint64_t, std::span<const std::byte>, std::span<const std::byte>, SaveTimes,
                       WithoutCopy) override {}
        void Rewrite(const std::function<void(FileCopy&)>&) override {}

    private:
        const std::string& m_firstBytes;
    };

    std::string m_firstBytes;
};

class DropPlaylistTest : public TreeDropTest {
protected:
    DropPlaylistTest() { LoadTree(tree); }

    std::string Song(const std::string& name) {
        WriteMp3(name);
        return music / name;
    }
    /// A file that is there and that the library knows.
    std::string KnownSong(int id, const std::string& name) {
        const std::string path = Song(name);
        Execute("Insert into Files (File_id, Name, Path, Length) values (" + std::to_string(id) + ", '" +
                SqlQuote(name) + "', '" + SqlQuote(path) + "', 60)");
        return path;
    }
    std::string Playlist(const std::string& name, const std::string& text) {
        Write(name, text);
        return music / name;
    }
    DropOutcome DropList(const std::string& name, const std::string& text) {
        return Drop({Playlist(name, text)}, "");
    }
    std::vector<std::string> Categories() {
        return Rows("Select Category_id, Category from Categories order by Category_id");
    }
};

TEST_F(DropPlaylistTest, APlaylistBecomesACategoryWithItsFiles) {
    const std::string a = KnownSong(11, "a.mp3");
    const std::string b = KnownSong(12, "it's.mp3");
    const DropOutcome outcome = DropList("Party.m3u", "#EXTM3U\n#EXTINF:60,A\n" + a + "\n" + b + "\n");
    const std::string quoted = SqlQuote(b);
    EXPECT_THAT(
        statements,
        ElementsAre("Select * from Categories where Category = 'Party'",
                    "Insert Into Categories (Category) values ('Party')",
                    "Select Category_id from Categories", "Select Path from Files where Path = '" + a + "'",
                    "Select File_id, Name from Files where Path = '" + a + "'",
                    "Insert Into FileCategories (File_id, Category_id, [Position], Parent, Filename) values "
                    "(11, 1, 1, 'Party', 'a.mp3')",
                    "Select Path from Files where Path = '" + quoted + "'",
                    "Select File_id, Name from Files where Path = '" + quoted + "'",
                    "Insert Into FileCategories (File_id, Category_id, [Position], Parent, Filename) values "
                    "(12, 1, 2, 'Party', 'it''s.mp3')"));
    EXPECT_THAT(Entries("Party"), ElementsAre("1 a.mp3", "2 it's.mp3"));
    EXPECT_TRUE(outcome.Rebuild);
    EXPECT_FALSE(outcome.HadFileTarget);
    EXPECT_FALSE(outcome.FileAdded);
    EXPECT_THAT(calls, ElementsAre("pointer 11", "pointer 0"));
}

TEST_F(DropPlaylistTest, ATakenNameGetsTheFirstFreeNumberAndTheEntriesKeepThePlaylistsName) {
    AddCategory(1, "X", "x", {});
    AddCategory(2, "X1", "y", {});
    LoadTree(tree);
    const std::string a = KnownSong(11, "a.mp3");
    DropList("X.m3u", a);
    EXPECT_THAT(Categories(), ElementsAre("1|X", "2|X1", "3|X2"));
    EXPECT_THAT(Rows("Select Category_id, Parent, [Position] from FileCategories"), ElementsAre("3|X|1"));
    LoadTree(tree);
    EXPECT_EQ(tree.Node("CAT_X2").Children.size(), 1U);
    EXPECT_EQ(tree.Node("CAT_X2").Text, "X2");
    EXPECT_EQ(tree.Node("CAT_X").Text, "X (01:00)") << "the length counts for the old one";
    EXPECT_EQ(GetFileIdFromNode(tree, tree.Node("CAT_X2").Children.front()->Key), "");
}

TEST_F(DropPlaylistTest, TheNewCategoryIsTheOneWithTheHighestKeyWhateverItsName) {
    AddCategory(7, "Zoo", "z", {});
    const std::string a = KnownSong(11, "a.mp3");
    DropList("Abba.m3u", a);
    EXPECT_THAT(Rows("Select Category_id from FileCategories"), ElementsAre("8"));
}

TEST_F(DropPlaylistTest, AnApostropheInThePlaylistsNameFailsBeforeAnythingIsCreated) {
    for (const char* name : {"it's.m3u", "it''s.m3u", "x' or '1' = '1.m3u"}) {
        const DropOutcome outcome = DropList(name, KnownSong(11, "a.mp3"));
        EXPECT_FALSE(outcome.Rebuild);
        EXPECT_THAT(statements, IsEmpty());
        EXPECT_THAT(Categories(), IsEmpty());
        EXPECT_EQ(calls.back(), "pointer 0");
        Execute("Delete from Files");
    }
}

TEST_F(DropPlaylistTest, LinesThatAreMissingTakeNoPosition) {
    const std::string a = KnownSong(11, "a.mp3");
    const std::string b = KnownSong(12, "b.ogg");
    DropList("Party.m3u", a + "\n" + (music / "gone.mp3") + "\n\n" + b + "\n");
    EXPECT_THAT(Entries("Party"), ElementsAre("1 a.mp3", "2 b.ogg"));
}

TEST_F(DropPlaylistTest, OnlyPlainAudioFilesWithAFullPathArePresent) {
    KnownSong(11, "a.mp3");
    std::filesystem::create_directory(music / "folder.mp3");
    Write("cover.jpg");
    const std::string hidden = KnownSong(12, ".hidden.mp3");
    std::string withNul = music / "a.mp3";
    withNul += std::string("\0.mp3", 5);
    const auto current = std::filesystem::current_path();
    std::filesystem::current_path(music.Path());
    DropList("Party.m3u", "a.mp3\n./a.mp3\nhttp://example.org/a.mp3\n" + (music / "folder.mp3") + "\n" +
                              (music / "cover.jpg") + "\n" + withNul + "\n " + (music / "a.mp3") + "\n" +
                              hidden + "\n");
    std::filesystem::current_path(current);
    EXPECT_THAT(Entries("Party"), ElementsAre("1 .hidden.mp3"));
}

TEST_F(DropPlaylistTest, UnknownFilesAreStoredOnTheWay) {
    const std::string a = Song("a.mp3");
    const std::string b = Song("b.mp3");
    const DropOutcome outcome = DropList("Party.m3u", a + "\r\n" + b + "\r\n");
    EXPECT_TRUE(outcome.FileAdded);
    EXPECT_THAT(Entries("Party"), ElementsAre("1 a.mp3", "2 b.mp3"));
    EXPECT_THAT(Rows("Select Path from Files"), ElementsAre(a, b));
    EXPECT_EQ(mainModule.CurrentFile.DetailsPath, b);
}

TEST_F(DropPlaylistTest, TheTargetDoesNotMatter) {
    FillDense();
    const std::string a = KnownSong(11, "a.mp3");
    const std::string list = Playlist("Party.m3u", a);
    int number = 0;
    for (const char* target : {"Parent", "", "CAT_Jazz", "file101pos1", "gone"}) {
        EXPECT_TRUE(Drop({list}, target).Rebuild);
        EXPECT_EQ(Rows("Select * from Categories").size(), static_cast<std::size_t>(3 + ++number)) << target;
    }
    Press("file101pos1");
    EXPECT_TRUE(Drop({list}, "file101pos1").Rebuild) << "nor where the drag began";
}

TEST_F(DropPlaylistTest, OnlyTheFirstFileOfTheDropCounts) {
    const std::string a = KnownSong(11, "a.mp3");
    const std::string b = KnownSong(12, "b.mp3");
    Drop({Playlist("One.m3u", a), Playlist("Two.m3u", b), b}, "");
    EXPECT_THAT(Categories(), ElementsAre("1|One"));
    EXPECT_THAT(Entries("One"), ElementsAre("1 a.mp3"));
}

TEST_F(DropPlaylistTest, APlaylistWithoutANameMakesACategoryWithoutAName) {
    DropList(".m3u", KnownSong(11, "a.mp3"));
    EXPECT_THAT(Categories(), ElementsAre("1|"));
}

TEST_F(DropPlaylistTest, AnEmptyPlaylistMakesAnEmptyCategory) {
    EXPECT_TRUE(DropList("Party.m3u", "").Rebuild);
    EXPECT_THAT(Categories(), ElementsAre("1|Party"));
}

TEST_F(DropPlaylistTest, APlaylistThatIsMissingEndsSilentlyAndLeavesItsCategory) {
    const DropOutcome outcome = Drop({music / "gone.m3u"}, "");
    EXPECT_FALSE(outcome.Rebuild);
    EXPECT_EQ(calls.back(), "pointer 0");
    EXPECT_THAT(Categories(), ElementsAre("1|gone"));
}

TEST_F(DropPlaylistTest, AFailureAfterTheFirstLineIsOneOfTheProgram) {
    const std::string a = KnownSong(11, "a.mp3");
    connection.failOn = "Insert Into FileCategories";
    EXPECT_THROW(DropList("Party.m3u", "#EXTM3U\n" + a), RuntimeError);
    EXPECT_THAT(Categories(), ElementsAre("1|Party"));
    EXPECT_EQ(calls.back(), "pointer 11");
}

TEST_F(DropPlaylistTest, AFailureBeforeTheFirstLineIsSilent) {
    connection.failOn = "Select Category_id";
    EXPECT_FALSE(DropList("Party.m3u", KnownSong(11, "a.mp3")).Rebuild);
    connection.failOn = "Insert Into Categories";
    EXPECT_FALSE(DropList("Other.m3u", "").Rebuild);
    EXPECT_EQ(calls.back(), "pointer 0");
}

TEST_F(DropPlaylistTest, ALineIsTakenInItsBytesElseAsWindows1252) {
    const std::string latin = KnownSong(11, "Bl\xFCte.mp3");
    const std::string utf8 = KnownSong(12, "M\xC3\xA4rz.mp3");
    KnownSong(13, "\xC3\x96l.mp3");
    DropList("Party.m3u", latin + "\n" + utf8 + "\n" + (music / "\xD6l.mp3"));
    EXPECT_THAT(Rows("Select File_id, [Position] from FileCategories"), ElementsAre("11|1", "12|2", "13|3"));
}

TEST_F(DropPlaylistTest, UTF8IsNotReadAsWindows1252) {
    KnownSong(11, "M\xC3\x83\xC2\xA4rz.mp3"); // What the two bytes of a UTF-8 letter are in Windows-1252.
    DropList("Party.m3u", music / "M\xC3\xA4rz.mp3");
    EXPECT_THAT(Entries("Party"), IsEmpty());
}

TEST_F(DropPlaylistTest, APlaylistOfManyLinesIsReadToItsEnd) {
    const std::string a = KnownSong(11, "a.mp3");
    std::string text = std::string(3000000, 'x') + "\n/" + std::string(3000000, 'y') + ".mp3\n";
    for (int line = 0; line < 100000; ++line) {
        text += "/gone/x.mp3\n";
    }
    DropList("Party.m3u", text + a);
    EXPECT_THAT(Entries("Party"), ElementsAre("1 a.mp3"));
}

TEST_F(DropPlaylistTest, MoreEntriesThanPositionsAreAFailureOfTheProgram) {
    const std::string a = KnownSong(11, "a.mp3");
    std::string text;
    for (int line = 0; line < 32768; ++line) {
        text += a + "\n";
    }
    EXPECT_THROW(DropList("Party.m3u", text), RuntimeError);
    EXPECT_EQ(Value("Select Max([Position]) from FileCategories"), "32767");
}

TEST_F(DropPlaylistTest, ANumberedNameThatComparesEqualIsTaken) {
    AddCategory(1, "party", "x", {});
    DropList("PARTY.m3u", "");
    EXPECT_THAT(Categories(), ElementsAre("1|party", "2|PARTY1"));
}

TEST_F(DropPlaylistTest, WithoutAnyCategoryToReadTheNewOneIsTheFirst) {
    connection.hide = "Select Category_id from Categories";
    connection.hideRounds = 1;
    DropList("Party.m3u", KnownSong(11, "a.mp3"));
    EXPECT_THAT(Rows("Select Category_id from FileCategories"), ElementsAre("1"));
}

TEST_F(DropPlaylistTest, ADeviceThatFailsIsSilentBeforeTheFirstLineAndNotAfterIt) {
    FailingDevice remarks("#EXTM3U\n#a\n");
    services.files = &remarks;
    EXPECT_FALSE(Drop({"/m/Party.m3u"}, "").Rebuild);
    EXPECT_EQ(calls.back(), "pointer 0");
    FailingDevice oneLine("#EXTM3U\n/gone.mp3\n");
    services.files = &oneLine;
    EXPECT_THROW(Drop({"/m/Party.m3u"}, ""), RuntimeError);
}

TEST_F(DropPlaylistTest, AKnownLineBecomesTheCurrentPath) {
    const std::string a = KnownSong(11, "a.mp3");
    DropList("Party.m3u", a);
    EXPECT_EQ(mainModule.CurrentFile.CurrentPath, a);
    EXPECT_EQ(mainModule.CurrentFile.DetailsPath, a);
}

TEST_F(DropPlaylistTest, APathThatIsNotInItsNormalFormIsAbsent) {
    KnownSong(11, "a.mp3");
    DropList("Party.m3u", music.Path() + "//a.mp3\n" + music.Path() + "/./a.mp3\n/" + (music / "a.mp3"));
    EXPECT_THAT(Entries("Party"), IsEmpty());
}

TEST_F(DropPlaylistTest, TheEntriesOfANameThatDiffersInCaseCountForTheOldCategory) {
    AddCategory(1, "party", "x", {1});
    DropList("PARTY.m3u", KnownSong(11, "a.mp3"));
    EXPECT_THAT(Rows("Select Parent from FileCategories"), ElementsAre("party", "PARTY"));
    LoadTree(tree);
    EXPECT_EQ(tree.Node("CAT_party").Text, "party (02:00)");
    EXPECT_EQ(tree.Node("CAT_PARTY1").Text, "PARTY1");
    Execute("Delete from FileCategories where Parent = 'party' and Category_id = 1");
    LoadTree(tree);
    EXPECT_EQ(tree.Node("CAT_party").Text, "party (01:00)") << "also when no entry spells it so";
}

TEST_F(DropPlaylistTest, AnotherPlaylistMayComeInside) {
    const std::string a = Song("a.mp3");
    const std::string b = Song("b.mp3");
    const std::string inner = Playlist("Party.m3u", b);
    bool isDone = false;
    events.onDoEvents = [&] {
        if (!std::exchange(isDone, true)) {
            EXPECT_TRUE(TreeDrop({{inner}, "", false}, drag, tree, driver, work).Rebuild);
        }
    };
    std::filesystem::create_directory(music / "other");
    EXPECT_TRUE(DropList("other/Party.m3u", a).Rebuild);
    EXPECT_TRUE(isDone);
    EXPECT_THAT(
        Rows("Select C.Category, FC.Filename, FC.Parent, FC.[Position] from FileCategories FC, Categories "
             "C where FC.Category_id = C.Category_id order by FC.Category_id"),
        ElementsAre("Party|a.mp3|Party|1", "Party1|b.mp3|Party|1"));
}

TEST_F(DropPlaylistTest, AFileThatAShareDoesNotAnswerForLeavesTheWindowAliveAndTheLibraryFree) {
    const std::string a = KnownSong(11, "a.mp3");
    const std::string b = KnownSong(12, "\xC3\xA4.mp3"); // In another encoding in the playlist.
    const std::string c = KnownSong(13, "line\nbreak.mp3");
    SlowServices share;
    services.fileSystem = share.fileSystem.get();
    services.readAhead = share.readAhead.get();
    for (const std::string& path : {a, b, c}) {
        int waits = 0;
        share.disk.HangLooks(path);
        events.onDoEvents = [&] {
            if (++waits == 3) {
                OpenLibrary(libraryPath)->Execute("Insert into Categories (Category) values ('another')");
                EXPECT_FALSE(MayAct()) << "what is dropped has its place";
                share.disk.LetGo();
            }
        };
        Execute("Delete from FileCategories");
        DropList("Party.m3u", a + "\n" + (music / "\xE4.mp3") + "\nrelative.mp3\n" + (music / "gone.mp3") +
                                  "\n" + LineOfFile(c) + "\n");
        EXPECT_GE(waits, 3) << path;
        EXPECT_TRUE(MayAct());
        EXPECT_THAT(Entries("Party"), ElementsAre("1 a.mp3", "2 \xC3\xA4.mp3", "3 line\nbreak.mp3"));
    }
    EXPECT_THAT(share.disk.Reads(), IsEmpty()) << "known files are not opened";
}

} // namespace
} // namespace quavernet::test
