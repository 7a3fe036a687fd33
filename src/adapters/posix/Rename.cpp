#include "adapters/posix/Rename.h"

#include "adapters/posix/Descriptor.h"
#include "platform/Paths.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quavernet::posix {

namespace {

struct Place {
    Descriptor folder;
    std::string name;
};

// By folder and name, so that the length of the path does not matter.
std::optional<Place> PlaceOf(const std::string& path) {
    if (path.find('\0') != std::string::npos) {
        errno = EINVAL;
        return std::nullopt;
    }
    const std::string full = NormalPath(path);
    Place place{OpenPath(FolderFromPath(full), O_PATH | O_DIRECTORY), FileNameFromPath(full)};
    if (!place.folder.IsOpen()) {
        return std::nullopt;
    }
    return place;
}

// Some file systems know no rename that refuses. There a second name is made, which refuses, and the first
// one is taken away.
int RenameByLink(const Place& from, const Place& to) {
    if (::linkat(from.folder.Get(), from.name.c_str(), to.folder.Get(), to.name.c_str(), 0) != 0) {
        return errno;
    }
    return ::unlinkat(from.folder.Get(), from.name.c_str(), 0) == 0 ? 0 : errno;
}

// Neither second names: the last resort can't tell what another program makes in between.
int RenameWhereNothingIs(const Place& from, const Place& to) {
    struct stat facts {};
    if (::fstatat(to.folder.Get(), to.name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) == 0) {
        return EEXIST;
    }
    return ::renameat(from.folder.Get(), from.name.c_str(), to.folder.Get(), to.name.c_str()) == 0 ? 0
                                                                                                   : errno;
}

int RenameIfFree(const Place& from, const Place& to) {
    if (::renameat2(from.folder.Get(), from.name.c_str(), to.folder.Get(), to.name.c_str(),
                    RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    const int error = RenameByLink(from, to);
    return error == EPERM || error == EOPNOTSUPP ? RenameWhereNothingIs(from, to) : error;
}

// "name (2).ext": the number is put before the last dot, unless the name begins with it.
std::string NumberedName(const std::string& name, std::uint32_t number) {
    const auto dot = name.rfind('.');
    const auto end = dot == std::string::npos || dot == 0 ? name.size() : dot;
    return name.substr(0, end) + " (" + std::to_string(number) + ")" + name.substr(end);
}

} // namespace

int RenameToFreeName(const std::string& source, const std::string& target) {
    const std::optional<Place> from = PlaceOf(source);
    if (!from) {
        return errno;
    }
    std::optional<Place> to = PlaceOf(target);
    if (!to) {
        return errno;
    }
    const std::string wanted = to->name;
    int error = RenameIfFree(*from, *to);
    for (std::uint32_t number = 2; error == EEXIST; ++number) {
        to->name = NumberedName(wanted, number);
        error = RenameIfFree(*from, *to);
    }
    return error;
}

} // namespace quavernet::posix
