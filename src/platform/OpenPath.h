// Opening by a path of any length: the system takes 4096 bytes in one call, folders nest deeper. Called
// wherever a file of the user is opened.
#pragma once

#include <string>

namespace quavernet {

/// The open file's number, closed in programs that are started; -1 with errno set. A path that is too long
/// for a single call is walked piece by piece.
int OpenPath(const std::string& path, int flags);

} // namespace quavernet
