// A walk over the pages of an Ogg file (RFC 3533), damaged ones included. Called by OggInfoReader.
#pragma once

#include "platform/vorbis/ByteSource.h"

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
    bool intact = false; ///< The checksum was found right.

    std::size_t Size() const { return headerSize + bodySize; }
    std::uint64_t End() const { return offset + Size(); }
    std::span<const std::uint8_t> Lacing() const { return std::span(lacing).first(segments); }
};

/// Steps from page to page. A page whose neighbours stand where they should is taken as it is; the last page
/// of a stream, a page beside a gap and every page that the caller reads (IsIntact) must carry the right
/// checksum, or the walk looks for the next page behind its first byte. A page that the file's end cuts off
/// ends the walk. The bytes checked in vain are bounded by a small multiple of the file's size.
class OggPageReader {
public:
    explicit OggPageReader(ByteSource& source) : m_window(source) {}

    /// The next page, or false at the end.
    bool Next(OggPage& page);

    /// Whether the page carries the right checksum.
    bool IsIntact(OggPage& page);

    /// Steps back, to look for the next page behind the first byte of a page that isn't intact.
    void Reject(const OggPage& page);

    /// The page's body. Valid until the next call.
    std::span<const std::uint8_t> Body(const OggPage& page);

private:
    bool FindMark();
    bool ReadHeader(OggPage& page);

    ByteWindow m_window;
    std::uint64_t m_position = 0;
    bool m_inStep = false; ///< The page before ended where this one begins.
    std::uint64_t m_vainBytes = 0;
};

/// The checksum of a whole page whose checksum field reads as zero.
std::uint32_t OggChecksum(std::span<const std::uint8_t> page);

} // namespace quavernet::vorbis
