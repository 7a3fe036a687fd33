// How scan, drops, import and player wait for files and folders that are read ahead: with the window alive
// and the library free.
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
/// nothing left that another program would have to wait for, and calls `beforeStep` each time before.
bool WaitForFolder(const ScanRun& run, FilesAhead* ahead, const std::string& folder);
bool WaitForFile(
    const ScanRun& run, FilesAhead* ahead, const std::string& path, Ahead part,
    const std::function<void()>& beforeStep = [] {});

/// A folder that is listed alone; none of its files is opened. Lives until it has been listed.
class FolderAhead {
public:
    explicit FolderAhead(std::string folder);

    /// Waits until the folder can be listed without a wait. `letEventsRun` is called while it can't, and ends
    /// the wait with false. Commits before if that takes long. Throws RuntimeError if that fails.
    bool WaitForIt(const std::function<bool()>& letEventsRun);

private:
    std::string m_folder;
    std::unique_ptr<FilesAhead> m_ahead;
};

/// The files of a drop or an import. Known ones are not opened: their contents are not read ahead.
class NewFilesAhead {
public:
    /// `toCome` gives the paths that follow, the next one first. Asked once, if at all.
    explicit NewFilesAhead(std::function<std::vector<std::string>()> toCome) : m_toCome(std::move(toCome)) {}

    /// Waits until the file can be looked for, or opened, without a wait. If that takes long, commits what is
    /// written and lets events run, in which nothing else acts. Not to be called inside a WriteLock of the
    /// caller's. Throws RuntimeError if that fails.
    void WaitForFacts(const std::string& path) { WaitFor(path, Ahead::Facts); }
    void WaitForContents(const std::string& path) { WaitFor(path, Ahead::Contents); }

private:
    void WaitFor(const std::string& path, Ahead part);

    std::function<std::vector<std::string>()> m_toCome;
    bool m_hasBegun = false;
    std::unique_ptr<FilesAhead> m_files;
};

} // namespace quavernet
