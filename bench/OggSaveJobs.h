// Saves of the comments of an Ogg file beside a bare copy of the file that is brought to the disk, which is
// the least that a save takes which a kill can't tear. main runs it.
#pragma once

#include <string>

namespace quavernet::bench {

/// Measures and prints one line for each kind of save. `song` is an Ogg Vorbis file; `work` a folder on the
/// disk.
void OggSaveJobs(const std::string& song, const std::string& work, int rounds);

} // namespace quavernet::bench
