// What the system's error numbers say of a failed write, in one list for files, tags and the library.
#pragma once

#include <cerrno>

namespace quavernet {

/// No room: on the disk, in the user's share of it, or up to the longest file allowed.
inline bool IsDiskFull(int error) {
    return error == ENOSPC || error == EDQUOT || error == EFBIG;
}

/// The user, or anybody, may not write there.
inline bool IsWriteRefused(int error) {
    return error == EACCES || error == EPERM || error == EROFS;
}

} // namespace quavernet
