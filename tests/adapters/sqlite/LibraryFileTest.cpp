#include "adapters/sqlite/LibraryFile.h"

#include "adapters/sqlite/SqliteError.h"
#include "platform/LibraryError.h"
#include "support/KilledWriter.h"
#include "support/TestLibrary.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <random>
#include <stdexcept>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace quavernet::test {
namespace {

std::string ReadAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void Write(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

// Opens in a child that may not do more than another user of the machine, and gives the reason of the
// failure.
std::string FailureOfAnotherUser(const std::string& path) {
    int ends[2];
    if (::pipe(ends) != 0) {
        return "no pipe";
    }
    const pid_t child = ::fork();
    if (child == 0) {
        constexpr int nobody = 65534;
        std::string reason = "opened";
        if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) {
            reason = "can't become another user";
        } else {
            try {
                OpenLibrary(path);
            } catch (const RuntimeError& error) {
                reason = error.Description();
            }
        }
        ::_exit(::write(ends[1], reason.data(), reason.size()) < 0);
    }
    ::close(ends[1]);
    std::string reason;
    char buffer[512];
    for (ssize_t got = 0; (got = ::read(ends[0], buffer, sizeof buffer)) > 0;) {
        reason.append(buffer, static_cast<std::size_t>(got));
    }
    ::close(ends[0]);
    ::waitpid(child, nullptr, 0);
    return reason;
}

class LibraryFileTest : public ::testing::Test {
protected:
    LibraryFileTest() { CopyTemplate(path); }

    void CopyFresh() {
        std::filesystem::remove(path);
        CopyTemplate(path);
    }
    // The file's bytes with a change made to them, written back.
    void Change(const std::function<void(std::string&)>& change) {
        std::string bytes = ReadAll(path);
        change(bytes);
        Write(path, bytes);
    }
    void SetNumber(std::size_t offset, char value) {
        Change([&](std::string& bytes) { bytes[offset] = value; });
    }
    // Every file of the folder by its name, but for the index of the log, which SQLite makes again each time.
    std::map<std::string, std::string> FolderBytes() const {
        std::map<std::string, std::string> files;
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
            if (entry.is_regular_file() && !entry.path().string().ends_with("-shm")) {
                files[entry.path().filename().string()] = ReadAll(entry.path().string());
            }
        }
        return files;
    }
    // Opens, expects a failure that leaves everything as it was, and gives its reason without the path.
    std::string Failure(LibraryFault fault) {
        const auto before = FolderBytes();
        std::string reason = "opened";
        try {
            OpenLibrary(path);
        } catch (const LibraryError& error) {
            EXPECT_EQ(error.Fault(), fault) << error.Description();
            EXPECT_EQ(error.Path(), path);
            EXPECT_EQ(error.Description().rfind(path + ": ", 0), 0u) << error.Description();
            reason = error.Description().substr(path.size() + 2);
        }
        EXPECT_TRUE(before == FolderBytes()) << "the failed open changed a file";
        return reason;
    }
    // A library with rows that a killed run left in its log.
    void LeaveByKill(const std::string& name = "in the log") {
        ASSERT_TRUE(WriteAndDie(path, "Insert into Titel (Name) values ('" + name + "')"));
    }

    TemporaryFolder folder;
    std::string path = folder / "Quavernet.db";
};

TEST_F(LibraryFileTest, TheTemplateOpensInTheModeOfTheProgram) {
    const auto connection = OpenLibrary(path);
    connection->Execute("Insert into Titel (Name) values ('x')");
    connection->Commit();
    EXPECT_TRUE(std::filesystem::exists(path + "-wal"));
    EXPECT_EQ(RowTextsOf(*connection, "Pragma synchronous"), std::vector<std::string>{"1"});
}

TEST_F(LibraryFileTest, AFileThatAKilledRunWasMovingItsLogIntoIsNotTakenForCut) {
    LeaveByKill(std::string(300000, 'x'));
    // The first page arrives before those at the end: it tells a size that the file does not have yet.
    SetNumber(30, 1);
    const auto connection = OpenLibrary(path);
    EXPECT_EQ(RowTextsOf(*connection, "Select Name from Titel"),
              std::vector<std::string>{std::string(300000, 'x')});
}

