// Folders, files and volumes of a Linux system.
#pragma once

#include "platform/FileSystemObject.h"

#include <memory>

namespace quavernet {

namespace posix {
class ReaderPool;
}

/// Its walks take the listings that `ahead` has read; null: none.
std::unique_ptr<FileSystemObject> CreatePosixFileSystem(std::shared_ptr<posix::ReaderPool> ahead = nullptr);

} // namespace quavernet
