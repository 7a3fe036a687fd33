// Changes to files of the user, of which either the old or the new bytes are left, never a mixture, also if
// the process is killed in the middle. Called by PosixFiles. Ours and not QSaveFile's: that gives the file
// another owner and takes its extended attributes away (seen with Qt 6.4), and can't write a page in place.
#pragma once

#include "adapters/posix/OpenedFile.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace quavernet::posix {

/// As BinaryFile::Overwrite.
void OverwriteBytes(OpenedFile& file, std::uint64_t offset, std::span<const std::byte> oldBytes,
                    std::span<const std::byte> bytes, SaveTimes times,
                    WithoutCopy withoutCopy = WithoutCopy::Refuse);

/// As BinaryFile::Rewrite.
void RewriteFile(const OpenedFile& file, const std::function<void(FileCopy&)>& compose);

} // namespace quavernet::posix
