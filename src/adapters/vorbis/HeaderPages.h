// The pages of a Vorbis stream that hold its comment packet and its setup packet: found in a file, and packed
// again around another comment packet. Called by OggCommentWriter.
#pragma once

#include "adapters/vorbis/ByteSource.h"
#include "adapters/vorbis/VorbisHeaders.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace quavernet::vorbis {

struct ByteRange {
    std::uint64_t begin = 0;
    std::uint64_t end = 0; ///< Offset after the last byte.
};

/// The first of these pages has the number 1 in its stream: the identification packet is alone on number 0.
struct HeaderPages {
    std::uint32_t serial = 0; ///< Of the stream.
    std::uint32_t count = 0;
    ByteRange place;                ///< From the first of the pages to the end of the last one.
    std::vector<ByteRange> between; ///< What lies between the pages: those of other streams.
    PacketBytes comment;            ///< It begins the first page.
    PacketBytes setup;              ///< It ends the last page: audio begins on a page of its own.
    bool setupBeginsPage = false;   ///< The two share no page.
    std::int64_t granule = 0;       ///< Position that the last page tells.
    bool endsStream = false;        ///< No page follows.
};

/// Those of the first Vorbis stream in the file; nothing if there is none, or its headers are not whole.
std::optional<HeaderPages> FindHeaderPages(ByteSource& source);

struct PackedPages {
    std::vector<std::uint8_t> bytes;
    std::uint32_t count = 0;
};

/// Pages that can take the place of the old ones, with this comment packet.
PackedPages PackHeaderPages(const HeaderPages& old, const PacketBytes& comment);

} // namespace quavernet::vorbis
