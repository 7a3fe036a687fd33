#include "adapters/vorbis/HeaderPages.h"

#include "adapters/vorbis/OggPages.h"

#include <span>
#include <stdexcept>

namespace quavernet::vorbis {

namespace {

constexpr std::size_t LacingBegin = 27; // In the header of a page, after the fields that each one has.
constexpr std::uint8_t GoesOn = 255;    // A segment of this length does not end its packet.

std::span<const std::uint8_t> LacingOf(const ogg_page& page) {
    return std::span(page.header, static_cast<std::size_t>(page.header_len)).subspan(LacingBegin);
}

Packet BodyOf(const ogg_page& page) {
    return {page.body, static_cast<std::size_t>(page.body_len)};
}

bool BeginsVorbis(const ogg_page& page) {
    return ogg_page_bos(&page) != 0 && ogg_page_pageno(&page) == 0 && IsHeader(BodyOf(page), 1);
}

bool HoldsIdentificationAlone(const ogg_page& page) {
    const auto lacing = LacingOf(page);
    return ogg_page_continued(&page) == 0 && ogg_page_eos(&page) == 0 && ogg_page_packets(&page) == 1 &&
           lacing.back() != GoesOn && ReadIdentification(BodyOf(page));
}

/// Puts the two packets together, page by page.
class HeaderGathering {
public:
    explicit HeaderGathering(std::uint32_t serial) { m_pages.serial = serial; }

    std::uint32_t Serial() const { return m_pages.serial; }
    bool IsWhole() const { return m_packets == 2; }
    HeaderPages Take() { return std::move(m_pages); }

    /// False if the page is none of header packets alone, or not the next one of its stream.
    bool Take(const ogg_page& page, ByteRange place) {
        const bool isNext = ogg_page_bos(&page) == 0 &&
                            ogg_page_pageno(&page) == static_cast<long>(m_pages.count) + 1 &&
                            (ogg_page_continued(&page) != 0) == m_inPacket;
        if (!isNext || !TakeBody(page)) {
            return false;
        }
        if (m_pages.count == 0) {
            m_pages.place.begin = place.begin;
        } else if (place.begin > m_pages.place.end) {
            m_pages.between.push_back({m_pages.place.end, place.begin});
        }
        m_pages.place.end = place.end;
        ++m_pages.count;
        m_pages.granule = ogg_page_granulepos(&page);
        m_pages.endsStream = ogg_page_eos(&page) != 0;
        return IsWhole() || !m_pages.endsStream;
    }

private:
    bool TakeBody(const ogg_page& page) {
        Packet body = BodyOf(page);
        const auto lacing = LacingOf(page);
        for (std::size_t i = 0; i < lacing.size(); ++i) {
            if (IsWhole()) {
                return false; // Audio on a page of headers.
            }
            PacketBytes& packet = m_packets == 0 ? m_pages.comment : m_pages.setup;
            if (m_packets == 1 && !m_inPacket) {
                m_pages.setupBeginsPage = i == 0;
            }
            const Packet segment = body.first(lacing[i]);
            body = body.subspan(lacing[i]);
            packet.insert(packet.end(), segment.begin(), segment.end());
            if (packet.size() > LargestHeader) {
                return false;
            }
            m_inPacket = lacing[i] == GoesOn;
            if (!m_inPacket) {
                if (!IsHeader(packet, m_packets == 0 ? 3 : 5)) {
                    return false;
                }
                ++m_packets;
            }
        }
        return true;
    }

    HeaderPages m_pages;
    int m_packets = 0;       ///< That are complete.
    bool m_inPacket = false; ///< The next page goes on with the last packet of this one.
};

/// libogg's own way to make pages of packets.
class PagePacking {
public:
    PagePacking(std::uint32_t serial, std::uint32_t firstNumber) {
        if (ogg_stream_init(&m_stream, static_cast<int>(serial)) != 0) {
            throw std::bad_alloc();
        }
        m_stream.b_o_s = 1; // The stream's first page has been made.
        m_stream.pageno = static_cast<long>(firstNumber);
    }
    ~PagePacking() { ogg_stream_clear(&m_stream); }
    PagePacking(const PagePacking&) = delete;
    PagePacking& operator=(const PagePacking&) = delete;

    void Append(const PacketBytes& bytes, std::int64_t granule, bool endsStream) {
        ogg_packet packet{};
        packet.packet = const_cast<unsigned char*>(bytes.data()); // It is copied.
        packet.bytes = static_cast<long>(bytes.size());
        packet.granulepos = granule;
        packet.e_o_s = endsStream ? 1 : 0;
        if (ogg_stream_packetin(&m_stream, &packet) != 0) {
            throw std::bad_alloc();
        }
    }

    void EndPage(PackedPages& pages) {
        ogg_page page{};
        while (ogg_stream_flush(&m_stream, &page) != 0) {
            pages.bytes.insert(pages.bytes.end(), page.header, page.header + page.header_len);
            pages.bytes.insert(pages.bytes.end(), page.body, page.body + page.body_len);
            ++pages.count;
        }
    }

private:
    ogg_stream_state m_stream{};
};

} // namespace

std::optional<HeaderPages> FindHeaderPages(ByteSource& source) {
    OggPageReader reader(source);
    std::optional<HeaderGathering> gathering;
    ogg_page page{};
    while (reader.Next(page)) {
        const auto serial = static_cast<std::uint32_t>(ogg_page_serialno(&page));
        if (ogg_page_version(&page) != 0 || (gathering && serial != gathering->Serial())) {
            continue;
        }
        if (gathering) {
            const auto size = static_cast<std::uint64_t>(page.header_len + page.body_len);
            // The remains of a page among the headers would claim other bytes of a file of another size.
            if (reader.MetDamage() || !gathering->Take(page, {reader.End() - size, reader.End()})) {
                return std::nullopt;
            }
            if (gathering->IsWhole()) {
                return gathering->Take();
            }
        } else if (BeginsVorbis(page)) {
            if (!HoldsIdentificationAlone(page)) {
                return std::nullopt;
            }
            gathering.emplace(serial);
        }
    }
    return std::nullopt;
}

PackedPages PackHeaderPages(const HeaderPages& old, const PacketBytes& comment) {
    PackedPages pages;
    pages.bytes.reserve(comment.size() + comment.size() / 200 + old.setup.size() + 1024); // And page headers.
    PagePacking packing(old.serial, 1);
    packing.Append(comment, 0, false);
    if (old.setupBeginsPage) {
        packing.EndPage(pages);
    }
    packing.Append(old.setup, old.granule, old.endsStream);
    packing.EndPage(pages);
    return pages;
}

} // namespace quavernet::vorbis
