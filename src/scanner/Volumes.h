// Volumes and network roots: which drive a path lies on, and its form on the network. Called by the search,
// the Ogg pass and the drop handlers for the stored form of a path.
#pragma once

#include <string>
#include <vector>

namespace quavernet {

/// The volumes that hold user data, by their mount points.
std::vector<std::string> LogicalDrives();

/// The network root of a drive, with a final "/". Throws RuntimeError 5 for a local drive unless `tolerant`
/// is set; then the drive itself comes back, likewise with a final "/".
std::string UNCPath(const std::string& drive, bool tolerant);

/// The local path behind a network path. A path on a local drive comes back unchanged, and so does one on no
/// drive if `tolerant` is set; otherwise that throws RuntimeError 5.
std::string DrivePath(const std::string& path, bool tolerant);

} // namespace quavernet
