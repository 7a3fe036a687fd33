#include "adapters/posix/PosixFileSystem.h"

#include "adapters/posix/PosixFolderWalk.h"
#include "platform/RuntimeError.h"
#include "support/FailureNumber.h"
#include "support/OrdinaryUser.h"
#include "support/SmallAudio.h"
#include "support/TemporaryFolder.h"
#include "support/WalkedFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <functional>
#include <map>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace quavernet::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class PosixFileSystemTest : public ::testing::Test {
protected:
    PosixFileSystemTest() { fs::permissions(folder.Path(), fs::perms(0755)); }
    ~PosixFileSystemTest() override {
        std::error_code ignored;
        for (const std::string& path : locked) {
            fs::permissions(path, fs::perms(0755), ignored);
        }
    }

    void Write(const std::string& name, const std::string& bytes = "x") { WriteBytes(folder / name, bytes); }
    void Lock(const std::string& name) {
        fs::permissions(folder / name, fs::perms(0));
        locked.push_back(folder / name);
    }

    std::vector<std::string> NamesIn(FolderWalk& walk, const std::string& path) {
        std::vector<std::string> names;
        for (const FolderFile& file : walk.List(path).files) {
            names.push_back(file.name);
        }
        return names;
    }

    std::string ReasonFor(FolderWalk& walk, const std::string& path) {
        for (const SkippedEntry& entry : walk.TakeSkipped()) {
            if (entry.path == path) {
                return entry.reason;
            }
        }
        return "no note";
    }

    TemporaryFolder folder;
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
    std::vector<std::string> locked;
};

TEST_F(PosixFileSystemTest, AListingHoldsPlainFilesWithTheirHiddenMarkAndFullPathsOfSubFolders) {
    Write("b.mp3");
    Write(".hidden.mp3");
    fs::create_directory(folder / "sub");
    fs::create_directory(folder / ".cache");
    const auto walk = fileSystem->GetFolder(folder.Path());

    const FolderContents contents = walk->List(folder.Path());

    ASSERT_EQ(contents.files.size(), 2u);
    for (const FolderFile& file : contents.files) {
        EXPECT_EQ(file.hidden, file.name == ".hidden.mp3");
    }
    EXPECT_THAT(contents.subFolders, UnorderedElementsAre(folder / "sub", folder / ".cache"));
    EXPECT_THAT(walk->TakeSkipped(), IsEmpty());
}

TEST_F(PosixFileSystemTest, TheWalkStartsAtAnAbsolutePathWithoutDoubledOrFinalSeparators) {
    fs::create_directory(folder / "sub");

    EXPECT_EQ(fileSystem->GetFolder(folder.Path() + "//./sub//")->Path(), folder / "sub");
    EXPECT_EQ(fileSystem->GetFolder("/")->Path(), "/");
    EXPECT_EQ(fileSystem->GetFolder(".")->Path(), fs::current_path().native());
}

TEST_F(PosixFileSystemTest, SubFoldersOfTheRootCarryOneSeparator) {
    const auto walk = fileSystem->GetFolder("/");

    const FolderContents contents = walk->List("/");

    ASSERT_FALSE(contents.subFolders.empty());
    for (const std::string& path : contents.subFolders) {
        EXPECT_EQ(path.rfind('/'), 0u) << path;
    }
}

TEST_F(PosixFileSystemTest, AFolderThatIsMissingOrNoFolderOrMayNotBeReadRaisesError76) {
    Write("file");
    fs::create_directory(folder / "private");
    Lock("private");

    EXPECT_EQ(NumberOf([&] { fileSystem->GetFolder(folder / "missing"); }), 76);
    EXPECT_EQ(NumberOf([&] { fileSystem->GetFolder(folder / "file"); }), 76);
    EXPECT_EQ(NumberOf([&] { fileSystem->GetFolder(""); }), 76);
    EXPECT_EQ(NumberOf([&] { fileSystem->GetFolder(folder.Path() + std::string("\0x", 2)); }), 76);
    const OrdinaryUser user;
    EXPECT_EQ(NumberOf([&] { fileSystem->GetFolder(folder / "private"); }), 76);
}

