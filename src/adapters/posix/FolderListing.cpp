#include "adapters/posix/FolderListing.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace quavernet::posix {

namespace {

constexpr std::size_t PieceSize = 32768; // Bytes of a listing that are asked for at once.

bool ReadAfter(const Descriptor& folder, FolderListing& listing, std::size_t kept) {
    if (listing.isComplete) {
        listing.entries.resize(kept);
        return false;
    }
    listing.entries.resize(kept + PieceSize);
    const ssize_t size = ::getdents64(folder.Get(), listing.entries.data() + kept, PieceSize);
    if (size < 0 && errno != ENOENT) { // A folder that is deleted meanwhile has come to its end.
        listing.error = errno;
    }
    listing.entries.resize(kept + static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    listing.isComplete = size <= 0;
    return !listing.isComplete;
}

} // namespace

FolderListing OpenListing(const std::string& path) {
    FolderListing listing;
    listing.folder = OpenPath(path, O_RDONLY | O_DIRECTORY | O_NONBLOCK);
    if (!listing.folder.IsOpen() ||
        ::statx(listing.folder.Get(), "", AT_EMPTY_PATH, STATX_INO, &listing.facts) != 0) {
        listing.error = errno;
        listing.folder.Close();
        listing.isComplete = true;
    }
    return listing;
}

bool ReadPiece(const Descriptor& folder, FolderListing& listing) {
    return ReadAfter(folder, listing, 0);
}

bool AppendPiece(FolderListing& listing) {
    return ReadAfter(listing.folder, listing, listing.entries.size());
}

} // namespace quavernet::posix
