// The facts of a wave file. Called by ReadAudioInfo.
// Format: RIFF/WAVE, "Multimedia Programming Interface and Data Specifications 1.0" (IBM, Microsoft, 1991).
#pragma once

#include "inspect/FileBytes.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace quavernet {

/// Values as they stand in the file; nothing is checked for sense.
struct WaveFacts {
    std::uint32_t samplesPerSecond = 0;
    std::uint32_t averageBytesPerSecond = 0;
    std::uint32_t dataBytes = 0; ///< Declared size of the data chunk, also if the file is cut off.
    std::uint16_t channels = 0;
    std::uint16_t bitsPerSample = 0;
};

/// Nothing if the file is no RIFF/WAVE (RIFX is none) or lacks a format or a data chunk.
std::optional<WaveFacts> ParseWave(const FileBytes& file);
std::optional<WaveFacts> ParseWave(std::span<const std::byte> contents);

} // namespace quavernet
