// Replaces the beginning of a file so that either the old or the new file stands there, never a torn one.
// Called by the tag component when it saves.
#pragma once

#include "platform/BinaryFile.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace quavernet {

/// Writes `head` over the first bytes of the file, as many as `oldHead` has, in one write of what differs.
/// The file's times stay. If the write fails the old bytes are put back. Throws RuntimeError.
void OverwriteHead(BinaryFile& file, std::span<const std::byte> oldHead, std::span<const std::byte> head);

/// Puts `head` in place of the file's first `oldSize` bytes: writes a copy in the same folder and moves it
/// over the file. Rights, owner, extended attributes and times stay; a link stays a link. Throws
/// RuntimeError.
void ReplaceHead(const std::string& path, const BinaryFile& file, std::uint64_t oldSize,
                 std::span<const std::byte> head);

} // namespace quavernet
