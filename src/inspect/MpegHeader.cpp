#include "inspect/MpegHeader.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace quavernet {

namespace {

constexpr std::uint64_t SmallestFile = 256;
constexpr std::size_t LastPosition = 5000; // Positions count from 1.
constexpr std::size_t XingOffset = 36;     // From the frame's start; the one place that is looked at.
constexpr std::size_t XingFramesOffset = 44;

// The byte at a position that counts from 1; 0 before the beginning and after the end.
std::uint8_t ByteAt(std::span<const std::byte> head, std::size_t position) {
    return position >= 1 && position <= head.size() ? std::to_integer<std::uint8_t>(head[position - 1]) : 0;
}

std::uint32_t FourBytesAt(std::span<const std::byte> head, std::size_t position) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = value << 8 | ByteAt(head, position + i);
    }
    return value;
}

// Position of the first frame, or 0 if none is found.
std::size_t SearchFrame(std::span<const std::byte> head) {
    std::size_t position = 1;
    const std::size_t end = std::min(head.size(), LastPosition);
    while (position <= end) {
        const void* found = std::memchr(head.data() + position - 1, 0xFF, end - position + 1);
        if (found == nullptr) {
            return 0;
        }
        position = static_cast<std::size_t>(static_cast<const std::byte*>(found) - head.data()) + 1;
        const std::uint8_t next = ByteAt(head, position + 1);
        if (next == 0xFA || next == 0xFB) {
            return position;
        }
        ++position;
    }
    return 0;
}

} // namespace

std::string BytesToBits(std::uint32_t bytes) {
    std::string bits;
    for (int bit = static_cast<int>(std::bit_width(bytes)) - 1; bit >= 0; --bit) {
        bits += (bytes >> bit & 1) != 0 ? '1' : '0';
    }
    return bits;
}

std::uint32_t BitsToNumber(std::string_view bits) {
    std::uint32_t number = 0;
    for (const char bit : bits) {
        number = number << 1 | (bit == '1' ? 1u : 0u);
    }
    return number;
}

std::optional<MpegHeader> FindMpegHeader(std::span<const std::byte> head, std::uint64_t fileSize) {
    if (fileSize < SmallestFile) {
        return std::nullopt;
    }
    constexpr std::uint32_t Xing = 0x58696E67;
    const std::size_t position = SearchFrame(head);
    MpegHeader header;
    header.bits = BytesToBits(FourBytesAt(head, position));
    header.isVbr = FourBytesAt(head, position + XingOffset) == Xing;
    if (header.isVbr) {
        // The word of flags before it is not looked at: these bytes are the frame count whatever it says.
        header.xingFrames = FourBytesAt(head, position + XingFramesOffset);
    }
    return header;
}

} // namespace quavernet
