// Folders, files and volumes of a Linux system.
#pragma once

#include "platform/FileSystemObject.h"

#include <memory>

namespace quavernet {

std::unique_ptr<FileSystemObject> CreatePosixFileSystem();

} // namespace quavernet
