// Bare system calls on files: what a save takes at least. The jobs of saves measure beside them.
#pragma once

#include <string>

namespace quavernet::bench {

/// Copies a file in blocks as large as those of a save, and brings the copy to the disk. Throws
/// std::runtime_error on a failure.
void CopyAndSync(const std::string& from, const std::string& to);

/// Writes over the first bytes of a file, and brings them to the disk. Throws std::runtime_error on a
/// failure.
void WriteAndSync(const std::string& path, const std::string& bytes);

} // namespace quavernet::bench
