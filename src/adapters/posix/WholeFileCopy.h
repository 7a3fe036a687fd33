// A copy that is either whole or not there. Used by the file system adapter.
#pragma once

#include "adapters/posix/Descriptor.h"

#include <string>

namespace quavernet::posix {

/// Writes a copy without a name (or, where the file system can't do that, under a hidden one) into the
/// target's folder, gives it the rights of the open source, brings it to the disk and moves it to the
/// target's place, where nothing may be yet, not even a link that leads nowhere. Returns 0 or the error
/// number, EEXIST if something is there; on failure that is as it was and nothing else is left.
int CopyWholeFile(const Descriptor& source, const std::string& target);

} // namespace quavernet::posix
