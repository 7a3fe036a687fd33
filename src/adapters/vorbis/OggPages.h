// A walk over the pages of an Ogg file (RFC 3533), damaged ones included. Called by OggInfoReader.
#pragma once

#include "adapters/vorbis/ByteSource.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace quavernet::vorbis {

/// One page's header.
struct OggPage {
    static constexpr std::size_t MaximumSize = 27 + 255 + 255 * 255;

    bool continued = false; ///< The first packet began on an earlier page.
    bool first = false;     ///< First page of its stream.
    bool last = false;      ///< Last page of its stream.
    std::uint8_t version = 0;
    std::int64_t granule = 0; ///< Samples up to the end of the page; -1 if no packet ends on it.
    std::uint32_t serial = 0;
    std::uint32_t sequence = 0;
    std::uint64_t offset = 0; ///< Where the page begins in the file.
    std::size_t headerSize = 0;
    std::size_t bodySize = 0;
    std::array<std::uint8_t, 255> lacing{};
    std::size_t segments = 0;

    std::size_t Size() const { return headerSize + bodySize; }
    std::uint64_t End() const { return offset + Size(); }
    std::span<const std::uint8_t> Lacing() const { return std::span(lacing).first(segments); }
};

/// Steps from page to page. A page whose checksum is wrong is none: the walk looks for the next one behind
/// its first byte. All pages are checked, those of the audio too, since the tool leaves a damaged page out of
/// the data length, and the values have to be the tool's. That takes less than half a millisecond for a
/// megabyte, a time in which few disks deliver one. A page that the file's end cuts off ends the walk. The
/// bytes checked in vain are bounded by a small multiple of the file's size.
class OggPageReader {
public:
    explicit OggPageReader(ByteSource& source) : m_window(source) {}

    /// The next intact page, or false at the end.
    bool Next(OggPage& page);

    /// The page's body. Valid until the next call.
    std::span<const std::uint8_t> Body(const OggPage& page);

private:
    bool FindMark();
    bool ReadHeader(OggPage& page);
    bool IsIntact(const OggPage& page);

    ByteWindow m_window;
    std::uint64_t m_position = 0;
    std::uint64_t m_vainBytes = 0;
};

/// The checksum of a whole page whose checksum field reads as zero.
std::uint32_t OggChecksum(std::span<const std::uint8_t> page);

} // namespace quavernet::vorbis
