#include "adapters/posix/Rename.h"

#include "adapters/posix/Descriptor.h"
#include "platform/Paths.h"
#include "platform/Utf8.h"

#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quavernet::posix {

namespace {

// A second name is made, which refuses where something is, and the first one is taken away.
int RenameByLink(int folder, const char* from, const char* to) {
    if (::linkat(folder, from, folder, to, 0) != 0) {
        return errno;
    }
    if (::unlinkat(folder, from, 0) == 0) {
        return 0;
    }
    const int error = errno;
    (void)::unlinkat(folder, to, 0);
    return error;
}

// The last resort can't tell what another program makes in between.
int RenameWhereNothingIs(int folder, const char* from, const char* to) {
    struct stat facts {};
    if (::fstatat(folder, to, &facts, AT_SYMLINK_NOFOLLOW) == 0) {
        return EEXIST;
    }
    return ::renameat(folder, from, folder, to) == 0 ? 0 : errno;
}

class OpenFolder : public FolderNames {
public:
    explicit OpenFolder(const std::string& path) : m_folder(OpenPath(path, O_PATH | O_DIRECTORY)) {}
    bool IsOpen() const { return m_folder.IsOpen(); }

    // Some file systems know no rename that refuses, and some of them no second names either.
    int RenameIfFree(const std::string& from, const std::string& to) override {
        const int folder = m_folder.Get();
        if (::renameat2(folder, from.c_str(), folder, to.c_str(), RENAME_NOREPLACE) == 0) {
            return 0;
        }
        if (errno != EINVAL && errno != ENOSYS) {
            return errno;
        }
        const int error = RenameByLink(folder, from.c_str(), to.c_str());
        const bool isUnknown = error == EPERM || error == EOPNOTSUPP || error == ENOSYS || error == EMLINK;
        return isUnknown ? RenameWhereNothingIs(folder, from.c_str(), to.c_str()) : error;
    }

    bool FindTheSame(const std::string& a, const std::string& b) override {
        struct stat first {};
        struct stat second {};
        return ::fstatat(m_folder.Get(), a.c_str(), &first, AT_SYMLINK_NOFOLLOW) == 0 &&
               ::fstatat(m_folder.Get(), b.c_str(), &second, AT_SYMLINK_NOFOLLOW) == 0 &&
               first.st_dev == second.st_dev && first.st_ino == second.st_ino;
    }

    bool Lists(const std::string& name) override {
        Descriptor readable(::openat(m_folder.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        DIR* entries = readable.IsOpen() ? ::fdopendir(readable.Get()) : nullptr;
        if (entries == nullptr) {
            return true;
        }
        (void)readable.Release(); // Closed with the entries.
        bool found = false;
        for (const dirent* entry = ::readdir(entries); entry != nullptr && !found;
             entry = ::readdir(entries)) {
            found = name == static_cast<const char*>(entry->d_name);
        }
        (void)::closedir(entries);
        return found;
    }

private:
    Descriptor m_folder;
};

// The longest beginning of a name that has so many bytes at most and ends between two characters.
std::string Beginning(const std::string& name, std::size_t most) {
    std::size_t length = 0;
    while (length < name.size()) {
        const std::size_t next = length + CharacterLength(std::string_view(name).substr(length));
        if (next > most) {
            break;
        }
        length = next;
    }
    return name.substr(0, length);
}

// "name (2).ext": the number is put before the last dot, unless the name begins with it. What comes before it
// is cut where the whole would be too long; an extension that leaves no room for it counts as part of the
// name.
std::string NumberedName(const std::string& name, std::uint32_t number) {
    const std::string mark = " (" + std::to_string(number) + ")";
    const auto dot = name.rfind('.');
    auto end = dot == std::string::npos || dot == 0 ? name.size() : dot;
    if (name.size() - end + mark.size() >= NAME_MAX) {
        end = name.size();
    }
    const std::size_t room = NAME_MAX - mark.size() - (name.size() - end);
    return Beginning(name.substr(0, end), room) + mark + name.substr(end);
}

// Gives the name that was taken, in `to`.
int RenameToNumberedName(FolderNames& folder, const std::string& from, std::string& to) {
    const std::string wanted = to;
    int error = EEXIST;
    for (std::uint32_t number = 2; error == EEXIST; ++number) {
        to = NumberedName(wanted, number);
        error = folder.RenameIfFree(from, to);
    }
    return error;
}

// Where case makes no other name, the file itself is what the wanted name finds, and the system does nothing
// when a file is to get a name that it has. So it goes over a free name.
int RenameOverFreeName(FolderNames& folder, const std::string& from, const std::string& to) {
    std::string between = to;
    if (const int error = RenameToNumberedName(folder, from, between); error != 0) {
        return error;
    }
    const int error = folder.RenameIfFree(between, to);
    if (error != 0) {
        (void)folder.RenameIfFree(between, from);
    }
    return error;
}

// The folder of a file, in one form for all spellings of its path.
std::string FolderOf(const std::string& path) {
    const std::string folder = FolderFromPath(path);
    return NormalPath(folder.empty() ? "." : folder);
}

bool IsName(const std::string& name) {
    return !name.empty() && name != "." && name != ".." && name.find('\0') == std::string::npos;
}

} // namespace

int RenameToFreeName(FolderNames& folder, const std::string& from, const std::string& to) {
    const int error = folder.RenameIfFree(from, to);
    if (error != EEXIST) {
        return error;
    }
    if (from == to) {
        return 0;
    }
    // A second name of the file (a hard link) is listed; the same name in another case is not.
    if (folder.FindTheSame(from, to) && !folder.Lists(to)) {
        return RenameOverFreeName(folder, from, to);
    }
    std::string numbered = to;
    return RenameToNumberedName(folder, from, numbered);
}

int RenameToFreeName(const std::string& source, const std::string& target) {
    const std::string from = FileNameFromPath(source);
    const std::string to = FileNameFromPath(target);
    const std::string path = FolderOf(source);
    if (!IsName(from) || !IsName(to) || FolderOf(target) != path) {
        return EINVAL;
    }
    if (path.find('\0') != std::string::npos) {
        return ENOENT;
    }
    OpenFolder folder(path);
    return folder.IsOpen() ? RenameToFreeName(folder, from, to) : errno;
}

} // namespace quavernet::posix
