// First scan, quick and full scan of the same files again, beside bare reads and writes of the same. The
// program's own scan comes from the caller: with the real window or without any.
#pragma once

#include "Lines.h"

#include <string>

namespace quavernet::bench {

/// Who scans. The folder to scan and the options but the quick one are the scanner's own.
class Scanner {
public:
    virtual ~Scanner() = default;
    virtual void OpenEmpty() = 0; ///< A fresh copy of the template library.
    virtual void Scan(bool quick) = 0;
    virtual void Close() = 0; ///< Leaves the library to others.
    virtual std::string LibraryPath() const = 0;

    /// The list of what a scan has stored, as its end shows it; nothing where nobody sees it.
    virtual Timed ListAtEnd() { return {}; }
};

struct ScanSetting {
    std::string music; ///< Folder of the files to scan.
    std::string work;  ///< Folder for the floor's library; on the same disk as the scanner's.
    std::string name;  ///< After each job's own, for example ", window and log".
    int rounds = 0;
};

/// Measures and prints the three lines, and what a first scan must do that is not in its floor. Ogg files are
/// left out: their pass has a benchmark of its own.
void ScanJobs(const ScanSetting& setting, Scanner& scanner);

/// A library file and what the engine keeps beside it.
void RemoveLibrary(const std::string& path);

} // namespace quavernet::bench
