#include "adapters/posix/TemporaryCopy.h"

#include "platform/Paths.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <random>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quavernet::posix {

namespace {

constexpr std::string_view Prefix = ".quavernet-";
constexpr std::string_view NameLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
constexpr std::size_t RandomLetters = 6;
constexpr int Attempts = 100;

std::string RandomName() {
    std::random_device source;
    std::uniform_int_distribution<std::size_t> letter(0, NameLetters.size() - 1);
    std::string name(Prefix);
    for (std::size_t i = 0; i < RandomLetters; ++i) {
        name += NameLetters[letter(source)];
    }
    return name;
}

bool Lock(int descriptor) {
    return ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
}

// A copy that nobody holds a lock on was left by a process that ended in the middle of it.
void RemoveIfLeft(int folder, const char* name) {
    const Descriptor left(::openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!left.IsOpen()) {
        return;
    }
    struct stat facts {};
    const bool mine =
        ::fstat(left.Get(), &facts) == 0 && S_ISREG(facts.st_mode) && facts.st_uid == ::geteuid();
    if (mine && Lock(left.Get())) {
        ::unlinkat(folder, name, 0);
    }
}

void RemoveLeftCopies(int folder) {
    Descriptor listed(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    DIR* const entries = listed.IsOpen() ? ::fdopendir(listed.Get()) : nullptr;
    if (entries == nullptr) {
        return;
    }
    listed.Release(); // The listing closes it.
    while (const dirent* entry = ::readdir(entries)) {
        if (entry->d_name[0] == '.' && IsCopyName(entry->d_name)) {
            RemoveIfLeft(folder, entry->d_name);
        }
    }
    ::closedir(entries);
}

std::string PathOf(int descriptor) {
    return "/proc/self/fd/" + std::to_string(descriptor);
}

} // namespace

bool IsCopyName(const std::string& name) {
    return name.size() == Prefix.size() + RandomLetters && name.starts_with(Prefix) &&
           name.find_first_not_of(NameLetters, Prefix.size()) == std::string::npos;
}

TemporaryCopy::~TemporaryCopy() {
    if (!m_name.empty()) {
        ::unlinkat(m_folder.Get(), m_name.c_str(), 0);
    }
}

int TemporaryCopy::Begin(const std::string& target) {
    m_targetName = FileNameFromPath(target);
    const std::string parent = FolderFromPath(target);
    const std::string folder = parent.empty() ? "." : parent;
    m_folder = OpenPath(folder, O_RDONLY | O_DIRECTORY);
    if (!m_folder.IsOpen()) {
        m_folder = OpenPath(folder, O_PATH | O_DIRECTORY); // One that may be written but not listed.
    }
    if (!m_folder.IsOpen()) {
        return errno;
    }
    RemoveLeftCopies(m_folder.Get());
    return Open();
}

int TemporaryCopy::Open() {
    m_copy = Descriptor(::openat(m_folder.Get(), ".", O_TMPFILE | O_RDWR | O_CLOEXEC, 0600));
    // It gets its name by way of /proc: where that is missing, a copy with a name is the only kind.
    const bool canBeNamed =
        m_copy.IsOpen() && Lock(m_copy.Get()) && ::access(PathOf(m_copy.Get()).c_str(), F_OK) == 0;
    return canBeNamed ? 0 : OpenNamed();
}

int TemporaryCopy::OpenNamed() {
    for (int attempt = 0; attempt < Attempts; ++attempt) {
        const std::string name = RandomName();
        m_copy =
            Descriptor(::openat(m_folder.Get(), name.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0600));
        if (!m_copy.IsOpen()) {
            if (errno == EEXIST) {
                continue;
            }
            return errno;
        }
        // Between the two calls another process may have taken it for one that was left.
        struct stat facts {};
        Lock(m_copy.Get()); // A file system without locks has no other way than to hope.
        if (::fstat(m_copy.Get(), &facts) == 0 && facts.st_nlink > 0) {
            m_name = name;
            return 0;
        }
        m_copy.Close();
    }
    return EEXIST;
}

int TemporaryCopy::Append(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(m_copy.Get(), bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return errno;
        }
        bytes = bytes.subspan(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return 0;
}

int TemporaryCopy::Name() {
    for (int attempt = 0; attempt < Attempts; ++attempt) {
        const std::string name = RandomName();
        if (::linkat(AT_FDCWD, PathOf(m_copy.Get()).c_str(), m_folder.Get(), name.c_str(),
                     AT_SYMLINK_FOLLOW) == 0) {
            m_name = name;
            return 0;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    return errno;
}

int TemporaryCopy::MoveToTarget() {
    if (::fsync(m_copy.Get()) != 0) {
        return errno;
    }
    if (m_name.empty()) {
        if (const int error = Name(); error != 0) {
            return error;
        }
    }
    if (::renameat(m_folder.Get(), m_name.c_str(), m_folder.Get(), m_targetName.c_str()) != 0) {
        return errno;
    }
    m_name.clear();
    ::fsync(m_folder.Get()); // A file system that can't do that has the new name anyway.
    return 0;
}

// Not every file system can move to a free place in one step; some can't even by a second name.
int TemporaryCopy::MoveNamedToFreePlace() {
    const char* const from = m_name.c_str();
    const char* const to = m_targetName.c_str();
    if (::renameat2(m_folder.Get(), from, m_folder.Get(), to, RENAME_NOREPLACE) == 0) {
        m_name.clear();
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    if (::linkat(m_folder.Get(), from, m_folder.Get(), to, 0) == 0) {
        return 0; // The first name goes with this object.
    }
    struct stat there {};
    if (errno == EEXIST || ::fstatat(m_folder.Get(), to, &there, AT_SYMLINK_NOFOLLOW) == 0) {
        return EEXIST;
    }
    if (::renameat(m_folder.Get(), from, m_folder.Get(), to) != 0) {
        return errno;
    }
    m_name.clear();
    return 0;
}

int TemporaryCopy::MoveToFreePlace() {
    if (::fsync(m_copy.Get()) != 0) {
        return errno;
    }
    if (m_name.empty()) {
        if (::linkat(AT_FDCWD, PathOf(m_copy.Get()).c_str(), m_folder.Get(), m_targetName.c_str(),
                     AT_SYMLINK_FOLLOW) != 0) {
            return errno;
        }
    } else if (const int error = MoveNamedToFreePlace(); error != 0) {
        return error;
    }
    ::fsync(m_folder.Get());
    return 0;
}

} // namespace quavernet::posix
