#include "adapters/posix/Descriptor.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quavernet::posix {

namespace {

constexpr unsigned WantedFacts =
    STATX_TYPE | STATX_MODE | STATX_UID | STATX_INO | STATX_SIZE | STATX_MTIME | STATX_BTIME | STATX_MNT_ID;

// Opens what lies before the last part that fits into one call, until the rest fits too. Closing a folder
// leaves errno as it is.
Descriptor OpenLongPath(std::string_view rest, int flags) {
    Descriptor folder;
    int at = AT_FDCWD;
    while (rest.size() >= PATH_MAX) {
        const auto cut = rest.rfind('/', PATH_MAX - 2);
        if (cut == std::string_view::npos || cut == 0) {
            errno = ENAMETOOLONG;
            return Descriptor();
        }
        const std::string piece(rest.substr(0, cut));
        folder = Descriptor(::openat(at, piece.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!folder.IsOpen()) {
            return Descriptor();
        }
        at = folder.Get();
        rest.remove_prefix(cut);
        while (!rest.empty() && rest.front() == '/') {
            rest.remove_prefix(1);
        }
    }
    return Descriptor(::openat(at, rest.empty() ? "." : std::string(rest).c_str(), flags | O_CLOEXEC));
}

} // namespace

int Descriptor::Close() {
    const int fd = Release();
    return fd >= 0 && ::close(fd) != 0 ? errno : 0;
}

Descriptor OpenPath(const std::string& path, int flags) {
    if (path.empty() || path.find('\0') != std::string::npos) {
        errno = ENOENT;
        return Descriptor();
    }
    return path.size() < PATH_MAX ? Descriptor(::open(path.c_str(), flags | O_CLOEXEC))
                                  : OpenLongPath(path, flags);
}

bool QueryPath(const std::string& path, struct statx& facts) {
    if (path.empty() || path.find('\0') != std::string::npos) {
        errno = ENOENT;
        return false;
    }
    if (path.size() < PATH_MAX) {
        return QueryEntry(AT_FDCWD, path.c_str(), facts);
    }
    const Descriptor file = OpenPath(path, O_PATH);
    return file.IsOpen() && ::statx(file.Get(), "", AT_EMPTY_PATH, WantedFacts, &facts) == 0;
}

bool QueryEntry(int folder, const char* name, struct statx& facts) {
    return ::statx(folder, name, AT_STATX_SYNC_AS_STAT, WantedFacts, &facts) == 0;
}

std::string ErrorText(int error) {
    return std::strerror(error);
}

std::string NormalPath(const std::string& path) {
    std::string full = path;
    if (!path.empty() && path.front() != '/') {
        std::error_code ignored;
        full = std::filesystem::current_path(ignored).native() + "/" + path;
    }
    std::string result;
    for (std::string_view rest = full; !rest.empty();) {
        const auto end = std::min(rest.find('/'), rest.size());
        const std::string_view part = rest.substr(0, end);
        if (!part.empty() && part != ".") {
            result.append("/").append(part);
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return result.empty() ? "/" : result;
}

} // namespace quavernet::posix
