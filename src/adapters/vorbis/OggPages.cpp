#include "adapters/vorbis/OggPages.h"

#include <algorithm>
#include <string_view>

#include "adapters/vorbis/Integers.h"

namespace quavernet::vorbis {

namespace {

constexpr std::string_view Mark = "OggS";
constexpr std::size_t FixedHeader = 27;
constexpr std::size_t ChecksumAt = 22;
constexpr std::size_t ReadAhead = 65536; // A read of this size costs less than one for each page's header.
constexpr std::uint64_t VainFloor = 1 << 20;
constexpr std::uint64_t VainFactor = 4;

constexpr std::size_t Stride = 16; // Bytes a step: one step waits for the one before, so long ones pay.

using ChecksumTables = std::array<std::array<std::uint32_t, 256>, Stride>;

/// Table k holds the effect of a byte that k further bytes follow.
constexpr ChecksumTables MakeTables() {
    ChecksumTables tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t value = byte << 24;
        for (int bit = 0; bit < 8; ++bit) {
            value = (value & 0x80000000U) != 0 ? (value << 1) ^ 0x04c11db7U : value << 1;
        }
        tables[0][byte] = value;
    }
    for (std::size_t k = 1; k < tables.size(); ++k) {
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t before = tables[k - 1][byte];
            tables[k][byte] = (before << 8) ^ tables[0][before >> 24];
        }
    }
    return tables;
}

constexpr ChecksumTables Tables = MakeTables();

std::uint32_t Checksum(std::uint32_t sum, std::span<const std::uint8_t> bytes) {
    while (bytes.size() >= Stride) {
        std::uint32_t next = 0;
        for (std::size_t i = 4; i < Stride; ++i) {
            next ^= Tables[Stride - 1 - i][bytes[i]];
        }
        for (std::size_t i = 0; i < 4; ++i) {
            next ^= Tables[Stride - 1 - i][bytes[i] ^ (sum >> (24 - 8 * i) & 0xff)];
        }
        sum = next;
        bytes = bytes.subspan(Stride);
    }
    for (const std::uint8_t byte : bytes) {
        sum = sum << 8 ^ Tables[0][sum >> 24 ^ byte];
    }
    return sum;
}

} // namespace

std::uint32_t OggChecksum(std::span<const std::uint8_t> page) {
    constexpr std::array<std::uint8_t, 4> zero{};
    const std::uint32_t sum = Checksum(Checksum(0, page.first(ChecksumAt)), zero);
    return Checksum(sum, page.subspan(ChecksumAt + zero.size()));
}

bool OggPageReader::FindMark() {
    for (;;) {
        const auto piece = m_window.Held(m_position, FixedHeader, ReadAhead);
        if (piece.size() < FixedHeader) {
            return false;
        }
        const std::string_view text(reinterpret_cast<const char*>(piece.data()), piece.size());
        if (const auto found = text.find(Mark); found != std::string_view::npos) {
            m_position += found;
            return true;
        }
        m_position = m_window.NextData(m_position + piece.size() - (Mark.size() - 1));
    }
}

bool OggPageReader::ReadHeader(OggPage& page) {
    const auto bytes = m_window.At(m_position, FixedHeader + 255, ReadAhead);
    if (bytes.size() < FixedHeader || bytes.size() < FixedHeader + std::size_t{bytes[26]}) {
        return false;
    }
    page.version = bytes[4];
    page.continued = (bytes[5] & 1) != 0;
    page.first = (bytes[5] & 2) != 0;
    page.last = (bytes[5] & 4) != 0;
    page.granule = static_cast<std::int64_t>(LittleEndian<std::uint64_t>(bytes, 6));
    page.serial = LittleEndian<std::uint32_t>(bytes, 14);
    page.sequence = LittleEndian<std::uint32_t>(bytes, 18);
    page.segments = bytes[26];
    page.offset = m_position;
    page.headerSize = FixedHeader + page.segments;
    std::copy_n(bytes.begin() + FixedHeader, page.segments, page.lacing.begin());
    page.bodySize = 0;
    for (const std::uint8_t length : page.Lacing()) {
        page.bodySize += length;
    }
    return page.End() <= m_window.Size();
}

bool OggPageReader::Next(OggPage& page) {
    while (m_vainBytes <= VainFloor + VainFactor * m_window.Size()) {
        if (!FindMark() || !ReadHeader(page)) {
            return false;
        }
        if (IsIntact(page)) {
            m_position = page.End();
            return true;
        }
        m_position = page.offset + 1;
        m_vainBytes += page.Size();
    }
    return false;
}

bool OggPageReader::IsIntact(const OggPage& page) {
    const auto bytes = m_window.At(page.offset, page.Size(), ReadAhead);
    return bytes.size() == page.Size() &&
           OggChecksum(bytes) == LittleEndian<std::uint32_t>(bytes, ChecksumAt);
}

std::span<const std::uint8_t> OggPageReader::Body(const OggPage& page) {
    return m_window.At(page.offset + page.headerSize, page.bodySize);
}

} // namespace quavernet::vorbis
