#include "platform/posix/WholeFileCopy.h"

#include "platform/posix/Descriptor.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quavernet::posix {

namespace {

int WriteAll(int fd, const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t written = ::write(fd, data, size);
        if (written < 0 && errno != EINTR) {
            return errno;
        }
        if (written > 0) {
            data += written;
            size -= static_cast<std::size_t>(written);
        }
    }
    return 0;
}

int CopyBytes(int from, int to) {
    std::array<char, 65536> buffer{};
    for (;;) {
        const ssize_t got = ::read(from, buffer.data(), buffer.size());
        if (got == 0) {
            return 0;
        }
        if (got < 0) {
            if (errno == EINTR) {
                continue;
            }
            return errno;
        }
        if (const int error = WriteAll(to, buffer.data(), static_cast<std::size_t>(got)); error != 0) {
            return error;
        }
    }
}

// The source's rights, but the owner may always write: the copy of a template lives on.
int Finish(int from, Descriptor& copy) {
    struct stat facts {};
    if (::fstat(from, &facts) != 0 || ::fchmod(copy.Get(), (facts.st_mode & 0777) | S_IRUSR | S_IWUSR) != 0 ||
        ::fsync(copy.Get()) != 0) {
        return errno;
    }
    return copy.Close();
}

std::string FolderOf(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

// Moves a file to a place where nothing stands. Not every file system can do that in one step; some can't
// even by a second name.
int MoveToFreePlace(const char* from, const char* to) {
    if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    if (::link(from, to) == 0) {
        return ::unlink(from) == 0 ? 0 : errno;
    }
    struct stat there {};
    if (errno == EEXIST || ::lstat(to, &there) == 0) {
        return EEXIST;
    }
    return ::rename(from, to) == 0 ? 0 : errno;
}

} // namespace

int CopyWholeFile(const std::string& source, const std::string& target) {
    const Descriptor from = OpenPath(source, O_RDONLY | O_NONBLOCK);
    if (!from.IsOpen()) {
        return errno;
    }
    const std::string folder = FolderOf(target);
    std::string name = folder + "/.quavernet-XXXXXX";
    Descriptor copy(::mkostemp(name.data(), O_CLOEXEC));
    if (!copy.IsOpen()) {
        return errno;
    }
    int error = CopyBytes(from.Get(), copy.Get());
    if (error == 0) {
        error = Finish(from.Get(), copy);
    }
    if (error == 0) {
        error = MoveToFreePlace(name.c_str(), target.c_str());
    }
    if (error != 0) {
        ::unlink(name.c_str());
        return error;
    }
    // The new name counts once its folder is on the disk; a file system that can't do that has it anyway.
    if (const Descriptor opened = OpenPath(folder, O_RDONLY | O_DIRECTORY); opened.IsOpen()) {
        ::fsync(opened.Get());
    }
    return 0;
}

} // namespace quavernet::posix
