#include "scanner/FileSearch.h"

#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "inspect/modMp3Info.h"
#include "library/SqlQuote.h"
#include "scanner/FileFields.h"
#include "scanner/FolderOrder.h"
#include "scanner/ProgressStep.h"
#include "scanner/StoreFileRecord.h"

namespace quavernet {

namespace {

enum class Treatment { PassOver, Store, Collect };

Treatment TreatmentOf(const std::string& name, const ScanOptions& options) {
    const std::string ext = UpperAscii(RightCharacters(name, 4));
    if (ext == ".OGG" && options.ScanOgg) {
        return Treatment::Collect;
    }
    const bool wanted = (ext == ".MP3" && options.ScanMp3) || (ext == ".WAV" && options.ScanWav);
    return wanted ? Treatment::Store : Treatment::PassOver;
}

void ClearFileFields() {
    CurrentFile& current = mainModule.CurrentFile;
    current.FileTitle.clear();
    current.FileArtist.clear();
    current.FileQuality.clear();
    current.FileSize.clear();
    current.FileName.clear();
    current.FilePath.clear();
    current.FileDate.clear();
    current.FileDrive.clear();
    current.FileGenre.clear();
    current.FileAlbum.clear();
}

// The entries that the walk passed over; they are named in the scan log alone.
void ReportSkipped(ScanRun& run, FolderWalk& walk) {
    const std::vector<SkippedEntry> skipped = walk.TakeSkipped();
    if (!skipped.empty() && mainModule.ScanLogEnabled) {
        run.log.AddSkipped(skipped);
    }
}

bool IsKnown(const std::string& filePath) {
    ADODB::Recordset known;
    known.Open("Select Path from Files where Path = '" + SqlQuote(filePath) + "'", *mainModule.Connection);
    const bool found = known.RecordCount() > 0;
    known.Close();
    return found;
}

// From bytes to the megabytes that are shown: the sum takes the rounded value.
void CountMegabytes(ScanRun& run) {
    const RegionalSettings& regional = services.regional;
    std::string& size = mainModule.CurrentFile.FileSize;
    const std::string megabytes = FormatNumber(Val(size) / 1024 / 1024, 2, regional);
    run.ScannedMegabytes += ParseNumber(megabytes, regional).value_or(0);
    size = Trim(megabytes);
}

void StoreFile(ScanRun& run, const FileFacts& file) {
    CurrentFile& current = mainModule.CurrentFile;
    FillFileFields(file);
    if (run.QuickScan) {
        const bool known = IsKnown(current.FilePath);
        current.CurrentPath = current.FilePath; // A network file is inspected by its network name.
        if (known) {
            run.work.DoEvents();
            return;
        }
    }
    InspectFile(current.CurrentPath);
    StoreFileRecord(run.saved);
    CountMegabytes(run);
    run.work.DoEvents();
}

// False if the walk was cancelled. A wanted file that can't be had any more only moves the bar.
bool VisitFile(ScanRun& run, FolderWalk& walk, const std::string& folder, const std::string& name) {
    mainModule.Connection->CommitIfDue();
    const std::string path = folder.ends_with('/') ? folder + name : folder + "/" + name;
    const Treatment treatment = TreatmentOf(name, run.view.Options());
    std::optional<FileFacts> file;
    if (treatment != Treatment::PassOver) {
        file = walk.File(path);
        if (!file) {
            ReportSkipped(run, walk);
            return true;
        }
    }
    ++run.FilesDone;
    ClearFileFields();
    if (run.work.Cancelled()) {
        return false;
    }
    run.work.SetPanel(ScanPanel::Scanning, run.texts.Scanning + path);
    if (treatment == Treatment::Collect) {
        run.OggPaths.push_back(path);
    } else if (treatment == Treatment::Store) {
        StoreFile(run, *file);
    }
    return true;
}

} // namespace

void FileSearch(ScanRun& run, FolderWalk& walk) {
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
        FolderContents contents = walk.List(folder);
        ReportSkipped(run, walk);
        for (const FolderFile& file : contents.files) {
            if (!VisitFile(run, walk, folder, file.name)) {
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
