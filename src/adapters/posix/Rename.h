// Gives a file another name without ever overwriting one. Called by the file system of this folder.
#pragma once

#include <string>

namespace quavernet::posix {

/// As FileSystemObject::RenameFile. Gives 0 or the error number.
int RenameToFreeName(const std::string& source, const std::string& target);

} // namespace quavernet::posix