TEST_F(LibraryFileTest, AMissingFileIsNotCreated) {
    std::filesystem::remove(path);
    EXPECT_EQ(Failure(LibraryFault::Missing), "the file does not exist");
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_THROW(OpenLibrary(folder / "no/such/folder.db"), RuntimeError);
    EXPECT_THROW(CreateSqliteConnection({})->Open("Provider=Microsoft.Jet.OLEDB.4.0"), RuntimeError);
    EXPECT_THROW(OpenLibrary(""), RuntimeError);
    EXPECT_THROW(OpenLibrary(":memory:"), RuntimeError);
}

TEST_F(LibraryFileTest, AFolderOrAPipeIsNoLibrary) {
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_EQ(Failure(LibraryFault::Folder), "not a plain file");
    std::filesystem::remove(path);
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(Failure(LibraryFault::NoPlainFile), "not a plain file");
}

TEST_F(LibraryFileTest, NoiseAnEmptyFileAndShortFilesAreNoLibraries) {
    std::mt19937 random(3);
    for (const std::size_t size : {0U, 1U, 16U, 99U, 100U, 4096U, 50000U}) {
        std::string noise(size, '\0');
        for (char& c : noise) {
            c = static_cast<char>(random());
        }
        Write(path, noise);
        EXPECT_EQ(Failure(LibraryFault::NoLibrary), "the file is not a library") << size;
    }
    Write(path, std::string("SQLite format 3\0", 16));
    EXPECT_EQ(Failure(LibraryFault::NoLibrary), "the file is not a library");
}

TEST_F(LibraryFileTest, ADatabaseOfAnotherProgramIsNoLibrary) {
    SetNumber(71, 0);
    EXPECT_EQ(Failure(LibraryFault::NoLibrary), "the file is not a library");
}

TEST_F(LibraryFileTest, ALibraryWithoutItsVersionOrItsTablesIsNone) {
    SetNumber(63, 0);
    EXPECT_EQ(Failure(LibraryFault::NoLibrary), "the file is not a library");
    CopyFresh();
    OpenLibrary(path)->Execute("drop table Reminder");
    EXPECT_EQ(Failure(LibraryFault::NoLibrary), "the file is not a library");
}

TEST_F(LibraryFileTest, ALinkThatLeadsNowhereIsNotFollowedToANewFile) {
    std::filesystem::remove(path);
    std::filesystem::create_symlink(folder / "none.db", path);
    EXPECT_EQ(Failure(LibraryFault::Missing), "the file does not exist");
    EXPECT_FALSE(std::filesystem::exists(folder / "none.db"));
}

TEST_F(LibraryFileTest, ALogOfNoiseIsDamageAndStays) {
    LeaveByKill();
    std::string log = ReadAll(path + "-wal");
    std::mt19937 random(5);
    std::generate(log.begin(), log.end(), [&] { return static_cast<char>(random()); });
    Write(path + "-wal", log);
    EXPECT_EQ(Failure(LibraryFault::Damaged), "the library is damaged: its log is no log");
}

TEST_F(LibraryFileTest, ALogThatAPowerFailureCutOrLeftAsZerosIsEmpty) {
    LeaveByKill();
    const std::string log = ReadAll(path + "-wal");
    for (const std::string& rest : {log.substr(0, 31), std::string(log.size(), '\0'), log.substr(0, 32)}) {
        CopyFresh();
        std::filesystem::remove(path + "-shm");
        Write(path + "-wal", rest);
        EXPECT_EQ(RowTextsOf(*OpenLibrary(path), "Select Name from Titel"), std::vector<std::string>{});
    }
}

TEST_F(LibraryFileTest, ALogThatIsCutOrDamagedGivesWhatComesBeforeThat) {
    {
        const auto connection = OpenLibrary(path);
        connection->Execute("Insert into Titel (Name) values ('in the file')");
    }
    LeaveByKill();
    const std::string library = ReadAll(path);
    const std::string log = ReadAll(path + "-wal");
    for (std::size_t kept = 32; kept < log.size(); kept += 997) {
        for (const bool isCut : {true, false}) {
            std::filesystem::remove(path + "-shm");
            Write(path, library);
            Write(path + "-wal",
                  isCut ? log.substr(0, kept) : log.substr(0, kept) + "noise" + log.substr(kept + 5));
            EXPECT_EQ(RowTextsOf(*OpenLibrary(path), "Select Name from Titel"),
                      std::vector<std::string>{"in the file"})
                << kept;
        }
    }
}

