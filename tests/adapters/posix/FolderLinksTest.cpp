#include "adapters/posix/PosixFileSystem.h"

#include "support/SmallAudio.h"
#include "support/TemporaryFolder.h"
#include "support/WalkedFiles.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace quavernet::test {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using ::testing::UnorderedElementsAreArray;

/// What a walk does with symbolic links.
class FolderLinksTest : public ::testing::Test {
protected:
    void Write(const std::string& name) { WriteBytes(folder / name, "x"); }

    TemporaryFolder folder;
    TemporaryFolder elsewhere;
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
};

TEST_F(FolderLinksTest, LinksToFilesAndFoldersAreFollowed) {
    Write("a.mp3");
    WriteBytes(elsewhere / "far.mp3", "x");
    fs::create_symlink(folder / "a.mp3", folder / "link.mp3");
    fs::create_symlink(elsewhere.Path(), folder / "linked");
    const auto walk = fileSystem->GetFolder(folder.Path());

    EXPECT_THAT(AllFiles(*walk), UnorderedElementsAre("a.mp3", "link.mp3", "linked/far.mp3"));
}

TEST_F(FolderLinksTest, NoFolderIsEnteredTwiceInOneWalk) {
    fs::create_directories(folder / "a/b");
    Write("a/b/x.mp3");
    fs::create_symlink("..", folder / "a/b/up");
    fs::create_symlink(".", folder / "a/self");
    fs::create_symlink("a/b", folder / "again");
    const auto walk = fileSystem->GetFolder(folder.Path());

    EXPECT_THAT(AllFiles(*walk), ElementsAre("a/b/x.mp3"));
    EXPECT_THAT(walk->TakeSkipped(), IsEmpty());
    const auto second = fileSystem->GetFolder(folder.Path());
    EXPECT_THAT(AllFiles(*second), ElementsAre("a/b/x.mp3"));
}

TEST_F(FolderLinksTest, ALinkToAFolderWithinTheChosenOneIsPassedOverWithoutANote) {
    fs::create_symlink("real", folder / "link");
    fs::create_directory(folder / "real");
    Write("real/x.mp3");
    const auto walk = fileSystem->GetFolder(folder.Path());

    EXPECT_THAT(walk->List(folder.Path()).subFolders, ElementsAre(folder / "real"));
    EXPECT_THAT(walk->TakeSkipped(), IsEmpty());
}

// Each of two neighbours holds a link into the other: whichever is listed first, its link comes before the
// folder that it leads to.
TEST_F(FolderLinksTest, AFolderReachedByALinkKeepsItsOwnPathInEitherOrderOfTheListing) {
    fs::create_directories(folder / "a/album");
    fs::create_directories(folder / "b/album");
    Write("a/album/of a.mp3");
    Write("b/album/of b.mp3");
    fs::create_symlink("../b/album", folder / "a/link");
    fs::create_symlink(folder / "a/album", folder / "b/link");
    const std::vector<std::string> own{"a/album/of a.mp3", "b/album/of b.mp3"};
    const auto walk = fileSystem->GetFolder(folder.Path());

    EXPECT_THAT(AllFiles(*walk), UnorderedElementsAreArray(own));
    EXPECT_THAT(walk->TakeSkipped(), IsEmpty());
    EXPECT_THAT(AllFiles(*fileSystem->GetFolder(folder.Path()), true), UnorderedElementsAreArray(own));

    fs::create_directory_symlink(folder.Path(), elsewhere / "chosen");
    const auto byLink = fileSystem->GetFolder(elsewhere / "chosen");
    EXPECT_THAT(AllFiles(*byLink), UnorderedElementsAreArray(own))
        << "the chosen folder may be a link itself";
}

TEST_F(FolderLinksTest, ALinkBackFromAFolderElsewhereIsPassedOverToo) {
    fs::create_directories(folder / "a/album");
    Write("a/album/x.mp3");
    fs::create_directory(elsewhere / "far");
    WriteBytes(elsewhere / "far/y.mp3", "x");
    fs::create_symlink(folder / "a/album", elsewhere / "back");
    fs::create_symlink(elsewhere.Path(), folder / "0 out");
    fs::create_symlink(elsewhere.Path(), folder / "z out");

    for (const bool reversed : {false, true}) {
        const auto files = AllFiles(*fileSystem->GetFolder(folder.Path()), reversed);
        EXPECT_EQ(files.size(), 2U) << "a folder elsewhere is entered once";
        EXPECT_THAT(files, Contains("a/album/x.mp3"));
        EXPECT_THAT(files, Contains(::testing::EndsWith(" out/far/y.mp3")));
    }
}

TEST_F(FolderLinksTest, ALinkToAFolderAboveTheChosenOneDoesNotReachItAgain) {
    fs::create_directories(folder / "chosen/album");
    Write("chosen/album/x.mp3");
    Write("y.mp3");
    fs::create_symlink(folder.Path(), folder / "chosen/up");

    for (const bool reversed : {false, true}) {
        EXPECT_THAT(AllFiles(*fileSystem->GetFolder(folder / "chosen"), reversed),
                    UnorderedElementsAre("album/x.mp3", "up/y.mp3"));
    }
}

// Folders alone can be entered but once; files are listed by every name they have.
TEST_F(FolderLinksTest, ALinkToASingleFileIsAFileOfItsOwnWhereverItLeads) {
    Write("a.mp3");
    WriteBytes(elsewhere / "far.mp3", "x");
    fs::create_directory(folder / "sub");
    fs::create_symlink("../a.mp3", folder / "sub/near.mp3");
    fs::create_symlink(elsewhere / "far.mp3", folder / "sub/far.mp3");

    EXPECT_THAT(AllFiles(*fileSystem->GetFolder(folder.Path())),
                UnorderedElementsAre("a.mp3", "sub/near.mp3", "sub/far.mp3"));
}

} // namespace
} // namespace quavernet::test
