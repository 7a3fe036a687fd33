#include "adapters/posix/PosixFolderWalk.h"

#include "adapters/posix/ReaderPool.h"
#include "adapters/posix/SystemClock.h"
#include "platform/Paths.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quavernet::posix {

namespace {

// The reason given for devices, pipes, sockets and folders of the kernel.
constexpr int NotForScanning = EOPNOTSUPP;

DateTime DateOf(const struct statx_timestamp& time) {
    const DateTime date = LocalTime(time.tv_sec);
    return IsValidDate(date) ? date : DateTime();
}

SkippedEntry::Kind KindOf(int error) {
    switch (error) {
    case EACCES:
    case EPERM:
        return SkippedEntry::Kind::NoAccess;
    case ENOENT:
    case ENOTDIR:
        return SkippedEntry::Kind::Missing;
    case ELOOP:
        return SkippedEntry::Kind::LinkCircle;
    case NotForScanning:
        return SkippedEntry::Kind::NoPlainFile;
    default:
        return SkippedEntry::Kind::Unreadable;
    }
}

} // namespace

FileFacts FactsOf(const std::string& path, const struct statx& facts, MountTable& mounts) {
    FileFacts result;
    result.path = path;
    result.name = FileNameFromPath(path);
    result.size = facts.stx_size;
    result.dateLastModified = DateOf(facts.stx_mtime);
    const bool hasBirth = (facts.stx_mask & STATX_BTIME) != 0 && facts.stx_btime.tv_sec != 0;
    result.dateCreated = hasBirth ? DateOf(facts.stx_btime) : result.dateLastModified;
    const std::uint64_t mount = (facts.stx_mask & STATX_MNT_ID) != 0 ? facts.stx_mnt_id : 0;
    result.drivePath = mounts.PointOf(mount, facts.stx_dev_major, facts.stx_dev_minor, path);
    return result;
}

PosixFolderWalk::PosixFolderWalk(const std::string& folder, std::shared_ptr<MountTable> mounts,
                                 std::shared_ptr<ReaderPool> ahead)
    : m_path(NormalPath(folder)), m_mounts(std::move(mounts)), m_ahead(std::move(ahead)) {}

FolderContents PosixFolderWalk::List(const std::string& folder) {
    FolderContents contents;
    m_open.Close();
    m_folder.clear();
    FolderListing listing = Listing(folder);
    if (!MayEnter(folder, listing)) {
        return contents;
    }
    m_open = std::move(listing.folder);
    m_folder = folder;
    // Links to folders come after the folders themselves: what a link leads to may be mounted here as well.
    std::vector<std::string> links;
    do {
        ForEachEntry(listing.entries, [&](const dirent64& entry) { AddEntry(entry, contents, links); });
    } while (ReadPiece(m_open, listing));
    if (listing.error != 0) {
        Note(folder, listing.error);
    }
    contents.subFolders.insert(contents.subFolders.end(), std::make_move_iterator(links.begin()),
                               std::make_move_iterator(links.end()));
    return contents;
}

FolderListing PosixFolderWalk::Listing(const std::string& folder) {
    if (m_ahead) {
        if (const auto listing = m_ahead->TakeListing(folder)) {
            return std::move(*listing);
        }
    }
    return OpenListing(folder);
}

bool PosixFolderWalk::MayEnter(const std::string& folder, const FolderListing& listing) {
    if (!listing.folder.IsOpen()) {
        Note(folder, listing.error);
        return false;
    }
    const Device device{listing.facts.stx_dev_major, listing.facts.stx_dev_minor};
    if (m_entered.empty()) {
        m_chosen = {device, listing.facts.stx_ino};
    }
    if (!m_entered.insert({device, listing.facts.stx_ino}).second) {
        return false;
    }
    if (!MayEnterDevice(device)) {
        Note(folder, NotForScanning);
        return false;
    }
    return true;
}

// The chosen folder's own device is always walked. Of the others, those that show the kernel's state are not:
// they hold no music, and many of their files change or block when they are read.
bool PosixFolderWalk::MayEnterDevice(const Device& device) {
    for (const auto& [known, walked] : m_devices) {
        if (known == device) {
            return walked;
        }
    }
    if (!m_devices.empty()) {
        m_mounts->Refresh();
    }
    const bool walked = m_devices.empty() || !m_mounts->IsKernelDevice(device.first, device.second);
    m_devices.emplace_back(device, walked);
    return walked;
}

