// Changes to files of the user, of which either the old or the new bytes stand there, never a mixture, also
// if the process is killed in the middle. Called by the writers of tags.
#pragma once

#include "platform/BinaryFile.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace quavernet {

enum class SaveTimes { Keep, Renew }; ///< What becomes of the file's times.

/// What becomes of a change that can't go by way of a copy: the folder or the disk takes none, or the copy
/// would part the file from its other names (hard links). Written in place, a kill may tear it.
enum class WithoutCopy { Refuse, InPlace };

/// Writes `bytes` over `oldBytes`, which stand at the offset and are as many. What differs is written in
/// place if it lies within one page of the file: the system copies a page as a whole, and if the disk takes
/// only a part, or can't keep it, the old bytes are put back. More than that goes by way of a copy, as in
/// ReplaceHead. Throws RuntimeError, also if another program changed the file since `file` was opened, as its
/// length, its times or the file under its path tell; then the file is as it was. One change an opening.
void OverwriteBytes(const std::string& path, BinaryFile& file, std::uint64_t offset,
                    std::span<const std::byte> oldBytes, std::span<const std::byte> bytes, SaveTimes times,
                    WithoutCopy withoutCopy = WithoutCopy::Refuse);

/// Puts `head` in place of the file's first `oldSize` bytes: writes a copy in the same folder and moves it
/// over the file. Rights, extended attributes and times stay, and owner and group as far as the system
/// allows; a link stays a link, other names of the file keep the old one. Throws RuntimeError, also if
/// another program changed the file since it was opened, as above.
void ReplaceHead(const std::string& path, const BinaryFile& file, std::uint64_t oldSize,
                 std::span<const std::byte> head);

} // namespace quavernet
