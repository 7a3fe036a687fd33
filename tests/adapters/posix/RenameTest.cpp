// Other names for files: nothing is ever overwritten or lost, on whatever file system.
#include "adapters/posix/PosixFileSystem.h"

#include "adapters/posix/Rename.h"
#include "platform/Ascii.h"
#include "support/FailureNumber.h"
#include "support/OrdinaryUser.h"
#include "support/RefusedCalls.h"
#include "support/TemporaryFolder.h"
#include "support/TestFiles.h"
#include "support/Texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <utility>

#include <linux/fs.h>
#include <sys/syscall.h>

namespace quavernet::test {
namespace {

namespace fs = std::filesystem;

class RenameTest : public ::testing::Test {
protected:
    RenameTest() { fs::permissions(folder.Path(), fs::perms(0777)); }

    /// The content of a file is its first name.
    void Write(const std::string& name) { WriteFile(folder / name, name); }
    void Rename(const std::string& from, const std::string& to) {
        fileSystem->RenameFile(folder / from, folder / to);
    }
    int NumberOfRename(const std::string& from, const std::string& to) {
        return NumberOf([&] { Rename(from, to); });
    }
    /// Each plain file as its name and its content.
    Texts Files() {
        Texts files;
        for (const auto& entry : fs::directory_iterator(folder.Path())) {
            if (entry.is_regular_file()) {
                files.push_back(entry.path().filename().string() + "=" + ReadFile(entry.path().string()));
            }
        }
        std::sort(files.begin(), files.end());
        return files;
    }

