#include "tree/PlaylistFile.h"

#include "app/AudioKind.h"
#include "app/MainModule.h"
#include "platform/TextLines.h"

namespace quavernet {

namespace {

// A path as the library keeps it. The system would cut one at its first NUL, and find a file that the line
// does not name.
bool IsFullPath(std::string_view line) {
    return line.starts_with('/') && line.find('\0') == std::string_view::npos &&
           line.find("//") == std::string_view::npos && line.find("/./") == std::string_view::npos;
}

} // namespace

std::string FileOfLine(std::string_view line) {
    if (!IsFullPath(line)) {
        return {};
    }
    std::string path(line);
    if (services.fileSystem->FileExists(path)) {
        return path;
    }
    std::string decoded = DecodeText(line);
    return decoded != path && services.fileSystem->FileExists(decoded) ? decoded : std::string();
}

std::string PlaylistFile(std::string_view line) {
    return AudioKindOf(line) == AudioKind::None ? std::string() : FileOfLine(line);
}

} // namespace quavernet
