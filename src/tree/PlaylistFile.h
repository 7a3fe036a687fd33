// Which file a line of a playlist names, and the line that names a file. Asked by the drop of a playlist on
// the tree, by the player and by the writer of playlists.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace quavernet {

/// The path as it stands. One with a line break in it would be cut into lines that name other files: it is
/// written as an address, "file://" and the path with all but plain letters in percent signs, which other
/// players understand too.
std::string LineOfFile(const std::string& path);

/// Whether there is a plain file under a path.
using FileQuestion = std::function<bool(const std::string& path)>;
bool FileExists(const std::string& path);

/// The path of the plain file that the line names in full, or an empty text if there is none: an address, a
/// relative path or one with "//" or "/./" in it, which are not looked for at all, or a file that is missing.
/// The bytes are taken as they are if such a file exists, and else as Windows-1252 unless they are UTF-8. An
/// address counts if it is just what LineOfFile writes.
/// Never fails.
std::string FileOfLine(std::string_view line, const FileQuestion& exists = FileExists);

/// The same for an audio file; an empty text for another kind.
std::string PlaylistFile(std::string_view line, const FileQuestion& exists = FileExists);

} // namespace quavernet
