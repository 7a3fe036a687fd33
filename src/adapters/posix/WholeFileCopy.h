// A copy that is either whole or not there. Used by the file system adapter.
#pragma once

#include "adapters/posix/Descriptor.h"

#include <string>

namespace quavernet::posix {

/// Writes the copy under another name in the target's folder, brings it to the disk and renames it over the
/// target, and gives it the rights of the open source. Returns 0 or the error number; on failure the target
/// is as it was and nothing else is left.
int CopyWholeFile(const Descriptor& source, const std::string& target);

} // namespace quavernet::posix
