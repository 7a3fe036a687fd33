#include "tree/PlaylistFile.h"

#include "app/AudioKind.h"
#include "app/MainModule.h"
#include "platform/TextLines.h"

namespace quavernet {

std::string PlaylistFile(std::string_view line) {
    // The system would cut a path at its first NUL, and find a file that the line does not name.
    if (!line.starts_with('/') || line.find('\0') != std::string_view::npos) {
        return {};
    }
    std::string path(line);
    if (AudioKindOf(path) == AudioKind::None) {
        return {};
    }
    if (services.fileSystem->FileExists(path)) {
        return path;
    }
    std::string decoded = DecodeText(line);
    return decoded != path && services.fileSystem->FileExists(decoded) ? decoded : std::string();
}

} // namespace quavernet
