// One logical stream of an Ogg file: gathers the header packets, sums up the pages after them and
// reports both in the tool's lines. Called by OggInfoReader, page by page.
#pragma once

#include "adapters/vorbis/OggPages.h"
#include "adapters/vorbis/VorbisHeaders.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace quavernet::vorbis {

class VorbisStream {
public:
    /// `number` in the file, from 1.
    explicit VorbisStream(std::size_t number)
        : m_number(number), m_headers(number > MostStreams ? NotGathered : 0) {}

    enum class Beginning { Vorbis, Unknown, Invalid };

    /// What kind of stream begins with this page: a Vorbis stream's first packet carries the mark; a page
    /// that completes no packet begins no valid stream.
    static Beginning BeginsWith(ogg_page& page);

    /// Takes in a page. Until the third header packet its packets are read, and their lines appended when
    /// that one is complete; later pages are only counted.
    void Take(ogg_page& page, std::string& lines);

    /// Appends data length and play length.
    void AppendSummary(std::string& lines) const;

private:
    static constexpr int HeaderCount = 3;
    static constexpr int NotGathered = 4;            ///< The stream has no headers for us.
    static constexpr std::size_t MostStreams = 1024; ///< libogg takes 28 KB for each, of a page of 58 bytes.

    void TakeHeaderPage(ogg_page& page, std::string& lines);
    void TakePacket(Packet packet, bool atStart, std::string& lines);
    void AppendHeaders(std::string& lines) const;

    std::size_t m_number;
    int m_headers; ///< Header packets read, 0 to 3, or NotGathered.
    PacketStream m_packets;
    Identification m_identification;
    Comments m_comments;
    std::uint64_t m_bytes = 0;
    std::int64_t m_granule = 0; ///< Samples up to the last page.
};

} // namespace quavernet::vorbis
