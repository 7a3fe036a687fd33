// The groups of jobs that main runs.
#pragma once

#include "Table.h"

#include <string>
#include <vector>

namespace quavernet::bench {

struct Setting {
    std::string music;    ///< Folder of the files to scan.
    std::string work;     ///< Folder for libraries; on a disk.
    std::string library;  ///< The empty template library.
    std::size_t rows = 0; ///< Rows of the list's library.
    int rounds = 0;
};

/// First scan, quick and full scan of the same files again.
std::vector<Line> ScanJobs(const Setting& setting);

/// The list in its six orders, search, letter and the filter combos.
std::vector<Line> ListJobs(const Setting& setting);

/// Makes a library of `setting.rows` rows at a path that is free, from the template.
void MakeLibrary(const Setting& setting, const std::string& path);

/// The reader of Ogg files, ten files a call as in a scan, beside bare reads and beside ogginfo itself.
/// `music` holds nothing but intact Ogg files.
std::vector<Line> OggJobs(const std::string& music, int rounds);

} // namespace quavernet::bench
