#include "adapters/posix/OpenedFile.h"

#include "platform/RuntimeError.h"
#include "platform/WriteError.h"

#include <cerrno>
#include <climits>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quavernet::posix {

namespace {

[[noreturn]] void Fail(int number, int code, const std::string& path) {
    throw RuntimeError(number, ErrorText(code) + ": " + path);
}

int OpenErrorNumber(int code) {
    switch (code) {
    case ENOENT:
        return ErrorNumber::FileNotFound;
    case ENOTDIR:
        return ErrorNumber::PathNotFound;
    default:
        return ErrorNumber::PathFileAccess;
    }
}

[[noreturn]] void FailToOpen(int code, const std::string& path) {
    throw OpenError(OpenErrorNumber(code), ErrorText(code), path, true);
}

[[noreturn]] void FailToWrite(int code, const std::string& path) {
    Fail(IsDiskFull(code) ? ErrorNumber::DiskFull : ErrorNumber::DeviceInputOutput, code, path);
}

bool IsSame(const std::timespec& one, const std::timespec& other) {
    return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
}

} // namespace

OpenedFile::OpenedFile(const std::string& path, BinaryFile::Access access) : m_path(path) {
    if (path.find('\0') != std::string::npos) {
        FailToOpen(ENOENT, path.substr(0, path.find('\0')));
    }
    // O_NONBLOCK: opening a pipe that nobody writes to would wait for ever. Plain files ignore it.
    const int flags = (access == BinaryFile::Access::Read ? O_RDONLY : O_RDWR) | O_NONBLOCK | O_NOCTTY;
    m_file = OpenPath(path, flags);
    struct stat facts {};
    if (!m_file.IsOpen() || ::fstat(m_file.Get(), &facts) != 0) {
        FailToOpen(errno, path);
    }
    if (!S_ISREG(facts.st_mode)) {
        const int code = S_ISDIR(facts.st_mode) ? EISDIR : EINVAL;
        throw OpenError(ErrorNumber::PathFileAccess, ErrorText(code), path, false);
    }
    m_size = static_cast<std::uint64_t>(facts.st_size);
    m_device = facts.st_dev;
    m_inode = facts.st_ino;
    m_modified = facts.st_mtim;
    m_changed = facts.st_ctim;
}

bool OpenedFile::IsAsOpened() const {
    struct stat facts {};
    if (::fstat(m_file.Get(), &facts) != 0) {
        Fail(ErrorNumber::DeviceInputOutput, errno, m_path);
    }
    return static_cast<std::uint64_t>(facts.st_size) == m_size && IsSame(facts.st_mtim, m_modified) &&
           IsSame(facts.st_ctim, m_changed);
}

bool OpenedFile::IsStillAt(const std::string& path) const {
    struct stat facts {};
    if (path.size() >= PATH_MAX || ::stat(path.c_str(), &facts) != 0) {
        return false;
    }
    return facts.st_dev == m_device && facts.st_ino == m_inode &&
           static_cast<std::uint64_t>(facts.st_size) == m_size && IsSame(facts.st_mtim, m_modified) &&
           IsSame(facts.st_ctim, m_changed);
}

std::size_t OpenedFile::ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::pread(m_file.Get(), bytes.data() + done, bytes.size() - done,
                                      static_cast<off_t>(offset + done));
        if (count == 0) {
            break;
        }
        if (count < 0 && errno != EINTR) {
            Fail(ErrorNumber::DeviceInputOutput, errno, m_path);
        }
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return done;
}

std::uint64_t OpenedFile::NextData(std::uint64_t offset) const {
    const off_t found = ::lseek(m_file.Get(), static_cast<off_t>(offset), SEEK_DATA);
    if (found < 0) {
        return errno == ENXIO ? m_size : offset; // Nothing but a hole follows, or it can't be told.
    }
    return static_cast<std::uint64_t>(found);
}

void OpenedFile::WriteAt(std::uint64_t offset, std::span<const std::byte> bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::pwrite(m_file.Get(), bytes.data() + done, bytes.size() - done,
                                       static_cast<off_t>(offset + done));
        if (count < 0 && errno != EINTR) {
            FailToWrite(errno, m_path);
        }
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
}

void OpenedFile::BringToDisk() {
    if (::fsync(m_file.Get()) != 0) {
        FailToWrite(errno, m_path);
    }
}

} // namespace quavernet::posix
