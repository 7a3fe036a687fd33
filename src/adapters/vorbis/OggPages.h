// A walk over the pages of an Ogg file (RFC 3533), damaged ones included, and the packets on them. libogg
// does both, as in the outside tool; what is ours are the reads and their bounds. Called by OggInfoReader,
// and by what OggCommentWriter is made of.
#pragma once

#include "adapters/vorbis/ByteSource.h"

#include <cstddef>
#include <cstdint>

#include <ogg/ogg.h>

namespace quavernet::vorbis {

/// Steps from page to page. A page whose checksum is wrong is none: the walk looks for the next one after
/// its first byte. All pages are checked, those of the audio too, since the tool leaves a damaged page out of
/// the data length, and the values have to be the tool's. That takes less than half a millisecond for a
/// megabyte, a time in which few disks deliver one. A page that the file's end cuts off ends the walk. The
/// bytes checked in vain are bounded by a small multiple of the file's size.
class OggPageReader {
public:
    /// Begins at an offset.
    explicit OggPageReader(ByteSource& source, std::uint64_t begin = 0);
    ~OggPageReader();
    OggPageReader(const OggPageReader&) = delete;
    OggPageReader& operator=(const OggPageReader&) = delete;

    /// The next intact page, or false at the end. It is a view, valid until the next call.
    bool Next(ogg_page& page);

    /// Offset of the first byte after the last page that was found.
    std::uint64_t End() const;

    /// Whether there was a page before End that is none after all.
    bool MetDamage() const { return m_vainBytes > 0; }

    /// Whether the walk ended because it checked too many bytes in vain, and not at the end.
    bool GaveUp() const;

private:
    bool Fill();
    std::size_t Claimed() const;

    ByteSource& m_source;
    ogg_sync_state m_sync{};       ///< The bytes read and not yet stepped over.
    std::uint64_t m_read = 0;      ///< Offset of the next byte to read.
    std::uint64_t m_vainBytes = 0; ///< Of pages that were none.
};

/// The packets of one stream, put together out of its pages.
class PacketStream {
public:
    PacketStream() = default;
    ~PacketStream() { Clear(); }
    PacketStream(const PacketStream&) = delete;
    PacketStream& operator=(const PacketStream&) = delete;

    /// Takes in a page. One of an unknown version of the format is passed over, as is the end of a packet
    /// whose beginning is missing.
    void Take(ogg_page& page);

    /// The next complete packet, or false. It is a view, valid until the next page.
    bool Next(ogg_packet& packet);

    /// Bytes held of packets that are not complete.
    std::size_t Held() const;

    /// Lets go of all that is held.
    void Clear();

private:
    ogg_stream_state m_state{};
    bool m_open = false;
};

} // namespace quavernet::vorbis
