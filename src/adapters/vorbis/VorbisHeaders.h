// The three header packets of a Vorbis stream (Vorbis I, section 4.2), the third by its mark
// only, and the making of the second. Called by OggInfoReader and OggCommentWriter.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quavernet::vorbis {

using Packet = std::span<const std::uint8_t>;
using PacketBytes = std::vector<std::uint8_t>;

/// Bytes of a header packet that is taken in; larger than any picture.
inline constexpr std::size_t LargestHeader = std::size_t{64} << 20;

struct Identification {
    std::uint32_t version = 0;
    std::uint8_t channels = 0;
    std::uint32_t rate = 0; ///< Hz
    std::int32_t upperBitRate = 0;
    std::int32_t nominalBitRate = 0; ///< Bits per second; 0 or less: not set.
    std::int32_t lowerBitRate = 0;
};

struct Comments {
    std::string vendor;
    std::vector<std::string> entries; ///< "KEY=value", in their order, as the bytes are.
};

/// Whether the packet begins with the type byte (1, 3 or 5) and the mark "vorbis".
bool IsHeader(Packet packet, std::uint8_t type);

/// Nothing if the packet is no valid header of its kind. Lengths are compared with the packet's own size
/// before anything is taken.
std::optional<Identification> ReadIdentification(Packet packet);
std::optional<Comments> ReadComments(Packet packet);

/// The packet that ReadComments reads as this; nothing if it would be larger than LargestHeader.
std::optional<PacketBytes> BuildComments(const Comments& comments);

} // namespace quavernet::vorbis
