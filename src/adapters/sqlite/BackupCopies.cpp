#include "adapters/sqlite/BackupCopies.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <sqlite3.h>

#include "adapters/sqlite/LibraryFile.h"
#include "adapters/sqlite/SqliteError.h"
#include "platform/LibraryError.h"

namespace quavernet::sqlite {

namespace {

namespace fs = std::filesystem;

constexpr int freshNumber = 0;
constexpr mode_t onlyMine = 0600; // Nobody reads a copy who may not read the library.

/// The file that the copy is made in. It is held by a lock while it is made: what is found there without one
/// is the rest of a run that was killed.
class FreshCopy {
public:
    explicit FreshCopy(std::string path) : m_path(std::move(path)) {
        m_file = ::open(m_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, onlyMine);
        if (m_file < 0) {
            throw RuntimeError(ErrorNumber::PathFileAccess,
                               m_path + ": " + std::generic_category().message(errno));
        }
        m_isMine = ::flock(m_file, LOCK_EX | LOCK_NB) == 0 ? IsAt(m_path) : errno != EWOULDBLOCK;
        if (m_isMine) {
            RemoveRests();
            ::fchmod(m_file, onlyMine);
            [[maybe_unused]] const int ignored = ::ftruncate(m_file, 0); // The engine writes it again anyway.
        }
    }
    ~FreshCopy() {
        if (m_isMine && !m_isDone) {
            ::unlink(m_path.c_str());
            RemoveRests();
        }
        ::close(m_file);
    }
    FreshCopy(const FreshCopy&) = delete;
    FreshCopy& operator=(const FreshCopy&) = delete;

    /// Not while another program has it.
    bool IsMine() const { return m_isMine; }
    const std::string& Path() const { return m_path; }
    /// Where a file system knows no rights, all files have the same ones.
    void TakeRights(const std::string& library) {
        struct stat facts {};
        if (::stat(library.c_str(), &facts) == 0) {
            ::fchmod(m_file, facts.st_mode & 0777);
        }
    }
    void MoveTo(const std::string& path) {
        fs::rename(m_path, path);
        m_isDone = true;
    }

private:
    // Its maker may have moved the file to its place since it was opened.
    bool IsAt(const std::string& path) const {
        struct stat opened {};
        struct stat named {};
        return ::fstat(m_file, &opened) == 0 && ::stat(path.c_str(), &named) == 0 &&
               opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
    }
    void RemoveRests() const {
        for (const char* ending : {"-journal", "-wal", "-shm"}) {
            ::unlink((m_path + ending).c_str());
        }
    }

    std::string m_path;
    int m_file = -1;
    bool m_isMine = false;
    bool m_isDone = false;
};

// Copies what one moment shows, whatever other programs write meanwhile.
void CopyContent(sqlite3* source, const std::string& target) {
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(target.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    const DatabaseHandle handle(opened);
    Check(opened, code);
    sqlite3_backup* const backup = sqlite3_backup_init(opened, "main", source, "main");
    if (backup == nullptr) {
        ThrowError(opened, sqlite3_errcode(opened));
    }
    const int copied = sqlite3_backup_step(backup, -1);
    const int finished = sqlite3_backup_finish(backup);
    if (copied != SQLITE_DONE || finished != SQLITE_OK) {
        const int failure = copied != SQLITE_DONE ? copied : finished;
        throw RuntimeError(failure, target + ": " + sqlite3_errstr(failure));
    }
}

void CheckContent(sqlite3* database, const std::string& library) {
    const std::string finding = FirstFinding(database);
    if (!finding.empty()) {
        throw LibraryError(LibraryFault::Damaged, library, SQLITE_CORRUPT,
                           library + ": the library is damaged: " + finding);
    }
}

// Makes place at number 1. Only the copies in front of the first free place move: where a run was killed
// between two of these steps, the next one goes on from there and pushes no other copy out.
void MoveOlderCopies(const std::string& library) {
    int place = 1;
    while (place < BackupCount && fs::exists(BackupPath(library, place))) {
        ++place;
    }
    for (; place > 1; --place) {
        fs::rename(BackupPath(library, place - 1), BackupPath(library, place));
    }
}

// The names are to reach the disk before the scan changes the library. Some file systems have no such call.
void SyncFolder(const std::string& library) {
    const std::string folder = fs::path(library).parent_path().string();
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const int error = descriptor >= 0 && ::fsync(descriptor) != 0 ? errno : 0;
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    if (error != 0 && error != EINVAL && error != EROFS && error != ENOTSUP) {
        throw RuntimeError(ErrorNumber::PathFileAccess,
                           folder + ": " + std::generic_category().message(error));
    }
}

} // namespace

void MakeBackup(sqlite3* database, const std::string& library) {
    try {
        CheckContent(database, library);
        FreshCopy fresh(BackupPath(library, freshNumber));
        if (!fresh.IsMine()) {
            return;
        }
        CopyContent(database, fresh.Path());
        fresh.TakeRights(library);
        MoveOlderCopies(library);
        fresh.MoveTo(BackupPath(library, 1));
        SyncFolder(library);
    } catch (const fs::filesystem_error& error) {
        throw RuntimeError(ErrorNumber::PathFileAccess,
                           error.path1().string() + ": " + error.code().message());
    }
}

} // namespace quavernet::sqlite