// Holds the library for itself, as a program does that repairs or copies it.
class LockOfAnother {
public:
    explicit LockOfAnother(const std::string& path) {
        int ready[2];
        if (::pipe(ready) != 0 || ::pipe(m_release) != 0) {
            throw std::runtime_error("pipe");
        }
        m_child = ::fork();
        if (m_child == 0) {
            ::close(m_release[1]);
            try {
                const auto library = sqlite::OpenLibraryFile(path);
                sqlite::RunInternal(library.handle.get(),
                                    "pragma locking_mode = exclusive; begin exclusive; "
                                    "insert into Titel (Name) values ('other'); commit");
                char c = 0;
                [[maybe_unused]] ssize_t ignored = ::write(ready[1], &c, 1);
                ignored = ::read(m_release[0], &c, 1);
            } catch (...) {
                ::_exit(1);
            }
            ::_exit(0);
        }
        char c = 0;
        ::close(ready[1]);
        if (::read(ready[0], &c, 1) != 1) {
            throw std::runtime_error("no lock");
        }
        ::close(ready[0]);
        ::close(m_release[0]);
    }
    ~LockOfAnother() {
        Release();
        ::waitpid(m_child, nullptr, 0);
    }
    void Release() {
        if (m_release[1] >= 0) {
            ::close(m_release[1]);
            m_release[1] = -1;
        }
    }

private:
    int m_release[2] = {-1, -1};
    pid_t m_child = -1;
};

TEST_F(LibraryFileTest, ALibraryThatAnotherProgramKeepsLockedIsRefused) {
    const LockOfAnother lock(path);
    EXPECT_EQ(Failure(LibraryFault::Locked), "database is locked");
}

TEST_F(LibraryFileTest, ALockThatGoesIsWaitedFor) {
    LockOfAnother lock(path);
    std::thread later([&lock] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        lock.Release();
    });
    EXPECT_NO_THROW(OpenLibrary(path)->Execute("Insert into Titel (Name) values ('x')"));
    later.join();
    EXPECT_EQ(RowTextsOf(*OpenLibrary(path), "Select Count(Title_id) from Titel"),
              std::vector<std::string>{"2"});
}

TEST_F(LibraryFileTest, APageThatGoesBadWhileTheProgramWorksIsDamageOfTheLibrary) {
    {
        const auto connection = OpenLibrary(path);
        for (int i = 0; i < 500; ++i) {
            connection->Execute("Insert into Albums (Name) values ('" + std::string(300, 'x') + "')");
        }
    }
    const auto another = OpenLibrary(path);
    Change([](std::string& bytes) { std::fill(bytes.end() - 40960, bytes.end(), '\x7F'); });
    try {
        another->Query("Select * from Albums");
        FAIL() << "read noise";
    } catch (const LibraryError& error) {
        EXPECT_EQ(error.Fault(), LibraryFault::Damaged);
        EXPECT_EQ(error.Path(), path);
        EXPECT_EQ(error.Number(), 11);
    }
}

TEST_F(LibraryFileTest, ALibraryOfANewerVersionIsRefused) {
    SetNumber(63, 2);
    EXPECT_EQ(Failure(LibraryFault::Newer), "the library was made by a newer version of the program");
}

TEST_F(LibraryFileTest, ACutLibraryIsDamaged) {
    const std::size_t size = ReadAll(path).size();
    for (const std::size_t kept : {std::size_t{100}, std::size_t{4096}, size / 2, size - 4096, size - 1}) {
        CopyFresh();
        Change([&](std::string& bytes) { bytes.resize(kept); });
        EXPECT_EQ(Failure(LibraryFault::Damaged), "the library is damaged: its end is missing") << kept;
    }
}

TEST_F(LibraryFileTest, ADestroyedSchemaIsDamaged) {
    Change([](std::string& bytes) { std::fill(bytes.begin() + 100, bytes.begin() + 4096, '\x55'); });
    EXPECT_EQ(Failure(LibraryFault::Damaged), "database disk image is malformed");
}

