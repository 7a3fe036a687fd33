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

} // namespace quavernet::bench
