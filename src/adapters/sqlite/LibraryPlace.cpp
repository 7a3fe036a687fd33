#include "adapters/sqlite/LibraryPlace.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <sqlite3.h>

namespace quavernet::sqlite {

namespace {

// The byte of the log's index on which every program that has it open holds a lock: the one after the eight
// locks of sqlite.org/walformat.html, section 2.3.
constexpr off_t UsersLock = 128;

} // namespace

LibraryPlace::~LibraryPlace() {
    if (m_index >= 0) {
        ::close(m_index);
    }
}

std::optional<LibraryPlace::Identity> LibraryPlace::IdentityOf(const std::string& path) {
    struct stat facts {};
    if (::stat(path.c_str(), &facts) != 0) {
        return std::nullopt;
    }
    return Identity{facts.st_dev, facts.st_ino};
}

void LibraryPlace::Attach(const std::string& path) {
    m_path = path;
    m_file = IdentityOf(path);
}

bool LibraryPlace::IsLost() const {
    if (!m_file) {
        return false;
    }
    if (const auto now = IdentityOf(m_path)) {
        return *now != *m_file;
    }
    return errno == ENOENT || errno == ENOTDIR || errno == ELOOP;
}

bool LibraryPlace::IsLogShared(sqlite3* database) {
    const std::string index = std::string(sqlite3_db_filename(database, "main")) + "-shm";
    if (m_index < 0) {
        m_index = ::open(index.c_str(), O_RDWR | O_CLOEXEC);
    }
    struct flock users {};
    users.l_type = F_WRLCK;
    users.l_whence = SEEK_SET;
    users.l_start = UsersLock;
    users.l_len = 1;
    return m_index >= 0 && ::fcntl(m_index, F_GETLK, &users) == 0 && users.l_type != F_UNLCK;
}

void LibraryPlace::EmptyLog(sqlite3* database) {
    if (!IsLogShared(database)) {
        sqlite3_wal_checkpoint_v2(database, "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    }
}

} // namespace quavernet::sqlite
