// One logical stream of an Ogg file: gathers the header packets, sums up the pages behind them and reports
// both in the tool's lines. Called by OggInfoReader, page by page.
#pragma once

#include "adapters/vorbis/OggPages.h"
#include "adapters/vorbis/VorbisHeaders.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quavernet::vorbis {

class VorbisStream {
public:
    explicit VorbisStream(std::size_t number) : m_number(number) {}

    enum class Beginning { Vorbis, Unknown, Invalid };

    /// What kind of stream begins with this page: a Vorbis stream's first packet carries the mark; a page
    /// that completes no packet begins no valid stream.
    static Beginning BeginsWith(const OggPage& page, std::span<const std::uint8_t> body);

    /// Whether the header packets are still to come, so that a page's body is needed.
    bool NeedsBody() const { return m_headers < HeaderCount; }

    /// Takes in a page with its body, and appends the header lines once the third header packet is complete.
    void TakeHeaderPage(const OggPage& page, std::span<const std::uint8_t> body, std::string& lines);

    /// Counts a page behind the headers.
    void TakeAudioPage(const OggPage& page);

    /// Appends data length and play length.
    void AppendSummary(std::string& lines) const;

private:
    static constexpr int HeaderCount = 3;
    static constexpr int TooLarge = 4; ///< A header packet is larger than any picture: there are none then.
    static constexpr std::size_t LargestHeader = std::size_t{64} << 20;

    void TakePacket(Packet packet, bool atStart, std::string& lines);
    void AppendHeaders(std::string& lines) const;

    std::size_t m_number; ///< Number in the file, from 1.
    int m_headers = 0;    ///< Header packets read, 0 to 3, or TooLarge.
    std::uint32_t m_nextSequence = 0;
    std::vector<std::uint8_t> m_packet; ///< Begun and not yet complete.
    bool m_packetOpen = false;
    bool m_packetAtStart = false; ///< It began on the stream's first page.
    Identification m_identification;
    Comments m_comments;
    std::uint64_t m_bytes = 0;
    std::int64_t m_granule = 0; ///< Samples up to the last page.
};

} // namespace quavernet::vorbis
