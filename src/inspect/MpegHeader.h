// The first frame header of an MPEG file: the search for it, the Xing mark, and its bits. Called by
// ReadAudioInfo.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace quavernet {

/// A bit string without its leading zeros. Positions count from 1 at the first bit that is set: a header that
/// begins with zeros (one read from a false position) is shorter, and all its fields lie shifted.
class HeaderBits {
public:
    HeaderBits() = default;
    explicit HeaderBits(std::uint32_t value);

    /// Number of up to `count` bits from the position; bits behind the end are missing, not 0. Nothing left
    /// gives 0.
    std::uint32_t Field(int position, int count) const;

    /// The bits as "0" and "1"; empty for a value of 0.
    std::string Text() const;

private:
    std::uint32_t m_value = 0;
    int m_length = 0;
};

struct MpegHeader {
    HeaderBits bits;
    bool isVbr = false;           ///< A Xing mark stands at its place.
    std::uint32_t xingFrames = 0; ///< The number behind the mark; only if isVbr.
};

/// The header that begins at the first 0xFF followed by 0xFA or 0xFB (MPEG 1 Layer III, with and without
/// CRC; nothing else is looked for) among the first 5000 positions. Without such a place the header is made
/// of a byte 0 and the file's first three bytes. Nothing for a file of fewer than 256 bytes.
/// `head` holds the file's beginning, at least 5047 bytes of it unless the file is shorter.
std::optional<MpegHeader> FindMpegHeader(std::span<const std::byte> head, std::uint64_t fileSize);

} // namespace quavernet
