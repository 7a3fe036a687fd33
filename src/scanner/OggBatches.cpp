#include "scanner/OggBatches.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextNumbers.h"
#include "inspect/OggInfoText.h"
#include "library/SqlQuote.h"
#include "platform/LibraryError.h"
#include "scanner/Lookups.h"
#include "scanner/OggStore.h"
#include "scanner/ProgressStep.h"
#include "scanner/ScanRun.h"
#include "scanner/WaitForRead.h"

#include <algorithm>

namespace quavernet {

namespace {

constexpr std::size_t BatchSize = 10;

// The step at the end of a batch speaks German in every language.
constexpr const char* BatchRemaining = "verbl.: ";
constexpr const char* BatchElapsed = "Zeit: ";

bool IsKnownOgg(const std::string& path) {
    return FindsRow("Select * from Files where Path = '" + SqlQuote(path) + "'");
}

/// The paths of a batch that are to be read: in a quick scan those that the library does not hold.
std::vector<std::string> WantedPaths(ScanRun& run, std::size_t first, std::size_t last) {
    std::vector<std::string> paths;
    for (std::size_t i = first; i < last; ++i) {
        if (!run.QuickScan || !IsKnownOgg(run.OggPaths[i])) {
            paths.push_back(run.OggPaths[i]);
        } else {
            ++run.Counts.Skipped;
        }
    }
    return paths;
}

void Drop(ScanRun& run, const std::string& path, const std::string& reason,
          SkippedEntry::Kind kind = SkippedEntry::Kind::Unreadable) {
    ++run.Counts.Skipped;
    if (mainModule.ScanLogEnabled) {
        run.log.AddSkipped({{path, reason, kind}});
    }
}

SkippedEntry::Kind MissingOrUnreadable(const std::string& path) {
    return services.fileSystem->FileExists(path) ? SkippedEntry::Kind::NoAccess : SkippedEntry::Kind::Missing;
}

// Without a bit rate a statement of the store is incomplete. The engine's words for that tell a reader
// nothing.
SkippedEntry::Kind KindOfFailure(const OggFileInfo& file) {
    const bool noBitRate = file.bitRate.empty() && services.fileSystem->FileExists(file.path);
    return noBitRate ? SkippedEntry::Kind::NoBitRate : SkippedEntry::Kind::Unreadable;
}

void StoreOrDrop(ScanRun& run, const OggFileInfo& file) {
    if (!file.failure.empty()) {
        Drop(run, file.path, file.failure);
        return;
    }
    OggRecord record{file.title, file.performer, file.bitRate, file.length, file.name, file.path, file.size,
                     {},         file.genre,     {},           file.album};
    try {
        run.Counts.AddStored(StoreOggRecord(record, run.saved));
    } catch (const LibraryError&) {
        throw; // No fault of this file: a full disk, a lock.
    } catch (const RuntimeError& error) {
        Drop(run, file.path, error.Description(), KindOfFailure(file));
    }
}

void Step(ScanRun& run, const std::string& remainingPrefix, const std::string& elapsedPrefix) {
    ++run.FilesDone;
    AdvanceProgress(run, static_cast<double>(run.OggPaths.size()), remainingPrefix, elapsedPrefix);
}

// In a quick scan only new files are opened.
std::unique_ptr<FilesAhead> FilesAheadOf(const ScanRun& run) {
    if (services.readAhead == nullptr) {
        return nullptr;
    }
    return services.readAhead->Files(run.OggPaths, run.QuickScan ? Ahead::Unsure : Ahead::Contents,
                                     BatchSize);
}

// False if the scan was cancelled before all of the batch could be read.
bool WaitForBatch(const ScanRun& run, FilesAhead* ahead, const std::vector<std::string>& paths) {
    return std::all_of(paths.begin(), paths.end(), [&](const std::string& path) {
        return WaitForFile(run, ahead, path, Ahead::Contents);
    });
}

// False if the scan was cancelled before the batch could be read.
bool ReadBatch(ScanRun& run, FilesAhead* ahead, const std::vector<std::string>& paths) {
    run.work.SetPanel(ScanPanel::Scanning, LoadResString(353));
    if (!WaitForBatch(run, ahead, paths)) {
        return false;
    }
    // Whole files are read, maybe from a slow disk: nobody has to wait for that to write into the library.
    mainModule.Connection->Commit();
    const std::vector<OggFileInfo> files = ReadOggInfo(services.oggInfo->Run(paths));
    for (std::size_t i = 0; i < files.size(); ++i) {
        StoreOrDrop(run, files[i]);
        if (i + 1 < files.size()) {
            Step(run, run.texts.Remaining, run.texts.Elapsed);
        }
    }
    Step(run, BatchRemaining, BatchElapsed);

    // A file that vanished or may not be read has no record of its own.
    for (const std::string& path : paths) {
        const auto isOf = [&](const OggFileInfo& file) { return file.path == path; };
        if (std::none_of(files.begin(), files.end(), isOf)) {
            mainModule.Connection->CommitIfDue();
            Drop(run, path, {}, MissingOrUnreadable(path));
        }
    }
    return true;
}

} // namespace

void OggBatches::ReadOggBatches(ScanRun& run) {
    run.work.SetPanel(ScanPanel::Scanning, LoadResString(352));
    run.work.SetProgress(0);
    run.ProgressStep = static_cast<float>(100 / static_cast<double>(run.OggPaths.size()));
    const std::size_t count = run.OggPaths.size();
    const std::unique_ptr<FilesAhead> ahead = FilesAheadOf(run);
    for (std::size_t first = 0; first < count; first += BatchSize) {
        if (run.work.Cancelled()) {
            return;
        }
        run.work.DoEvents();
        const std::size_t last = std::min(first + BatchSize, count);
        const std::size_t skippedBefore = run.Counts.Skipped;
        const std::vector<std::string> paths = WantedPaths(run, first, last);
        if (paths.empty()) {
            run.Counts.Skipped += count - last; // Nobody looks at the rest.
            return;
        }
        if (!ReadBatch(run, ahead.get(), paths)) {
            run.Counts.Skipped = skippedBefore; // As if it had been cancelled before the batch.
            return;
        }
    }
    run.work.SetPanel(ScanPanel::Remaining, LoadResString(Texts::RemainingTime) + "00:00:00");
    run.work.SetPanel(ScanPanel::Elapsed, LoadResString(Texts::ElapsedTime) + "00:00:00");
    run.work.SetProgress(0);
}

} // namespace quavernet
