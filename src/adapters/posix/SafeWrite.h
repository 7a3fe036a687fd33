// Files of the user that are written as a whole: beside the old one first, then over it in one step. Made by
// PosixFiles.
#pragma once

#include "platform/UserFiles.h"

#include <memory>
#include <string>

namespace quavernet::posix {

/// As UserFiles::Create.
std::unique_ptr<NewFile> CreateFile(const std::string& path);

/// As UserFiles::CreatePrivate.
std::unique_ptr<NewFile> CreatePrivateFile(const std::string& path);

} // namespace quavernet::posix