    TemporaryFolder folder;
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
};

TEST_F(RenameTest, AFileGetsAFreeName) {
    Write("a.mp3");
    Rename("a.mp3", "b.mp3");
    EXPECT_EQ(Files(), (Texts{"b.mp3=a.mp3"}));
}

TEST_F(RenameTest, ATakenNameIsNumberedFromTwoOn) {
    for (const char* name : {"a.mp3", "b.mp3", "b (2).mp3", "b (4).mp3", "c.mp3"}) {
        Write(name);
    }
    Rename("a.mp3", "b.mp3");
    Rename("c.mp3", "b.mp3");
    EXPECT_EQ(Files(), (Texts{"b (2).mp3=b (2).mp3", "b (3).mp3=a.mp3", "b (4).mp3=b (4).mp3",
                              "b (5).mp3=c.mp3", "b.mp3=b.mp3"}));
}

TEST_F(RenameTest, TheNumberComesBeforeTheLastDotUnlessTheNameBeginsWithIt) {
    for (const auto& [taken, numbered] : {std::pair{"plain", "plain (2)"},
                                          {".hidden", ".hidden (2)"},
                                          {"a.b.mp3", "a.b (2).mp3"},
                                          {"dot.", "dot (2)."},
                                          {" ", "  (2)"}}) {
        Write("from");
        Write(taken);
        Rename("from", taken);
        EXPECT_EQ(Files(), (Texts{std::string(numbered) + "=from", std::string(taken) + "=" + taken}));
        fs::remove(folder / taken);
        fs::remove(folder / numbered);
    }
}

TEST_F(RenameTest, TheOwnNameIsNoObstacleAndAMissingFileHasNone) {
    Write("a.mp3");
    Rename("a.mp3", "a.mp3");
    fileSystem->RenameFile(folder.Path() + "/./a.mp3", folder.Path() + "//a.mp3");
    EXPECT_EQ(Files(), (Texts{"a.mp3=a.mp3"}));
    EXPECT_EQ(NumberOfRename("missing.mp3", "missing.mp3"), 53);
}

TEST_F(RenameTest, OnlyTheCaseOfLettersChanges) {
    Write("song.mp3");
    Rename("song.mp3", "Song.MP3");
    EXPECT_EQ(Files(), (Texts{"Song.MP3=song.mp3"}));
}

TEST_F(RenameTest, ASecondNameOfTheFileIsANameThatIsTaken) {
    Write("a.mp3");
    fs::create_hard_link(folder / "a.mp3", folder / "b.mp3");
    Rename("a.mp3", "b.mp3");
    EXPECT_EQ(Files(), (Texts{"b (2).mp3=a.mp3", "b.mp3=a.mp3"}));
}

TEST_F(RenameTest, ALinkIsRenamedItselfAlsoOneThatLeadsNowhere) {
    Write("file.mp3");
    fs::create_symlink("file.mp3", folder / "link.mp3");
    fs::create_symlink("nowhere", folder / "dangling.mp3");
    Rename("link.mp3", "new.mp3");
    Rename("dangling.mp3", "new.mp3");
    EXPECT_EQ(Files(), (Texts{"file.mp3=file.mp3", "new.mp3=file.mp3"}));
    EXPECT_EQ(fs::read_symlink(folder / "new.mp3"), "file.mp3");
    EXPECT_EQ(fs::read_symlink(folder / "new (2).mp3"), "nowhere");
}

TEST_F(RenameTest, AFolderOrALinkThatLeadsNowhereTakesItsName) {
    Write("a.mp3");
    Write("b.mp3");
    fs::create_directory(folder / "album.mp3");
    fs::create_symlink("nowhere", folder / "link.mp3");
    Rename("a.mp3", "album.mp3");
    Rename("b.mp3", "link.mp3");
    EXPECT_EQ(Files(), (Texts{"album (2).mp3=a.mp3", "link (2).mp3=b.mp3"}));
    EXPECT_TRUE(fs::is_empty(folder / "album.mp3"));
    EXPECT_FALSE(fs::exists(folder / "nowhere"));
}

TEST_F(RenameTest, ANameThatIsNoneOrInAnotherFolderIsRefusedAndNothingMoves) {
    Write("a.mp3");
    fs::create_directory(folder / "sub");
    for (const std::string& name :
         {std::string(""), std::string("."), std::string(".."), std::string("sub/b.mp3"),
          std::string("../b.mp3"), std::string("./b/"), std::string("b\0.mp3", 6), std::string(256, 'x')}) {
        EXPECT_EQ(NumberOfRename("a.mp3", name), 75) << name;
    }
    EXPECT_EQ(NumberOfRename(std::string("a\0.mp3", 6), "b.mp3"), 75);
    EXPECT_EQ(Files(), (Texts{"a.mp3=a.mp3"}));
    EXPECT_TRUE(fs::is_empty(folder / "sub"));
    EXPECT_FALSE(fs::exists(fs::path(folder.Path()).parent_path() / "b.mp3"));
}

TEST_F(RenameTest, WhatIsMissingIsTold) {
    EXPECT_EQ(NumberOfRename("missing.mp3", "b.mp3"), 53);
    EXPECT_EQ(NumberOfRename("no folder/a.mp3", "no folder/b.mp3"), 53);
    Write("file");
    EXPECT_EQ(NumberOfRename("file/a.mp3", "file/b.mp3"), 76);
    Write("taken.mp3");
    EXPECT_EQ(NumberOfRename("missing.mp3", "taken.mp3"), 53);
    EXPECT_EQ(Files(), (Texts{"file=file", "taken.mp3=taken.mp3"}));
}

TEST_F(RenameTest, AReadOnlyFolderIsToldAndKeepsItsFile) {
    Write("a.mp3");
    fs::permissions(folder.Path(), fs::perms(0555));
    {
        const OrdinaryUser user;
        EXPECT_EQ(NumberOfRename("a.mp3", "b.mp3"), 70);
    }
    fs::permissions(folder.Path(), fs::perms(0777));
    EXPECT_EQ(Files(), (Texts{"a.mp3=a.mp3"}));
}

TEST_F(RenameTest, AReadOnlyFileGetsAnotherName) {
    Write("a.mp3");
    fs::permissions(folder / "a.mp3", fs::perms(0444));
    Rename("a.mp3", "b.mp3");
    EXPECT_EQ(Files(), (Texts{"b.mp3=a.mp3"}));
}

TEST_F(RenameTest, ANumberedNameThatWouldBeTooLongLosesTheEndOfItsStem) {
    const std::string longest = std::string(251, 'x') + ".mp3";
    const std::string umlauts = [] {
        std::string text = "xx";
        for (int i = 0; i < 124; ++i) {
            text += "\u00fc";
        }
        return text + "x.mp3"; // 255 bytes; a cut at 247 would split a letter.
    }();
    const std::string extension = "." + std::string(3, 'a') + "." + std::string(250, 'e');
    for (const auto& [taken, numbered] : {std::pair{longest, std::string(247, 'x') + " (2).mp3"},
                                          std::pair{umlauts, umlauts.substr(0, 2 + 2 * 122) + " (2).mp3"},
                                          std::pair{extension, extension.substr(0, 251) + " (2)"}}) {
        ASSERT_EQ(taken.size(), 255U);
        Write("from");
        WriteFile(folder / taken, "taken");
        Rename("from", taken);
        EXPECT_EQ(ReadFile(folder / numbered), "from") << numbered;
        EXPECT_EQ(ReadFile(folder / taken), "taken");
        fs::remove(folder / numbered);
        fs::remove(folder / taken);
    }
}

TEST_F(RenameTest, NamesThatAreNotUtf8KeepTheirBytes) {
    Write("\xe4.mp3");
    Write("b\xff.mp3");
    Rename("\xe4.mp3", "b\xff.mp3");
    EXPECT_EQ(Files(), (Texts{"b\xff (2).mp3=\xe4.mp3", "b\xff.mp3=b\xff.mp3"}));
}

TEST_F(RenameTest, TheLengthOfThePathDoesNotMatter) {
    const fs::path before = fs::current_path();
    fs::current_path(folder.Path());
    std::string deep = folder.Path();
    for (int i = 0; i < 40; ++i) {
        const std::string part(200, 'd');
        fs::create_directory(part);
        fs::current_path(part);
        deep += "/" + part;
    }
    WriteFile("a.mp3", "a");
    WriteFile("b.mp3", "b");
    fileSystem->RenameFile(deep + "/a.mp3", deep + "/b.mp3");
    EXPECT_EQ(ReadFile("b (2).mp3"), "a");
    fileSystem->RenameFile("b.mp3", "c.mp3"); // In the current folder.
    EXPECT_EQ(ReadFile("c.mp3"), "b");
    fs::current_path(before);
}

// File systems that know no rename that refuses, and such as know no second names either.
class RenameElsewhereTest : public RenameTest {
protected:
    static inline const RefusedCall NoReplace{SYS_renameat2, 4, RENAME_NOREPLACE, EINVAL};
    static inline const RefusedCall OldKernel{SYS_renameat2, 4, RENAME_NOREPLACE, ENOSYS};
    static RefusedCall NoLinks(int error) { return {SYS_linkat, 0, 0, error}; }

