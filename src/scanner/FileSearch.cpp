#include "scanner/FileSearch.h"

#include "app/AudioKind.h"
#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "inspect/modMp3Info.h"
#include "scanner/FileFields.h"
#include "scanner/FolderOrder.h"
#include "scanner/Lookups.h"
#include "scanner/ProgressStep.h"
#include "scanner/StoreFileRecord.h"
#include "scanner/WaitForRead.h"

#include <utility>

namespace quavernet {

namespace {

enum class Treatment { PassOver, Store, Collect };

Treatment TreatmentOf(std::string_view name, const ScanOptions& options) {
    switch (AudioKindOf(name)) {
    case AudioKind::Mp3:
        return options.ScanMp3 ? Treatment::Store : Treatment::PassOver;
    case AudioKind::Wav:
        return options.ScanWav ? Treatment::Store : Treatment::PassOver;
    case AudioKind::Ogg:
        return options.ScanOgg ? Treatment::Collect : Treatment::PassOver;
    case AudioKind::None:
        break;
    }
    return Treatment::PassOver;
}

void ClearFileFields(CurrentFile& file) {
    file.FileTitle.clear();
    file.FileArtist.clear();
    file.FileQuality.clear();
    file.FileSize.clear();
    file.FileName.clear();
    file.FilePath.clear();
    file.FileDate.clear();
    file.FileDrive.clear();
    file.FileGenre.clear();
    file.FileAlbum.clear();
}

// The entries that the walk passed over; they are named in the scan log alone, and counted in its last line.
void ReportSkipped(ScanRun& run, FolderWalk& walk) {
    const std::vector<SkippedEntry> skipped = walk.TakeSkipped();
    run.Counts.Skipped += skipped.size();
    if (!skipped.empty() && mainModule.ScanLogEnabled) {
        run.log.AddSkipped(skipped);
    }
}

// From bytes to the megabytes that are shown: the sum takes the rounded value.
void CountMegabytes(ScanRun& run) {
    const RegionalSettings& regional = services.regional;
    std::string& size = run.file.FileSize;
    const std::string megabytes = FormatNumber(Val(size) / 1024 / 1024, 2, regional);
    run.ScannedMegabytes += ParseNumber(megabytes, regional).value_or(0);
    size = Trim(megabytes);
}

// What the walk will want of a file, asked ahead of it by other threads. A quick scan opens new files alone,
// and an Ogg file waits for its own pass.
std::function<Ahead(std::string_view)> WantsOf(const ScanRun& run) {
    return [options = run.view.Options(), isQuick = run.QuickScan](std::string_view name) {
        switch (TreatmentOf(name, options)) {
        case Treatment::Store:
            return isQuick ? Ahead::Unsure : Ahead::Contents;
        case Treatment::Collect:
            return Ahead::Facts;
        case Treatment::PassOver:
            break;
        }
        return Ahead::Nothing;
    };
}

// False if the scan was cancelled while it waited for the file.
bool StoreFile(ScanRun& run, FilesAhead* ahead, const FileFacts& facts) {
    CurrentFile& file = run.file;
    FillFileFields(facts, file);
    if (run.QuickScan) {
        const bool known = IsKnownPath(file.FilePath);
        file.CurrentPath = file.FilePath; // A network file is inspected by its network name.
        if (known) {
            ++run.Counts.Skipped;
            run.work.DoEvents();
            return true;
        }
        if (!WaitForFile(run, ahead, facts.path, Ahead::Contents)) {
            ClearFileFields(file);
            return false;
        }
    }
    InspectFile(file.CurrentPath, file);
    run.Counts.AddStored(StoreFileRecord(file, run.saved));
    CountMegabytes(run);
    run.work.DoEvents();
    return true;
}

// False if the walk was cancelled. A wanted file that can't be had any more only moves the bar.
bool VisitFile(ScanRun& run, FolderWalk& walk, FilesAhead* ahead, const std::string& folder,
               const std::string& fileName) {
    mainModule.Connection->CommitIfDue();
    const std::string path = folder.ends_with('/') ? folder + fileName : folder + "/" + fileName;
    const Treatment treatment = TreatmentOf(fileName, run.view.Options());
    std::optional<FileFacts> facts;
    bool isNamed = false; // In the panel: as soon as it is waited for.
    const auto name = [&] {
        if (!std::exchange(isNamed, true)) {
            run.work.SetPanel(ScanPanel::Scanning, run.texts.Scanning + path);
        }
    };
    if (treatment != Treatment::PassOver) {
        const bool isOpened = treatment == Treatment::Store && !run.QuickScan;
        if (!WaitForFile(run, ahead, path, isOpened ? Ahead::Contents : Ahead::Facts, name)) {
            ClearFileFields(run.file);
            return false;
        }
        facts = walk.File(path);
        if (!facts) {
            ReportSkipped(run, walk);
            return true;
        }
    }
    ++run.FilesDone;
    ClearFileFields(run.file);
    if (run.work.Cancelled()) {
        return false;
    }
    name();
    if (treatment == Treatment::Collect) {
        run.OggPaths.push_back(path);
    } else if (treatment == Treatment::Store) {
        return StoreFile(run, ahead, *facts);
    }
    return true;
}

} // namespace

void FileSearch(ScanRun& run, FolderWalk& walk) {
    const std::unique_ptr<FilesAhead> ahead = WalkAheadOf(run, walk.Path(), WantsOf(run));
    FolderOrder folders(walk.Path());
    while (!folders.IsDone()) {
        const std::string folder = folders.Next();
        if (IsExcludedFolder(folder)) {
            continue;
        }
        if (run.work.Cancelled()) {
            return;
        }
        run.work.DoEvents();
        mainModule.Connection->CommitIfDue();
        if (!WaitForFolder(run, ahead.get(), folder)) {
            return;
        }
        FolderContents contents = walk.List(folder);
        ReportSkipped(run, walk);
        for (const FolderFile& file : contents.files) {
            if (!VisitFile(run, walk, ahead.get(), folder, file.name)) {
                return;
            }
            AdvanceProgress(run, run.FilesTotal, run.texts.Remaining, run.texts.Elapsed);
        }
        if (run.Recursive) {
            folders.AddSubFolders(std::move(contents.subFolders));
        }
    }
}

} // namespace quavernet
