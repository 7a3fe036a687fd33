#include "inspect/MpegFallback.h"

#include <array>

namespace quavernet {

namespace {

constexpr std::size_t SearchedBytes = 4096;

// Row by bit rate index (0 and 15 name no rate); columns MPEG 1 Layer I, II, III and MPEG 2 Layer I, II, III.
constexpr std::int16_t BitrateTable[16][6] = {{0, 0, 0, 0, 0, 0},
                                              {32, 32, 32, 32, 8, 8},
                                              {64, 48, 40, 48, 16, 16},
                                              {96, 56, 48, 56, 24, 24},
                                              {128, 64, 56, 64, 32, 32},
                                              {160, 80, 64, 80, 40, 40},
                                              {192, 96, 80, 96, 48, 48},
                                              {224, 112, 96, 112, 56, 56},
                                              {256, 128, 112, 128, 64, 64},
                                              {288, 160, 128, 144, 80, 80},
                                              {320, 192, 160, 160, 96, 96},
                                              {352, 224, 192, 176, 112, 112},
                                              {384, 256, 224, 192, 128, 128},
                                              {416, 320, 256, 224, 144, 144},
                                              {448, 384, 320, 256, 160, 160},
                                              {0, 0, 0, 0, 0, 0}};

bool TopThreeBitsSet(unsigned byte) {
    return (byte & 0xE0u) == 0xE0u;
}

// The two bytes that begin half a byte into the three.
std::array<unsigned, 2> ShiftByNibble(unsigned c1, unsigned c2, unsigned c3) {
    return {(c1 & 15u) * 16 | (c2 & 240u) / 16, (c2 & 15u) * 16 | (c3 & 240u) / 16};
}

// The header's second and third byte name the rate.
std::int16_t RateOf(unsigned second, unsigned third) {
    const unsigned layerBits = (second & 6u) / 2; // 3 is Layer I, 1 is Layer III, 0 is reserved.
    const unsigned headerVersionBits = (second & 24u) / 8;
    if (layerBits == 0) {
        return 0;
    }
    const unsigned column = (3 - layerBits) + ((headerVersionBits & 1u) != 0 ? 0u : 3u);
    return BitrateTable[(third & 240u) / 16][column];
}

} // namespace

std::int16_t SearchBitRate(std::span<const std::byte> head) {
    if (head.size() < SearchedBytes) {
        return 0;
    }
    // After the part that is searched all bytes are missing and count as 0.
    const auto at = [&](std::size_t i) {
        return i < SearchedBytes ? std::to_integer<unsigned>(head[i]) : 0u;
    };
    for (std::size_t i = 0; i + 1 < SearchedBytes; ++i) {
        const unsigned a = at(i);
        const unsigned b = at(i + 1);
        if (a == 0xFF && TopThreeBitsSet(b)) {
            return RateOf(b, at(i + 2));
        }
        if ((a & 0x0Fu) != 0x0F) {
            continue; // The shifted first byte can't be 0xFF.
        }
        const auto shifted = ShiftByNibble(a, b, at(i + 2));
        if (shifted[0] == 0xFF && TopThreeBitsSet(shifted[1])) {
            // Such a hit is read as it stands, not shifted back.
            return RateOf(at(i + 2), at(i + 3));
        }
    }
    return 0;
}

} // namespace quavernet
