// Saves of an ID3v2 tag beside bare writes that are brought to the disk: over the tag's own room where the
// new tag fits into it, of the whole file where it does not. main runs it.
#pragma once

#include <string>

namespace quavernet::bench {

/// Measures and prints one line for each kind of save. `song` is an MP3 file with a tag; `work` a folder on
/// the disk.
void TagSaveJobs(const std::string& song, const std::string& work, int rounds);

} // namespace quavernet::bench
