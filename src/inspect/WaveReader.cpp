#include "inspect/WaveReader.h"

#include "platform/ByteOrder.h"

#include <array>
#include <cstring>

namespace quavernet {

namespace {

constexpr std::uint64_t RiffHeaderSize = 12;
constexpr std::uint64_t ChunkHeaderSize = 8;
constexpr std::uint32_t FormatSize = 16; // Least size of a format chunk that tells the bits per sample.
constexpr int ChunkLimit = 1024;         // Real files hold a dozen; a hostile one must not cost more reads.

bool Spells(std::span<const std::byte> bytes, std::size_t offset, const char* mark) {
    return std::memcmp(bytes.data() + offset, mark, 4) == 0;
}

bool ReadFormat(const FileBytes& file, std::uint64_t offset, WaveFacts& facts) {
    std::array<std::byte, FormatSize> format;
    if (!file.ReadAt(offset, format)) {
        return false;
    }
    facts.channels = LittleEndian<std::uint16_t>(format, 2);
    facts.samplesPerSecond = LittleEndian<std::uint32_t>(format, 4);
    facts.averageBytesPerSecond = LittleEndian<std::uint32_t>(format, 8);
    facts.bitsPerSample = LittleEndian<std::uint16_t>(format, 14);
    return true;
}

} // namespace

std::optional<WaveFacts> ParseWave(const FileBytes& file) {
    std::array<std::byte, RiffHeaderSize> riff;
    if (!file.ReadAt(0, riff) || !Spells(riff, 0, "RIFF") || !Spells(riff, 8, "WAVE")) {
        return std::nullopt;
    }
    WaveFacts facts;
    bool hasFormat = false;
    bool hasData = false;
    std::uint64_t offset = RiffHeaderSize;
    for (int i = 0; i < ChunkLimit && !(hasFormat && hasData); ++i) {
        std::array<std::byte, ChunkHeaderSize> chunk;
        if (!file.ReadAt(offset, chunk)) {
            return std::nullopt;
        }
        const std::uint32_t size = LittleEndian<std::uint32_t>(chunk, 4);
        if (!hasFormat && Spells(chunk, 0, "fmt ")) {
            if (size < FormatSize || !ReadFormat(file, offset + ChunkHeaderSize, facts)) {
                return std::nullopt;
            }
            hasFormat = true;
        } else if (!hasData && Spells(chunk, 0, "data")) {
            facts.dataBytes = size;
            hasData = true;
        }
        offset += ChunkHeaderSize + size + (size & 1); // Chunks begin at even offsets.
    }
    return hasFormat && hasData ? std::optional(facts) : std::nullopt;
}

std::optional<WaveFacts> ParseWave(std::span<const std::byte> contents) {
    return ParseWave(FileBytes(contents));
}

} // namespace quavernet
