// The second way to a bit rate, for a first frame that names none. Called by ReadAudioInfo.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace quavernet {

/// Bit rate in kilobits per second from the first pattern in the first 4096 bytes that looks like a frame
/// header of any version and layer, also one that begins half a byte late. 0 if there is none, if its bit
/// rate index names none, or if the file is shorter than 4096 bytes.
std::int16_t SearchBitRate(std::span<const std::byte> head);

} // namespace quavernet
