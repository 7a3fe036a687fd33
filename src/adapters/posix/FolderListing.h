// What a folder holds, as the system lists it. Read by the walk over folders, or for it by the readers of
// ReaderPool.
#pragma once

#include "adapters/posix/Descriptor.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include <dirent.h>
#include <sys/stat.h>

namespace quavernet::posix {

struct FolderListing {
    Descriptor folder;
    struct statx facts {};          ///< Device and inode of the folder.
    std::vector<std::byte> entries; ///< As the kernel writes them.
    int error = 0;                  ///< Why the folder could not be opened, or its listing broke off.
    bool isComplete = false;        ///< Nothing follows the entries.
};

/// Opens a folder, with no entries yet. Never throws.
FolderListing OpenListing(const std::string& path);

/// Reads the next piece of the folder's entries in place of those that are there. False at the end, or if the
/// listing breaks off.
bool ReadPiece(const Descriptor& folder, FolderListing& listing);

/// The same, after those that are there.
bool AppendPiece(FolderListing& listing);

/// Calls `take` with each entry but "." and "..".
template <typename Take> void ForEachEntry(std::span<const std::byte> entries, const Take& take) {
    for (std::size_t at = 0; at < entries.size();) {
        const auto* entry = reinterpret_cast<const dirent64*>(entries.data() + at);
        at += entry->d_reclen;
        const char* name = entry->d_name;
        const bool isDot = name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
        if (!isDot) {
            take(*entry);
        }
    }
}

} // namespace quavernet::posix