TEST_F(PosixFileSystemTest, EntriesComeInTheOrderOfTheFileSystem) {
    std::vector<std::string> files;
    std::vector<std::string> folders;
    for (const char* name : {"m", "b", "z", "a", "k", "t", "c", "y"}) {
        Write(std::string(name) + ".mp3");
        fs::create_directory(folder / name);
    }
    for (const auto& entry : fs::directory_iterator(folder.Path())) {
        (entry.is_directory() ? folders : files).push_back(entry.path().filename());
    }
    ASSERT_FALSE(std::is_sorted(files.begin(), files.end())) << "such a file system can't show a difference";
    ASSERT_FALSE(std::is_sorted(folders.begin(), folders.end()));
    const auto walk = fileSystem->GetFolder(folder.Path());

    EXPECT_EQ(NamesIn(*walk, folder.Path()), files);
    std::vector<std::string> paths;
    for (const std::string& name : folders) {
        paths.push_back(folder / name);
    }
    EXPECT_EQ(fileSystem->GetFolder(folder.Path())->List(folder.Path()).subFolders, paths);
}

TEST_F(PosixFileSystemTest, PipesSocketsDevicesAndDanglingLinksArePassedOverAndNoted) {
    ASSERT_EQ(::mkfifo((folder / "pipe.mp3").c_str(), 0644), 0);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, (folder / "socket.mp3").c_str(), sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ::close(socket);
    fs::create_symlink("/dev/null", folder / "device.mp3");
    fs::create_symlink("nowhere", folder / "dangling.mp3");
    fs::create_symlink("circle.mp3", folder / "circle.mp3");
    Write("good.mp3");
    const auto walk = fileSystem->GetFolder(folder.Path());

    EXPECT_THAT(NamesIn(*walk, folder.Path()), ElementsAre("good.mp3"));

    std::vector<std::string> notes;
    std::map<std::string, SkippedEntry::Kind> kinds;
    for (const SkippedEntry& entry : walk->TakeSkipped()) {
        const std::string name = entry.path.substr(folder.Path().size() + 1);
        notes.push_back(name + ": " + entry.reason);
        kinds[name] = entry.kind;
    }
    EXPECT_THAT(notes, UnorderedElementsAre("pipe.mp3: " + std::string(std::strerror(EOPNOTSUPP)),
                                            "socket.mp3: " + std::string(std::strerror(EOPNOTSUPP)),
                                            "device.mp3: " + std::string(std::strerror(EOPNOTSUPP)),
                                            "dangling.mp3: " + std::string(std::strerror(ENOENT)),
                                            "circle.mp3: " + std::string(std::strerror(ELOOP))));
    EXPECT_EQ(kinds["pipe.mp3"], SkippedEntry::Kind::NoPlainFile);
    EXPECT_EQ(kinds["socket.mp3"], SkippedEntry::Kind::NoPlainFile);
    EXPECT_EQ(kinds["device.mp3"], SkippedEntry::Kind::NoPlainFile);
    EXPECT_EQ(kinds["dangling.mp3"], SkippedEntry::Kind::Missing);
    EXPECT_EQ(kinds["circle.mp3"], SkippedEntry::Kind::LinkCircle);
    EXPECT_THAT(walk->TakeSkipped(), IsEmpty()) << "notes are handed out once";
}

TEST_F(PosixFileSystemTest, AnUnreadableSubFolderIsPassedOverAndNoted) {
    fs::create_directory(folder / "private");
    Write("private/x.mp3");
    Write("good.mp3");
    Lock("private");
    const OrdinaryUser user;
    const auto walk = fileSystem->GetFolder(folder.Path());

    EXPECT_THAT(AllFiles(*walk), ElementsAre("good.mp3"));
    const std::vector<SkippedEntry> skipped = walk->TakeSkipped();
    ASSERT_EQ(skipped.size(), 1U);
    EXPECT_EQ(skipped[0].path, folder / "private");
    EXPECT_EQ(skipped[0].reason, std::strerror(EACCES));
    EXPECT_EQ(skipped[0].kind, SkippedEntry::Kind::NoAccess);
}