    bool RenamesWithout(const std::vector<RefusedCall>& calls, const std::string& from, const std::string& to,
                        int error = 0) {
        return SucceedsWithout(calls,
                               [&] { return posix::RenameToFreeName(folder / from, folder / to) == error; });
    }
};

TEST_F(RenameElsewhereTest, AFreeNameIsTakenAndATakenOneIsNumbered) {
    const std::vector<std::vector<RefusedCall>> places = {{NoReplace},
                                                          {OldKernel},
                                                          {NoReplace, NoLinks(EPERM)},
                                                          {NoReplace, NoLinks(EOPNOTSUPP)},
                                                          {NoReplace, NoLinks(ENOSYS)},
                                                          {NoReplace, NoLinks(EMLINK)}};
    for (const std::vector<RefusedCall>& calls : places) {
        Write("a.mp3");
        Write("b.mp3");
        EXPECT_TRUE(RenamesWithout(calls, "a.mp3", "c.mp3"));
        EXPECT_TRUE(RenamesWithout(calls, "b.mp3", "c.mp3"));
        EXPECT_TRUE(RenamesWithout(calls, "c.mp3", "c.mp3"));
        EXPECT_TRUE(RenamesWithout(calls, "a.mp3", "d.mp3", ENOENT));
        EXPECT_EQ(Files(), (Texts{"c (2).mp3=b.mp3", "c.mp3=a.mp3"}));
        fs::remove(folder / "c.mp3");
        fs::remove(folder / "c (2).mp3");
    }
}

TEST_F(RenameElsewhereTest, ALinkOrAFolderInTheWayStays) {
    for (const std::vector<RefusedCall>& calls : {std::vector{NoReplace}, {NoReplace, NoLinks(EPERM)}}) {
        Write("a.mp3");
        fs::create_directory(folder / "b.mp3");
        fs::create_symlink("nowhere", folder / "b (2).mp3");
        EXPECT_TRUE(RenamesWithout(calls, "a.mp3", "b.mp3"));
        EXPECT_TRUE(fs::is_symlink(folder / "b (2).mp3"));
        EXPECT_EQ(Files(), (Texts{"b (3).mp3=a.mp3"}));
        fs::remove_all(folder / "b.mp3");
        fs::remove(folder / "b (2).mp3");
        fs::remove(folder / "b (3).mp3");
    }
}

TEST_F(RenameElsewhereTest, AFirstNameThatStaysIsToldAndTheFileIsThere) {
    Write("a.mp3");
    const RefusedCall noRemoval{SYS_unlinkat, 0, 0, EIO};
    EXPECT_TRUE(RenamesWithout({NoReplace, noRemoval}, "a.mp3", "b.mp3", EIO));
    EXPECT_EQ(ReadFile(folder / "a.mp3"), "a.mp3");
}

// A folder in which case makes no other name: a lookup finds a name in any case, and what is listed keeps the
// case in which it was given.
class CaseBlindFolder : public posix::FolderNames {
public:
    explicit CaseBlindFolder(Texts names) : m_names(std::move(names)) {}

