// The first frame header of an MPEG file: the search for it, the Xing mark, and its bits. Called by
// ReadAudioInfo.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quavernet {

/// The bits of four bytes, the first byte in the highest place, as "0" and "1" without leading zeros: a
/// header that begins with zeros (one read from a false position) is shorter, and all its fields lie shifted.
std::string BytesToBits(std::uint32_t bytes);

/// The number that a bit string spells; 0 for an empty one.
std::uint32_t BitsToNumber(std::string_view bits);

struct MpegHeader {
    std::string bits;             ///< As BytesToBits gives them.
    bool isVbr = false;           ///< A Xing mark is at its place.
    std::uint32_t xingFrames = 0; ///< The number after the mark; only if isVbr.
};

/// The header that begins at the first 0xFF followed by 0xFA or 0xFB (MPEG 1 Layer III, with and without
/// CRC; nothing else is looked for) among the first 5000 positions. Without such a place the header is made
/// of a byte 0 and the file's first three bytes. Nothing for a file of fewer than 256 bytes.
/// `head` holds the file's beginning, at least 5047 bytes of it unless the file is shorter.
std::optional<MpegHeader> FindMpegHeader(std::span<const std::byte> head, std::uint64_t fileSize);

} // namespace quavernet
