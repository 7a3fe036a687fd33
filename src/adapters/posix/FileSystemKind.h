// How long a file system may keep its user waiting, as far as its type tells. Asked by those who read ahead.
#pragma once

#include <cstdint>

namespace quavernet::posix {

enum class FileSystemKind : std::uint8_t {
    Memory, ///< Nothing there is slower than memory.
    Disk,   ///< Of this machine. It may be slow, but it answers.
    Share,  ///< Over a network or by a program, or of a type that nobody knows: it may hang.
    Kernel, ///< The kernel's state in place of files. Opening one may act on a device.
};

/// Of an open file or folder; Share where it can't be told.
FileSystemKind KindOfFileSystem(int fd);

} // namespace quavernet::posix