    int RenameIfFree(const std::string& from, const std::string& to) override {
        if (Find(from) == m_names.end()) {
            return ENOENT;
        }
        if (Find(to) != m_names.end()) {
            return EEXIST;
        }
        if (!refused.empty() && to == refused) {
            return EACCES;
        }
        *Find(from) = to;
        return 0;
    }
    bool FindTheSame(const std::string& a, const std::string& b) override { return Find(a) == Find(b); }
    bool Lists(const std::string& name) override {
        return std::find(m_names.begin(), m_names.end(), name) != m_names.end();
    }
    const Texts& Names() const { return m_names; }

    std::string refused; ///< A name that may not be given.

private:
    Texts::iterator Find(const std::string& name) {
        return std::find_if(m_names.begin(), m_names.end(),
                            [&](const std::string& other) { return EqualsIgnoringCase(other, name); });
    }

    Texts m_names;
};

TEST(CaseBlindFolderTest, TheCaseOfANameChangesOverAFreeName) {
    CaseBlindFolder folder({"song.mp3", "Song (2).MP3"});
    EXPECT_EQ(posix::RenameToFreeName(folder, "song.mp3", "Song.MP3"), 0);
    EXPECT_EQ(folder.Names(), (Texts{"Song.MP3", "Song (2).MP3"}));
    EXPECT_EQ(posix::RenameToFreeName(folder, "Song.MP3", "Song.MP3"), 0);
    EXPECT_EQ(folder.Names(), (Texts{"Song.MP3", "Song (2).MP3"}));
}

TEST(CaseBlindFolderTest, AnotherFileInAnotherCaseIsNotOverwritten) {
    CaseBlindFolder folder({"a.mp3", "song.mp3"});
    EXPECT_EQ(posix::RenameToFreeName(folder, "a.mp3", "SONG.mp3"), 0);
    EXPECT_EQ(folder.Names(), (Texts{"SONG (2).mp3", "song.mp3"}));
}

TEST(CaseBlindFolderTest, ANameThatIsRefusedOnTheWayLeavesTheOldOne) {
    CaseBlindFolder folder({"song.mp3"});
    folder.refused = "SONG.mp3";
    EXPECT_EQ(posix::RenameToFreeName(folder, "song.mp3", "SONG.mp3"), EACCES);
    EXPECT_EQ(folder.Names(), (Texts{"song.mp3"}));
}

} // namespace
} // namespace quavernet::test
