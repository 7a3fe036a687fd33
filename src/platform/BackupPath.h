// Where the copies of a library lie. Called by the adapter that makes them and by whoever names them to the
// user.
#pragma once

#include <string>

namespace quavernet {

/// Copies that are kept.
inline constexpr int BackupCount = 3;

/// Path of a copy; number 1 is the newest: "Quavernet.db" has "Quavernet.backup1.db". Number 0 is the one
/// that is being made.
std::string BackupPath(const std::string& library, int number);

} // namespace quavernet