TEST_F(LibraryFileTest, AReadOnlyFileOrFolderIsRefused) {
    ASSERT_EQ(::chmod(folder.Path().c_str(), 0777), 0);
    ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
    EXPECT_EQ(FailureOfAnotherUser(path), path + ": the file is read-only");
    ASSERT_EQ(::chmod(path.c_str(), 0666), 0);
    ASSERT_EQ(::chmod(folder.Path().c_str(), 0555), 0);
    EXPECT_EQ(FailureOfAnotherUser(path), path + ": the folder is read-only");
    ASSERT_EQ(::chmod(folder.Path().c_str(), 0777), 0);
    EXPECT_EQ(FailureOfAnotherUser(path), "opened");
}

TEST_F(LibraryFileTest, APathWithOddCharactersOpens) {
    const std::string odd = folder / "Bücher; 'x' %20?mode=ro#1 \xFF.db";
    std::filesystem::copy_file(path, odd);
    EXPECT_EQ(RowTextsOf(*OpenLibrary(odd), "Select Count(Genre_id) from Genres"),
              std::vector<std::string>{"149"});
}

TEST_F(LibraryFileTest, ACleanCloseLeavesNoLog) {
    OpenLibrary(path)->Execute("Insert into Titel (Name) values ('x')");
    EXPECT_FALSE(std::filesystem::exists(path + "-wal"));
    EXPECT_TRUE(sqlite::OpenLibraryFile(path).closedCleanly);
}

TEST_F(LibraryFileTest, AKilledRunIsSeenAndItsRowsAreKept) {
    LeaveByKill();
    EXPECT_FALSE(sqlite::OpenLibraryFile(path).closedCleanly);
    EXPECT_EQ(RowTextsOf(*OpenLibrary(path), "Select Name from Titel"),
              std::vector<std::string>{"in the log"});
    EXPECT_TRUE(sqlite::OpenLibraryFile(path).closedCleanly);
}

TEST_F(LibraryFileTest, DamageIsFoundAfterAKilledRunAndNothingIsTouched) {
    LeaveByKill();
    // A page of an index in the middle of the file, which no statement of the start reads.
    Change([](std::string& bytes) {
        const std::size_t middle = bytes.size() / 2 / 4096 * 4096;
        std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(middle),
                  bytes.begin() + static_cast<std::ptrdiff_t>(middle) + 4096, '\x7F');
    });
    EXPECT_EQ(Failure(LibraryFault::Damaged).rfind("the library is damaged: ", 0), 0u);
}

TEST_F(LibraryFileTest, AJournalThatWasLeftIsNoOrderlyEndEither) {
    Write(path + "-journal", "rest of a journal");
    EXPECT_FALSE(sqlite::OpenLibraryFile(path).closedCleanly);
    Write(path + "-journal", "");
    EXPECT_TRUE(sqlite::OpenLibraryFile(path).closedCleanly);
    Change([](std::string& bytes) { // An index that no statement of the start reads.
        const std::size_t middle = bytes.size() / 2 / 4096 * 4096;
        bytes.replace(middle, 4096, std::string(4096, '\x7F'));
    });
    EXPECT_NO_THROW(OpenLibrary(path));
    Write(path + "-journal", "rest of a journal");
    EXPECT_THROW(OpenLibrary(path), LibraryError);
}

TEST_F(LibraryFileTest, RandomDamageEndsInAFailureOrRowsAndNeverInACrash) {
    std::mt19937 random(23);
    const std::string sound = ReadAll(path);
    int failures = 0;
    for (int round = 0; round < 150; ++round) {
        std::string bytes = sound;
        for (int i = 0; i < 40; ++i) {
            bytes[100 + random() % (bytes.size() - 100)] = static_cast<char>(random());
        }
        std::filesystem::remove(path + "-wal");
        std::filesystem::remove(path + "-shm");
        Write(path, bytes);
        try {
            const auto connection = OpenLibrary(path);
            for (const char* query : {"Select * from Genres Order By Genre", "Select * from Extensions",
                                      "Select * from Files where Path = 'x'", "Select * from Categories"}) {
                connection->Query(query);
            }
            connection->Execute("Insert into Titel (Name) values ('x')");
        } catch (const RuntimeError&) {
            ++failures;
        }
    }
    EXPECT_GT(failures, 0);
}

} // namespace
} // namespace quavernet::test
