// The folder of files that the program hands to others and never needs again. Called by the writers of
// playlists that are played at once.
#pragma once

#include <string>

namespace quavernet {

/// The folder that the environment names in TMPDIR, if that is a full path, else "/tmp"; with its final "/".
std::string GetTempDir();

} // namespace quavernet
