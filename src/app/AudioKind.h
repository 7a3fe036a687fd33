// The three kinds of audio files that the library takes, by the ends of their names. Whatever is given files
// by name asks here which of them are music.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quavernet {

enum class AudioKind { None, Mp3, Wav, Ogg };

/// By the last four characters of the name or path, ASCII letters without case: ".mp3", ".wav", ".ogg".
AudioKind AudioKindOf(std::string_view path);

inline bool IsAudio(std::string_view path) {
    return AudioKindOf(path) != AudioKind::None;
}

/// Those of the paths that are audio files, in their order.
std::vector<std::string> AudioFiles(std::span<const std::string> paths);

} // namespace quavernet
