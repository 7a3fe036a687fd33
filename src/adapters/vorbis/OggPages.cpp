#include "adapters/vorbis/OggPages.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace quavernet::vorbis {

namespace {

constexpr std::string_view Mark = "OggS";
constexpr std::size_t FixedHeader = 27;
constexpr std::size_t ReadAhead = 65536; // A read of this size costs less than one for each page.
constexpr std::uint64_t VainFloor = 1 << 20;
constexpr std::uint64_t VainFactor = 4;

} // namespace

OggPageReader::OggPageReader(ByteSource& source, std::uint64_t begin) : m_source(source), m_read(begin) {
    ogg_sync_init(&m_sync);
}

OggPageReader::~OggPageReader() {
    ogg_sync_clear(&m_sync);
}

bool OggPageReader::Next(ogg_page& page) {
    while (!GaveUp()) {
        const std::size_t claimed = Claimed();
        const long step = ogg_sync_pageseek(&m_sync, &page);
        if (step > 0) {
            return true;
        }
        if (step < 0) {
            m_vainBytes += claimed;
        } else if (!Fill()) {
            return false;
        }
    }
    return false;
}

std::uint64_t OggPageReader::End() const {
    return m_read - static_cast<std::uint64_t>(m_sync.fill - m_sync.returned);
}

bool OggPageReader::GaveUp() const {
    return m_vainBytes > VainFloor + VainFactor * m_source.Size();
}

// Bytes of the page that the held ones begin with, as far as its header says; 0 without a mark.
std::size_t OggPageReader::Claimed() const {
    const auto held = std::span(m_sync.data, static_cast<std::size_t>(m_sync.fill))
                          .subspan(static_cast<std::size_t>(m_sync.returned));
    if (held.size() < FixedHeader || !std::equal(Mark.begin(), Mark.end(), held.begin())) {
        return 0;
    }
    const std::size_t segments = held[FixedHeader - 1];
    std::size_t size = FixedHeader + segments;
    for (const unsigned char length :
         held.subspan(FixedHeader).first(std::min(segments, held.size() - FixedHeader))) {
        size += length;
    }
    return size;
}

// Reads on; false at the end. Where nothing is held, the hole of a sparse file is passed over: it has no
// mark.
bool OggPageReader::Fill() {
    if (m_sync.fill == m_sync.returned) {
        m_read = m_source.NextData(m_read);
    }
    if (m_read >= m_source.Size()) {
        return false;
    }
    const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(ReadAhead, m_source.Size() - m_read));
    char* const buffer = ogg_sync_buffer(&m_sync, static_cast<long>(size));
    if (buffer == nullptr) {
        return false;
    }
    const std::size_t got = m_source.ReadAt(m_read, std::span(reinterpret_cast<std::uint8_t*>(buffer), size));
    m_read += got;
    return ogg_sync_wrote(&m_sync, static_cast<long>(got)) == 0 && got > 0;
}

void PacketStream::Take(ogg_page& page) {
    if (!m_open) {
        m_open = ogg_stream_init(&m_state, ogg_page_serialno(&page)) == 0;
    }
    if (m_open) {
        ogg_stream_pagein(&m_state, &page);
    }
}

bool PacketStream::Next(ogg_packet& packet) {
    int found = m_open ? ogg_stream_packetout(&m_state, &packet) : 0;
    while (found < 0) { // A page is missing.
        found = ogg_stream_packetout(&m_state, &packet);
    }
    return found > 0;
}

std::size_t PacketStream::Held() const {
    return static_cast<std::size_t>(m_state.body_fill - m_state.body_returned);
}

void PacketStream::Clear() {
    if (m_open) {
        ogg_stream_clear(&m_state);
        m_open = false;
    }
}

} // namespace quavernet::vorbis
