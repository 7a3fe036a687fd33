// The rest of a stream whose header pages have become more or fewer: the same pages under other numbers.
// Called by OggCommentWriter.
#pragma once

#include "adapters/vorbis/ByteSource.h"
#include "platform/UserFiles.h"

#include <cstdint>

namespace quavernet::vorbis {

/// Appends what the file holds from `begin` on. The pages of the stream with this serial number, up to where
/// another one begins under the same, get numbers that are `shift` higher; gaps between their numbers stay,
/// as do all other bytes. False if some of them can't be numbered so, or found: the copy is of no use then.
bool AppendRenumbered(ByteSource& source, std::uint64_t begin, std::uint32_t serial, std::int64_t shift,
                      FileCopy& copy);

} // namespace quavernet::vorbis
