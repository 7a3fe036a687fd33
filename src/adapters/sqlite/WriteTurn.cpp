#include "adapters/sqlite/WriteTurn.h"

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <sqlite3.h>

#include "adapters/sqlite/SqliteError.h"

namespace quavernet::sqlite {

namespace {

constexpr std::chrono::milliseconds step{1};
constexpr int longestWait = 5000; // Steps.
constexpr int longestTurn = 1000; // Steps. One that holds it for longer has been stopped, and is passed.

// A lock on the library's folder, which no other program takes: it needs no file of its own and ends with the
// process. Where the file system knows no such lock there are no turns.
class Turn {
public:
    explicit Turn(const char* library)
        : m_folder(::open(std::filesystem::path(library).parent_path().c_str(),
                          O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        int waited = 0;
        while (m_folder >= 0 && ::flock(m_folder, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK &&
               waited++ < longestTurn) {
            std::this_thread::sleep_for(step);
        }
    }
    ~Turn() {
        if (m_folder >= 0) {
            ::close(m_folder);
        }
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

private:
    int m_folder;
};

int WaitAStep(void*, int waited) {
    std::this_thread::sleep_for(step);
    return waited < longestWait;
}

} // namespace

void BeginWriting(sqlite3* database) {
    const char* const library = sqlite3_db_filename(database, "main");
    const Turn turn(library == nullptr ? "" : library);
    RunInternal(database, "begin immediate");
}

void WaitForOthers(sqlite3* database) {
    Check(database, sqlite3_busy_handler(database, WaitAStep, nullptr));
}

} // namespace quavernet::sqlite