TEST_F(PosixFileSystemTest, AnUnreadableFileIsListedButGivesNoFacts) {
    Write("locked.mp3");
    Lock("locked.mp3");
    const OrdinaryUser user;
    const auto walk = fileSystem->GetFolder(folder.Path());

    EXPECT_THAT(NamesIn(*walk, folder.Path()), ElementsAre("locked.mp3"));
    EXPECT_FALSE(walk->File(folder / "locked.mp3").has_value());
    EXPECT_EQ(ReasonFor(*walk, folder / "locked.mp3"), std::strerror(EACCES));
}

TEST_F(PosixFileSystemTest, AFolderThatMayBeListedButNotEnteredGivesNoFacts) {
    fs::create_directory(folder / "listed");
    Write("listed/x.mp3");
    fs::permissions(folder / "listed", fs::perms(0444));
    locked.push_back(folder / "listed");
    const OrdinaryUser user;
    const auto walk = fileSystem->GetFolder(folder.Path());

    EXPECT_THAT(AllFiles(*walk), ElementsAre("listed/x.mp3"));
    EXPECT_FALSE(walk->File(folder / "listed/x.mp3").has_value());
    EXPECT_EQ(ReasonFor(*walk, folder / "listed/x.mp3"), std::strerror(EACCES));
}

TEST_F(PosixFileSystemTest, AFileThatVanishesOrBecomesAPipeGivesNoFacts) {
    Write("gone.mp3");
    Write("pipe.mp3");
    const auto walk = fileSystem->GetFolder(folder.Path());
    EXPECT_EQ(NamesIn(*walk, folder.Path()).size(), 2u);
    fs::remove(folder / "gone.mp3");
    fs::remove(folder / "pipe.mp3");
    ASSERT_EQ(::mkfifo((folder / "pipe.mp3").c_str(), 0644), 0);

    EXPECT_FALSE(walk->File(folder / "gone.mp3").has_value());
    EXPECT_FALSE(walk->File(folder / "pipe.mp3").has_value());
    EXPECT_EQ(walk->TakeSkipped().size(), 2u);
}

TEST_F(PosixFileSystemTest, ASubFolderThatVanishesGivesEmptyContentsAndANote) {
    fs::create_directory(folder / "sub");
    const auto walk = fileSystem->GetFolder(folder.Path());
    walk->List(folder.Path());
    fs::remove(folder / "sub");

    const FolderContents contents = walk->List(folder / "sub");

    EXPECT_THAT(contents.files, IsEmpty());
    EXPECT_EQ(ReasonFor(*walk, folder / "sub"), std::strerror(ENOENT));
}

TEST_F(PosixFileSystemTest, FactsTellNamePathSizeAndDates) {
    Write("a.mp3", std::string(1234, 'x'));
    const timespec times[2] = {{1000000000, 0}, {1000000000, 0}}; // 2001-09-09 01:46:40 UTC
    ASSERT_EQ(::utimensat(AT_FDCWD, (folder / "a.mp3").c_str(), times, 0), 0);
    const auto walk = fileSystem->GetFolder(folder.Path());
    walk->List(folder.Path());

    const auto facts = walk->File(folder / "a.mp3");

    ASSERT_TRUE(facts.has_value());
    EXPECT_EQ(facts->name, "a.mp3");
    EXPECT_EQ(facts->path, folder / "a.mp3");
    EXPECT_EQ(facts->size, 1234u);
    std::tm local{};
    ::localtime_r(&times[0].tv_sec, &local);
    EXPECT_EQ(facts->dateLastModified,
              (DateTime{2001, 9, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec}));
    struct statx raw {};
    ASSERT_EQ(::statx(AT_FDCWD, (folder / "a.mp3").c_str(), 0, STATX_BTIME, &raw), 0);
    if ((raw.stx_mask & STATX_BTIME) != 0) {
        EXPECT_GT(facts->dateCreated.year, 2001) << "the file was born today";
    } else {
        EXPECT_EQ(facts->dateCreated, facts->dateLastModified);
    }
}

