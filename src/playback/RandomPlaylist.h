// The playlist of a random play in the external player, "Random.m3u" in the temporary folder. Written and
// started by the random plays of the library and of a category.
#pragma once

#include "playback/PlaylistWriter.h"

#include <functional>
#include <string>

namespace quavernet {

/// Adds the file of an id; false if there is none.
bool AddRandomFile(PlaylistWriter& playlist, const std::string& fileId);

/// Writes what `fill` adds, and hands the file to the external player. A failure shows a box. Lets events run
/// only while a box is open.
void PlayRandomPlaylist(const std::function<void(PlaylistWriter&)>& fill);

} // namespace quavernet
