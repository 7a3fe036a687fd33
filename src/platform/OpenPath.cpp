#include "platform/OpenPath.h"

#include <cerrno>
#include <climits>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace quavernet {

namespace {

void CloseKeepingError(int folder) {
    const int error = errno;
    if (folder >= 0) {
        ::close(folder);
    }
    errno = error;
}

// Opens what lies before the last part that fits into one call, until the rest fits too.
int OpenLongPath(std::string_view rest, int flags) {
    int folder = -1;
    int at = AT_FDCWD;
    while (rest.size() >= PATH_MAX) {
        const auto cut = rest.rfind('/', PATH_MAX - 2);
        if (cut == std::string_view::npos || cut == 0) {
            CloseKeepingError(folder);
            errno = ENAMETOOLONG;
            return -1;
        }
        const std::string piece(rest.substr(0, cut));
        const int next = ::openat(at, piece.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        CloseKeepingError(folder);
        if (next < 0) {
            return -1;
        }
        folder = at = next;
        rest.remove_prefix(cut);
        while (!rest.empty() && rest.front() == '/') {
            rest.remove_prefix(1);
        }
    }
    const int opened = ::openat(at, rest.empty() ? "." : std::string(rest).c_str(), flags | O_CLOEXEC);
    CloseKeepingError(folder);
    return opened;
}

} // namespace

int OpenPath(const std::string& path, int flags) {
    if (path.empty() || path.find('\0') != std::string::npos) {
        errno = ENOENT;
        return -1;
    }
    return path.size() < PATH_MAX ? ::open(path.c_str(), flags | O_CLOEXEC) : OpenLongPath(path, flags);
}

} // namespace quavernet
