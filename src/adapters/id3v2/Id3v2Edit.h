// New bytes for a tag in which some of the seven fields change and everything else stays. Called by the tag
// component when it saves.
#pragma once

#include "adapters/id3v2/Id3v2Layout.h"

#include <array>
#include <optional>
#include <string>

namespace quavernet::id3v2 {

/// The new text of each field by its number; nothing for a field that stays as it is.
using FieldChanges = std::array<std::optional<std::string>, FieldCount>;

/// What goes into a tag after its header.
struct EditedBody {
    Bytes bytes;           ///< Without padding.
    std::size_t tailBegin; ///< After the last frame: from here on lie bytes that are no frame, if any.
};

/// The frames and what lies after them. A changed field takes the place of its first frame;
/// an emptied one loses it, or stays as an empty frame where another of its kind would step forward; a new
/// one goes after the last frame. All other frames stay byte for byte, in their order.
/// `body` is without unsynchronisation up to version 2.3.
EditedBody EditFrames(const TagHeader& header, ByteView body, const FieldChanges& changes);

/// A tag of `totalSize` bytes in the same version with these frames and padding: without extended header,
/// footer and, up to version 2.3, without unsynchronisation.
Bytes BuildTag(const TagHeader& header, ByteView frames, std::uint64_t totalSize);

/// Whether the built tag reads as its frames and none after them: padding lengthens a frame that was cut off
/// to a whole one, and a size that is open to two readings may be settled otherwise by new neighbours.
bool ReadsAsEdited(ByteView tag, const EditedBody& body);

} // namespace quavernet::id3v2
