// Which file a line of a playlist names. Asked by the drop of a playlist on the tree and by the player.
#pragma once

#include <string>
#include <string_view>

namespace quavernet {

/// The path of the plain file that the line names in full, or an empty text if there is none: an address, a
/// relative path or one with "//" or "/./" in it, which are not looked for at all, or a file that is missing.
/// The bytes are taken as they are if such a file exists, and else as Windows-1252 unless they are UTF-8.
/// Never fails.
std::string FileOfLine(std::string_view line);

/// The same for an audio file; an empty text for another kind.
std::string PlaylistFile(std::string_view line);

} // namespace quavernet
