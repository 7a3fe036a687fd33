#include "platform/BinaryFile.h"

#include "platform/OpenPath.h"
#include "platform/RuntimeError.h"
#include "platform/WriteError.h"

#include <cerrno>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quavernet {

namespace {

[[noreturn]] void Fail(int number, int code, const std::string& path) {
    throw RuntimeError(number, std::generic_category().message(code) + ": " + path);
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

[[noreturn]] void FailToWrite(int code, const std::string& path) {
    Fail(IsDiskFull(code) ? ErrorNumber::DiskFull : ErrorNumber::DeviceInputOutput, code, path);
}

bool IsSame(const std::timespec& one, const std::timespec& other) {
    return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
}

} // namespace

BinaryFile::BinaryFile(const std::string& path, Access access) : m_path(path) {
    if (path.find('\0') != std::string::npos) {
        Fail(ErrorNumber::FileNotFound, ENOENT, path.substr(0, path.find('\0')));
    }
    // O_NONBLOCK: opening a pipe that nobody writes to would wait for ever. Plain files ignore it.
    const int flags = (access == Access::Read ? O_RDONLY : O_RDWR) | O_NONBLOCK | O_NOCTTY;
    m_descriptor = OpenPath(path, flags);
    if (m_descriptor < 0) {
        Fail(OpenErrorNumber(errno), errno, path);
    }
    struct stat facts {};
    const bool known = ::fstat(m_descriptor, &facts) == 0;
    if (!known || !S_ISREG(facts.st_mode)) {
        const int code = known ? (S_ISDIR(facts.st_mode) ? EISDIR : EINVAL) : errno;
        Close();
        Fail(ErrorNumber::PathFileAccess, code, path);
    }
    m_size = static_cast<std::uint64_t>(facts.st_size);
    m_modified = facts.st_mtim;
    m_changed = facts.st_ctim;
}

BinaryFile::~BinaryFile() {
    Close();
}

BinaryFile::BinaryFile(BinaryFile&& other) noexcept
    : m_path(std::move(other.m_path)), m_descriptor(std::exchange(other.m_descriptor, -1)),
      m_size(other.m_size), m_modified(other.m_modified), m_changed(other.m_changed) {}

BinaryFile& BinaryFile::operator=(BinaryFile&& other) noexcept {
    if (this != &other) {
        Close();
        m_path = std::move(other.m_path);
        m_descriptor = std::exchange(other.m_descriptor, -1);
        m_size = other.m_size;
        m_modified = other.m_modified;
        m_changed = other.m_changed;
    }
    return *this;
}

bool BinaryFile::IsAsOpened() const {
    struct stat facts {};
    if (::fstat(m_descriptor, &facts) != 0) {
        Fail(ErrorNumber::DeviceInputOutput, errno, m_path);
    }
    return static_cast<std::uint64_t>(facts.st_size) == m_size && IsSame(facts.st_mtim, m_modified) &&
           IsSame(facts.st_ctim, m_changed);
}

std::size_t BinaryFile::ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::pread(m_descriptor, bytes.data() + done, bytes.size() - done,
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

void BinaryFile::WriteAt(std::uint64_t offset, std::span<const std::byte> bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::pwrite(m_descriptor, bytes.data() + done, bytes.size() - done,
                                       static_cast<off_t>(offset + done));
        if (count < 0 && errno != EINTR) {
            FailToWrite(errno, m_path);
        }
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
}

void BinaryFile::BringToDisk() {
    if (::fsync(m_descriptor) != 0) {
        FailToWrite(errno, m_path);
    }
}

void BinaryFile::Close() noexcept {
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
        m_descriptor = -1;
    }
}

} // namespace quavernet