TEST(FactsOfTest, WhereNoBirthIsKeptTheDateOfCreationIsThatOfTheLastChange) {
    posix::MountTable mounts;
    struct statx raw {};
    raw.stx_mask = STATX_MTIME;
    raw.stx_mtime.tv_sec = 1000000000;
    raw.stx_btime.tv_sec = 900000000;
    FileFacts facts = posix::FactsOf("/a.mp3", raw, mounts);
    EXPECT_EQ(facts.dateLastModified.year, 2001);
    EXPECT_EQ(facts.dateCreated, facts.dateLastModified);

    raw.stx_mask |= STATX_BTIME;
    EXPECT_EQ(posix::FactsOf("/a.mp3", raw, mounts).dateCreated.year, 1998);
    raw.stx_btime.tv_sec = 0;
    EXPECT_EQ(posix::FactsOf("/a.mp3", raw, mounts).dateCreated, facts.dateLastModified);
}

TEST_F(PosixFileSystemTest, ALinkIsHiddenByItsOwnName) {
    fs::create_directory(folder / "real");
    Write("real/a.mp3");
    fs::create_symlink("real/a.mp3", folder / ".hidden.mp3");
    const auto walk = fileSystem->GetFolder(folder.Path());

    const FolderContents contents = walk->List(folder.Path());

    ASSERT_EQ(contents.files.size(), 1u);
    EXPECT_TRUE(contents.files[0].hidden);
}

TEST_F(PosixFileSystemTest, FactsAreToldAlsoForFilesOutsideTheFolderLastListed) {
    fs::create_directory(folder / "sub");
    Write("a.mp3");
    Write("sub/b.mp3");
    const auto walk = fileSystem->GetFolder(folder.Path());
    walk->List(folder.Path());
    walk->List(folder / "sub");

    EXPECT_TRUE(walk->File(folder / "a.mp3").has_value());
    EXPECT_TRUE(walk->File(folder / "sub/b.mp3").has_value());
}

TEST_F(PosixFileSystemTest, NamesAreBytes) {
    const std::vector<std::string> names{"it's \"x\".mp3", "two\nlines.mp3", "bad\xFF\xFE.mp3", "\xE4.mp3",
                                         "-rf *;$(x).mp3", " blank .mp3",    "back\\slash.mp3"};
    for (const std::string& name : names) {
        Write(name);
    }
    const auto walk = fileSystem->GetFolder(folder.Path());

    EXPECT_THAT(NamesIn(*walk, folder.Path()), ::testing::UnorderedElementsAreArray(names));
    for (const std::string& name : names) {
        const auto facts = walk->File(folder / name);
        ASSERT_TRUE(facts.has_value()) << name;
        EXPECT_EQ(facts->name, name);
    }
}

TEST_F(PosixFileSystemTest, TenThousandEntriesOfOneFolderAreListed) {
    for (int i = 0; i < 10000; ++i) {
        const int file = ::open((folder / (std::to_string(i) + ".mp3")).c_str(), O_CREAT | O_WRONLY, 0644);
        ASSERT_GE(file, 0);
        ::close(file);
    }
    const auto walk = fileSystem->GetFolder(folder.Path());

    EXPECT_EQ(walk->List(folder.Path()).files.size(), 10000u);
}

// Makes a tree that no single call can name.
void MakeDeepTree(const std::string& start, const std::string& name, int levels) {
    int at = ::open(start.c_str(), O_RDONLY | O_DIRECTORY);
    for (int i = 0; i < levels; ++i) {
        ASSERT_EQ(::mkdirat(at, name.c_str(), 0755), 0);
        const int next = ::openat(at, name.c_str(), O_RDONLY | O_DIRECTORY);
        ::close(at);
        at = next;
    }
    const int file = ::openat(at, "deep.mp3", O_CREAT | O_WRONLY, 0644);
    ASSERT_GE(file, 0);
    ::close(file);
    ::close(at);
}