void PosixFolderWalk::AddEntry(const dirent64& entry, FolderContents& contents,
                               std::vector<std::string>& links) {
    const std::string_view name = entry.d_name;
    switch (entry.d_type) {
    case DT_REG:
        contents.files.push_back({std::string(name), name.front() == '.'});
        break;
    case DT_DIR:
        contents.subFolders.push_back(FullPath(name));
        break;
    case DT_LNK:
    case DT_UNKNOWN:
        AddUnclear(entry, contents, links);
        break;
    default:
        Note(FullPath(name), NotForScanning);
    }
}

// A link, or an entry of a file system whose listings tell no kinds.
void PosixFolderWalk::AddUnclear(const dirent64& entry, FolderContents& contents,
                                 std::vector<std::string>& links) {
    struct statx facts {};
    if (!QueryEntry(m_open.Get(), entry.d_name, facts)) {
        Note(FullPath(entry.d_name), errno);
    } else if (S_ISREG(facts.stx_mode)) {
        contents.files.push_back({entry.d_name, entry.d_name[0] == '.'});
    } else if (!S_ISDIR(facts.stx_mode)) {
        Note(FullPath(entry.d_name), NotForScanning);
    } else if (entry.d_type != DT_LNK) {
        contents.subFolders.push_back(FullPath(entry.d_name));
    } else if (!m_entered.contains({{facts.stx_dev_major, facts.stx_dev_minor}, facts.stx_ino}) &&
               !LeadsInside(entry.d_name)) {
        links.push_back(FullPath(entry.d_name));
    }
}

// Whether a link leads to a folder within the chosen one. Such a folder is walked under its own path alone,
// whichever of the two is listed first, so that its files keep their paths from scan to scan. Asked upwards
// from the target, by device and inode: a path has many forms, and can be longer than one call takes.
bool PosixFolderWalk::LeadsInside(const char* link) const {
    constexpr int Flags = O_PATH | O_DIRECTORY | O_CLOEXEC;
    Descriptor folder(::openat(m_open.Get(), link, Flags));
    std::optional<Identity> below;
    struct statx facts {};
    while (folder.IsOpen() && ::statx(folder.Get(), "", AT_EMPTY_PATH, STATX_INO, &facts) == 0) {
        const Identity identity{{facts.stx_dev_major, facts.stx_dev_minor}, facts.stx_ino};
        if (identity == m_chosen) {
            return true;
        }
        if (identity == below) {
            return false; // The system's root is its own parent.
        }
        below = identity;
        folder = Descriptor(::openat(folder.Get(), "..", Flags));
    }
    return false;
}

std::optional<FileFacts> PosixFolderWalk::File(const std::string& path) {
    const std::string folderPath = FolderFromPath(path);
    const std::string name = FileNameFromPath(path);
    Descriptor other;
    int folder = -1;
    if (m_open.IsOpen() && (folderPath == m_folder || folderPath + "/" == m_folder)) {
        folder = m_open.Get();
    } else {
        other = OpenPath(folderPath, O_PATH | O_DIRECTORY);
        folder = other.Get();
    }
    struct statx facts {};
    if (folder < 0 || !QueryEntry(folder, name.c_str(), facts)) {
        Note(path, errno);
    } else if (!S_ISREG(facts.stx_mode) || !MayEnterDevice({facts.stx_dev_major, facts.stx_dev_minor})) {
        Note(path, NotForScanning); // A link may lead to a file of the kernel.
    } else if (!MayRead(folder, name, facts)) {
        Note(path, EACCES);
    } else {
        return FactsOf(path, facts, *m_mounts);
    }
    return std::nullopt;
}

// The owner's own bit decides for the owner, also beside an access list; everyone else asks the system.
bool PosixFolderWalk::MayRead(int folder, const std::string& name, const struct statx& facts) const {
    if (facts.stx_uid == m_user && (facts.stx_mode & S_IRUSR) != 0) {
        return true;
    }
    return ::faccessat(folder, name.c_str(), R_OK, AT_EACCESS) == 0;
}

std::string PosixFolderWalk::FullPath(std::string_view name) const {
    return WithFinalSlash(m_folder).append(name);
}

void PosixFolderWalk::Note(const std::string& path, int error) {
    m_skipped.push_back({path, ErrorText(error), KindOf(error)});
}

std::vector<SkippedEntry> PosixFolderWalk::TakeSkipped() {
    return std::exchange(m_skipped, {});
}

} // namespace quavernet::posix
