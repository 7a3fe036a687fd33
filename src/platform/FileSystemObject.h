// Folders, files and volumes as the scanner, the tree and the cleaning need them. The adapter lives in
// adapters/posix. Paths and names are bytes from end to end; "/" separates.
#pragma once

#include "platform/DateTime.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quavernet {

/// What the file system tells of one plain file.
struct FileFacts {
    std::string name;          ///< Last part of the path.
    std::string path;          ///< Full path.
    std::uint64_t size = 0;    ///< Bytes.
    DateTime dateCreated;      ///< Birth time, or the modification time where none is kept; local time.
    DateTime dateLastModified; ///< Local time.
    std::string drivePath;     ///< Root of the volume that holds the file: its mount point, "/" at least.
};

/// A plain file in a listing.
struct FolderFile {
    std::string name;    ///< Last part of the path.
    bool hidden = false; ///< The name begins with a dot.
};

/// What one folder holds.
struct FolderContents {
    std::vector<FolderFile> files;       ///< Plain files (or links to such) in the file system's order.
    std::vector<std::string> subFolders; ///< Full paths in the file system's order, links after the rest.
};

/// An entry that a walk passed over or a pass dropped, and why, for the scan log.
struct SkippedEntry {
    enum class Kind : std::uint8_t {
        Unreadable,  ///< Any failure that is none of the others.
        NoAccess,    ///< The user may not read it.
        Missing,     ///< It has vanished, or it is a link that leads nowhere.
        LinkCircle,  ///< A link that leads back to itself.
        NoPlainFile, ///< A device, pipe or socket, or something of the kernel.
        NoBitRate,   ///< An Ogg file that tells no nominal bit rate, without which it has no row.
    };

    std::string path;             ///< Full path.
    std::string reason;           ///< The system's own words.
    Kind kind = Kind::Unreadable; ///< By which the log names it.
};

/// One walk over a folder and what lies below it. A link to a folder in there is passed over without a note:
/// its files have paths of their own. Links to other folders are followed; every folder is remembered by
/// device and inode, so that circles end. Devices, pipes, sockets, dangling links and entries that may not be
/// read are passed over and noted.
class FolderWalk {
public:
    virtual ~FolderWalk() = default;

    /// Where the walk starts: absolute, with single separators and no final "/" (but for "/" itself).
    virtual const std::string& Path() const = 0;

    /// The folder's plain files and the subfolders that this walk has not entered yet. A folder that has
    /// vanished or may not be read gives empty contents and a note.
    virtual FolderContents List(const std::string& folder) = 0;

    /// Facts of a listed file, or nothing (with a note) if it has vanished since.
    virtual std::optional<FileFacts> File(const std::string& path) = 0;

    /// The notes gathered since the last call.
    virtual std::vector<SkippedEntry> TakeSkipped() = 0;
};

/// The file system. Relative paths count from the current folder.
class FileSystemObject {
public:
    virtual ~FileSystemObject() = default;

    /// Starts a walk at a folder. Throws RuntimeError 76 if the folder is missing or can't be opened.
    virtual std::unique_ptr<FolderWalk> GetFolder(const std::string& path) = 0;

    /// Throws RuntimeError 53 if there is no such plain file. A file of the kernel is none, here and below.
    virtual FileFacts GetFile(const std::string& path) = 0;

    /// Whether a plain file, or a folder, is there, links followed. False also where that can't be told.
    /// Never fails.
    virtual bool FileExists(const std::string& path) = 0;
    virtual bool FolderExists(const std::string& path) = 0;

    /// Creates one folder and its missing parents. Throws RuntimeError 61 if the disk is full, 70 without the
    /// right to, 58 if something else is there, 75 if it fails otherwise; the description names the part
    /// of the path that is in the way, and where it leads if it is a link.
    virtual void CreateFolder(const std::string& path) = 0;

    /// Copies a file to a place where nothing is yet, not even a link that leads nowhere: either the
    /// whole target is there afterwards or none. Throws RuntimeError 53 if the source is missing, otherwise
    /// as CreateFolder does.
    virtual void CopyFile(const std::string& source, const std::string& target) = 0;

    /// Gives a file or link another name in its folder; a link itself is renamed, not what it leads to. What
    /// has the new name already is never overwritten: the next free one of "name (2).ext", "name (3).ext" and
    /// so on is taken, with less of the name where it would be too long. The own name is no obstacle, in
    /// another case of letters neither. Throws RuntimeError 53 if the source is missing, 76 if a part of the
    /// path is no folder, 70 without the right to, 75 if it fails otherwise: `target` is in another folder
    /// (a "/" in the new name makes it so), or its name is empty, too long, "." or "..", or holds a NUL.
    virtual void RenameFile(const std::string& source, const std::string& target) = 0;

    /// Mount points that hold user data, each once: "/", then in the system's order. Never fails.
    virtual std::vector<std::string> LogicalDrives() = 0;

    /// The network root behind a volume, or nothing for a local one.
    virtual std::optional<std::string> NetworkRoot(const std::string& drive) = 0;
};

} // namespace quavernet