TEST_F(PosixFileSystemTest, AFileTwoHundredLevelsDeepWithLongNamesIsFound) {
    const std::string name(200, 'n'); // 40,000 bytes of path.
    MakeDeepTree(folder.Path(), name, 200);
    const auto walk = fileSystem->GetFolder(folder.Path());

    const std::vector<std::string> files = AllFiles(*walk);

    ASSERT_EQ(files.size(), 1u);
    const std::string path = folder / files[0];
    EXPECT_GT(path.size(), 40000u);
    const auto facts = walk->File(path);
    ASSERT_TRUE(facts.has_value());
    EXPECT_EQ(facts->name, "deep.mp3");
    EXPECT_EQ(fileSystem->GetFile(path).name, "deep.mp3");
    EXPECT_TRUE(fileSystem->FileExists(path));
    EXPECT_THAT(walk->TakeSkipped(), IsEmpty());
}

TEST_F(PosixFileSystemTest, ANameThatIsTooLongForTheSystemIsJustMissing) {
    EXPECT_FALSE(fileSystem->FileExists(folder / std::string(300, 'x')));
    EXPECT_FALSE(fileSystem->FileExists(std::string(5000, 'x')));
    EXPECT_FALSE(fileSystem->FileExists("/" + std::string(5000, 'x')));
    EXPECT_EQ(NumberOf([&] { fileSystem->GetFile(folder / std::string(9000, 'x')); }), 53);
}

TEST_F(PosixFileSystemTest, FoldersOfTheKernelAreNotWalkedInto) {
    fs::create_symlink("/proc", folder / "kernel");
    Write("a.mp3");
    const auto walk = fileSystem->GetFolder(folder.Path());

    EXPECT_THAT(AllFiles(*walk), ElementsAre("a.mp3"));
    EXPECT_EQ(ReasonFor(*walk, folder / "kernel"), std::strerror(EOPNOTSUPP));
}

TEST_F(PosixFileSystemTest, AFileOfTheKernelBehindALinkGivesNoFacts) {
    fs::create_symlink("/proc/self/mem", folder / "memory.mp3");
    Write("good.mp3");
    const auto walk = fileSystem->GetFolder(folder.Path());
    walk->List(folder.Path());
    EXPECT_FALSE(walk->File(folder / "memory.mp3").has_value());
    EXPECT_TRUE(walk->File(folder / "good.mp3").has_value());
    const std::vector<SkippedEntry> skipped = walk->TakeSkipped();
    ASSERT_EQ(skipped.size(), 1U);
    EXPECT_EQ(skipped[0].path, folder / "memory.mp3");
    EXPECT_EQ(skipped[0].kind, SkippedEntry::Kind::NoPlainFile);
}

TEST_F(PosixFileSystemTest, AFileOfTheKernelIsNoFileByItsPathEither) {
    for (const char* target : {"/proc/self/mem", "/proc/cpuinfo", "/proc/self/fd"}) {
        const std::string link = folder / "kernel.mp3";
        fs::remove(link);
        fs::create_symlink(target, link);
        for (const std::string& path : {std::string(target), link}) {
            EXPECT_FALSE(fileSystem->FileExists(path)) << path;
            EXPECT_EQ(NumberOf([&] { fileSystem->GetFile(path); }), 53) << path;
        }
    }
    for (const fs::directory_entry& entry : fs::directory_iterator("/sys/kernel")) {
        EXPECT_FALSE(fileSystem->FileExists(entry.path().native())) << entry.path();
    }
    EXPECT_EQ(NumberOf([&] { fileSystem->CopyFile("/proc/cpuinfo", folder / "copy"); }), 53);
}

TEST_F(PosixFileSystemTest, GetFileRaisesError53ForAnythingButAPlainFile) {
    Write("a.mp3");
    EXPECT_EQ(fileSystem->GetFile(folder / "a.mp3").size, 1u);
    EXPECT_EQ(fileSystem->GetFile(folder.Path() + "//./a.mp3").path, folder / "a.mp3");

    EXPECT_EQ(NumberOf([&] { fileSystem->GetFile(folder / "missing.mp3"); }), 53);
    EXPECT_EQ(NumberOf([&] { fileSystem->GetFile(folder.Path()); }), 53);
    EXPECT_EQ(NumberOf([&] { fileSystem->GetFile("/dev/null"); }), 53);
    EXPECT_EQ(NumberOf([&] { fileSystem->GetFile(""); }), 53);
}

