// Brings the engine's library from the disk into the system's memory before the first file is played. Called
// by main, when the window is there.
#pragma once

#include <string>
#include <vector>

namespace quavernet {

/// Returns at once; a thread that gives way to all others does the rest. The library isn't loaded: that takes
/// 40 MB of the program's memory, which nobody needs who doesn't play anything. From the system's memory it
/// takes 80 ms instead of 350. Where the library or the means are missing nothing happens.
void ReadMediaLibraryAhead();

namespace mpv {

/// Paths of the files that the system's loader would load for a library. Empty if it can't tell.
std::vector<std::string> LoadedFiles(const std::string& library);

} // namespace mpv

} // namespace quavernet
