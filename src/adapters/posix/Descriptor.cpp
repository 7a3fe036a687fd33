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

#include "platform/OpenPath.h"

namespace quavernet::posix {

namespace {

constexpr unsigned WantedFacts =
    STATX_TYPE | STATX_MODE | STATX_UID | STATX_INO | STATX_SIZE | STATX_MTIME | STATX_BTIME | STATX_MNT_ID;

} // namespace

int Descriptor::Close() {
    const int fd = Release();
    return fd >= 0 && ::close(fd) != 0 ? errno : 0;
}

Descriptor OpenPath(const std::string& path, int flags) {
    return Descriptor(quavernet::OpenPath(path, flags));
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
