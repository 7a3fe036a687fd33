#include "app/AudioKind.h"

#include "platform/Ascii.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace quavernet {

AudioKind AudioKindOf(std::string_view path) {
    constexpr std::array<std::pair<std::string_view, AudioKind>, 3> Kinds{
        {{".mp3", AudioKind::Mp3}, {".wav", AudioKind::Wav}, {".ogg", AudioKind::Ogg}}};
    constexpr std::size_t Length = 4;
    const std::string_view end = path.substr(path.size() < Length ? 0 : path.size() - Length);
    for (const auto& [extension, kind] : Kinds) {
        if (EqualsIgnoringCase(end, extension)) {
            return kind;
        }
    }
    return AudioKind::None;
}

std::vector<std::string> AudioFiles(std::span<const std::string> paths) {
    std::vector<std::string> files;
    std::copy_if(paths.begin(), paths.end(), std::back_inserter(files), &IsAudio);
    return files;
}

} // namespace quavernet
