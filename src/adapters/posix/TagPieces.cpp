#include "adapters/posix/TagPieces.h"

#include <algorithm>
#include <array>

namespace quavernet::posix {

namespace {

constexpr std::size_t HeaderSize = 10; // Of the tag, and of a frame from version 2.3 on.
constexpr std::size_t OldHeaderSize = 6;

// Unsynchronised tags are read whole, and extended headers are as good as never written.
constexpr unsigned PlainFlags = 0x3F;

std::uint64_t NumberOf(std::span<const std::byte> bytes, unsigned bits) {
    std::uint64_t number = 0;
    for (const std::byte byte : bytes) {
        number = (number << bits) + std::to_integer<std::uint64_t>(byte);
    }
    return number;
}

} // namespace

TagPieces::TagPieces(std::span<const std::byte> head) {
    constexpr std::array Mark{std::byte{'I'}, std::byte{'D'}, std::byte{'3'}};
    if (head.size() < HeaderSize || !std::equal(Mark.begin(), Mark.end(), head.begin()) ||
        (std::to_integer<unsigned>(head[5]) & ~PlainFlags) != 0) {
        return;
    }
    m_major = std::to_integer<int>(head[3]);
    m_next = HeaderSize;
    m_end = m_major >= 2 && m_major <= 4 ? HeaderSize + NumberOf(head.subspan(6, 4), 7) : 0;
}

std::uint64_t TagPieces::FrameSize(std::span<const std::byte> header) const {
    if (m_major == 2) {
        return OldHeaderSize + NumberOf(header.subspan(3, 3), 8);
    }
    return HeaderSize + NumberOf(header.subspan(4, 4), m_major == 4 ? 7 : 8);
}

std::optional<std::uint64_t> TagPieces::After(std::span<const std::byte> bytes, std::uint64_t offset) {
    const std::size_t headerSize = m_major == 2 ? OldHeaderSize : HeaderSize;
    const std::uint64_t end = offset + bytes.size();
    while (m_next + headerSize <= std::min(end, m_end)) {
        const auto header = bytes.subspan(static_cast<std::size_t>(m_next - offset), headerSize);
        if (header[0] == std::byte{0}) {
            return std::nullopt; // Padding.
        }
        m_next += FrameSize(header);
    }
    return m_next >= end && m_next + headerSize <= m_end ? std::optional(m_next) : std::nullopt;
}

} // namespace quavernet::posix