TEST_F(PosixFileSystemTest, ExistenceKnowsFilesFromFolders) {
    Write("a.mp3");

    EXPECT_TRUE(fileSystem->FileExists(folder / "a.mp3"));
    EXPECT_FALSE(fileSystem->FileExists(folder.Path()));
    EXPECT_FALSE(fileSystem->FileExists("/dev/null"));
    EXPECT_TRUE(fileSystem->FolderExists(folder.Path()));
    EXPECT_FALSE(fileSystem->FolderExists(folder / "a.mp3"));
    EXPECT_FALSE(fileSystem->FolderExists(""));
}

TEST_F(PosixFileSystemTest, CreateFolderMakesMissingParentsAndAcceptsWhatIsThere) {
    fileSystem->CreateFolder(folder / "a/b/c");
    EXPECT_TRUE(fs::is_directory(folder / "a/b/c"));
    EXPECT_NO_THROW(fileSystem->CreateFolder(folder / "a/b/c/"));

    Write("file");
    EXPECT_EQ(NumberOf([&] { fileSystem->CreateFolder(folder / "file/x"); }), 58);
    EXPECT_EQ(NumberOf([&] { fileSystem->CreateFolder("/proc/quavernet"); }), 75);
}

TEST_F(PosixFileSystemTest, AFolderThatCannotBeMadeIsToldByThePartThatIsInTheWay) {
    const auto told = [&](const std::string& path) {
        try {
            fileSystem->CreateFolder(folder / path);
        } catch (const RuntimeError& error) {
            return std::to_string(error.Number()) + " " + error.Description();
        }
        return std::string("made");
    };
    const auto reason = [](int error) { return std::string(std::strerror(error)) + ": "; };
    Write("file");
    EXPECT_EQ(told("file/x/y"), "58 " + reason(ENOTDIR) + (folder / "file"));
    fs::create_symlink("/nowhere/music", folder / "link");
    EXPECT_EQ(told("link/x"), "58 " + reason(ENOENT) + (folder / "link -> /nowhere/music"));
    fs::create_symlink("file", folder / "to file");
    EXPECT_EQ(told("to file/x"), "58 " + reason(ENOTDIR) + (folder / "to file"));
    fs::create_symlink("circle", folder / "circle");
    EXPECT_EQ(told("circle/x/y"), "58 " + reason(ELOOP) + (folder / "circle -> circle"));
    fs::create_directory(folder / "closed");
    fs::permissions(folder / "closed", fs::perms(0555));
    const OrdinaryUser user;
    EXPECT_EQ(told("closed/x/y"), "70 " + reason(EACCES) + (folder / "closed/x"));
}

TEST_F(PosixFileSystemTest, TheDriveIsTheMountPointThatHoldsTheFile) {
    Write("a.mp3");
    const std::string drive = fileSystem->GetFile(folder / "a.mp3").drivePath;

    ASSERT_FALSE(drive.empty());
    EXPECT_EQ(drive.front(), '/');
    EXPECT_TRUE(drive == "/" || folder.Path().starts_with(drive + "/")) << drive;
    const auto walk = fileSystem->GetFolder("/proc/self"); // A walk that was sent there goes there.
    walk->List("/proc/self");
    EXPECT_EQ(walk->File("/proc/self/mountinfo")->drivePath, "/proc");
}

TEST_F(PosixFileSystemTest, LogicalDrivesBeginWithTheRootAndHoldNothingOfTheKernel) {
    const std::vector<std::string> drives = fileSystem->LogicalDrives();

    ASSERT_FALSE(drives.empty());
    EXPECT_EQ(drives.front(), "/");
    EXPECT_EQ(std::count(drives.begin(), drives.end(), "/proc"), 0);
    EXPECT_EQ(std::count(drives.begin(), drives.end(), "/sys"), 0);
    EXPECT_FALSE(fileSystem->NetworkRoot("/").has_value());
}

} // namespace
} // namespace quavernet::test
