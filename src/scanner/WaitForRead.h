// How scan, drops and import wait for files that are read ahead: with the window alive and the library free.
#pragma once

#include "platform/ReadAhead.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quavernet {

struct ScanRun;

/// The walk of a scan that is about to begin. What it will want of each file is asked of `wants`, on any
/// thread. Null where nothing is read ahead.
std::unique_ptr<FilesAhead> WalkAheadOf(const ScanRun& run, const std::string& folder,
                                        std::function<Ahead(std::string_view name)> wants);

/// Wait until a folder of the scan can be listed, or a file asked for its facts or opened, without a wait.
/// False if the scan was cancelled meanwhile. `ahead` may be null. Lets events run if that takes long, with
/// nothing left that another program would have to wait for.
bool WaitForFolder(const ScanRun& run, FilesAhead* ahead, const std::string& folder);
bool WaitForFile(const ScanRun& run, FilesAhead* ahead, const std::string& path, Ahead part);

/// The files of a drop or an import. Known ones are not opened, so that reading ahead begins at the first
/// that is new.
class NewFilesAhead {
public:
    /// `toCome` gives the paths that follow, the next one first. Asked once, if at all.
    explicit NewFilesAhead(std::function<std::vector<std::string>()> toCome) : m_toCome(std::move(toCome)) {}

    /// Waits until the file can be opened without a wait. The caller has committed what it has written. Lets
    /// events run if that takes long.
    void WaitFor(const std::string& path);

private:
    std::function<std::vector<std::string>()> m_toCome;
    bool m_hasBegun = false;
    std::unique_ptr<FilesAhead> m_files;
};

} // namespace quavernet
