// Scans of files that lie on a slow medium: a disk whose files are not in the system's memory, and a share
// that answers late. Called by main.
#pragma once

#include <string>

namespace quavernet::bench {

struct ColdSetting {
    std::string music;
    std::string work;         ///< Where the library is made.
    std::string emptyLibrary; ///< The library as it is at the first start.
    std::string name;         ///< Ends the lines' jobs.
    int rounds = 0;
};

/// First scan and full rescan of a folder on a disk, the system's memory of it emptied before each round. The
/// floor: as many bare readers as the program has, which read what it has to read. Then what whole Ogg files
/// cost beside their heads and tails. Throws std::runtime_error if the memory can't be emptied.
void ColdJobs(const ColdSetting& setting);

/// The same scans with the files in the system's memory, beside themselves without reading ahead.
void WarmJobs(const ColdSetting& setting);

/// First scan and full rescan of a share beside one bare reader.
void ShareJobs(const ColdSetting& setting);

} // namespace quavernet::bench
