#include "scanner/ScanDriver.h"

#include "app/EndWord.h"
#include "app/IdleTitle.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/Registry.h"
#include "app/TextHelpers.h"
#include "app/TextNumbers.h"
#include "library/BackUpLibrary.h"
#include "scanner/FileSearch.h"
#include "scanner/GetFilesCount.h"
#include "scanner/OggPass.h"
#include "scanner/PutBack.h"
#include "scanner/ScanRun.h"
#include "scanner/StoreFileRecord.h"

namespace quavernet {

namespace {

// Empty if the user cancelled, or if the standard path is wanted and none is set.
std::string ChooseFolder() {
    if (Val(Setting("ScanpathValue", "0")) == 1) {
        return Setting("Scanpath", "");
    }
    return StripAtNull(services.dialogs->BrowseForFolder(LoadResString(342)).value_or(""));
}

// Nothing if the folder can't be opened, which ends the command without a word.
std::unique_ptr<FolderWalk> OpenFolder(const std::string& folder) {
    try {
        return services.fileSystem->GetFolder(folder);
    } catch (const RuntimeError&) {
        return nullptr;
    }
}

void EnableLogClose(ScanRun& run) {
    if (mainModule.ScanLogEnabled) {
        run.log.EnableClose(true);
    }
}

// The end of a command that scanned nothing. SuppressComboClick stays set: only a whole scan clears it.
void EndWithoutScan(ScanRun& run) {
    run.OggPaths.clear();
    run.work.SetMousePointer(MousePointer::Default);
    run.view.SetControlState(ControlMode::Idle);
    EnableLogClose(run);
    run.work.SetPanel(ScanPanel::Scanning, "");
    run.work.SetTitle(IdleTitle());
}

void TellNothingDone(ScanRun& run, EndWord& end) {
    if (run.work.Cancelled()) {
        run.work.TellEnd(end.Cancelled());
    } else {
        end.Say(LoadResString(Texts::NoFileFound));
        run.work.TellEnd(end.Done());
    }
}

void Prepare(ScanRun& run) {
    for (const Panel panel : ScanPanel::All) {
        run.work.SetPanel(panel, "");
    }
    mainModule.SuppressComboClick = true;
    run.work.SetCancelled(false);
    run.Counts = {};
    const ScanOptions options = run.view.Options();
    run.Recursive = options.Recursive;
    run.QuickScan = options.QuickScan;
    run.texts = {LoadResString(343), LoadResString(344), LoadResString(Texts::RemainingTime),
                 LoadResString(Texts::ElapsedTime), LoadResString(348)};
}

void CountFiles(ScanRun& run, FolderWalk& walk) {
    run.FilesTotal = 0;
    run.StatusDots = run.texts.Initialise;
    run.work.SetPanel(ScanPanel::Scanning, run.StatusDots);
    run.work.DoEvents();
    run.work.SetMousePointer(MousePointer::Hourglass);
    GetFilesCount(run, walk);
    run.work.SetPanel(ScanPanel::Scanning, LoadResString(349));
    run.work.SetMousePointer(MousePointer::Default);
}

void OpenLog(ScanRun& run) {
    if (!mainModule.ScanLogEnabled) {
        return;
    }
    run.log.Show();
    run.log.EnableClose(false);
    run.log.AddLine(LoadResString(350));
    run.log.SelectLastLine();
    run.log.AddLine("");
    run.log.SelectLastLine();
}

void LogLine(ScanRun& run, const std::string& line) {
    if (mainModule.ScanLogEnabled) {
        run.log.AddLine(line);
        run.log.SelectLastLine();
    }
}

void BackUp(ScanRun& run) {
    const std::string noBackup = BackUpLibrary();
    if (!noBackup.empty()) {
        LogLine(run, LoadResString(Texts::NoBackup) + noBackup);
    }
}

void StartCounters(ScanRun& run) {
    mainModule.ScanStartTime = services.clock->Now();
    run.FilesDone = 0;
}

void ScanFiles(ScanRun& run, FolderWalk& walk) {
    run.work.SetCancelled(false);
    run.ScannedMegabytes = 0;
    run.work.SetMousePointer(MousePointer::Hourglass);
    StartCounters(run);
    run.file = mainModule.CurrentFile;
    const PutBack putBack(run.file);
    FileSearch(run, walk);
}

std::string EndOf(const ScanRun& run, EndWord& end) {
    end.Count(run.Counts.New, Texts::NewFiles);
    end.Count(run.Counts.Updated, Texts::UpdatedFiles);
    end.Count(run.Counts.Skipped, Texts::SkippedFiles);
    return run.work.Cancelled() ? end.Cancelled() : end.Done();
}

void Finish(ScanRun& run, EndWord& end) {
    const std::string word = EndOf(run, end);
    run.work.SetMousePointer(MousePointer::Default);
    run.work.SetProgress(0);
    LogLine(run, word); // While the log can't be closed.
    EnableLogClose(run);
    SaveSetting("LastScan", ShortDateText(services.clock->Now(), services.regional));
    run.view.FillDriveCombo();
    run.view.FillAlbumCombo();
    if (!mainModule.LoadOverSearch) {
        run.view.LoadDatabase("");
    }
    mainModule.SuppressComboClick = false;
    run.view.SetControlState(ControlMode::Idle);
    run.work.SetTitle(IdleTitle());
    run.work.SetPanel(ScanPanel::Scanning, "");
    run.OggPaths.clear();
    run.work.TellEnd(word);
}

} // namespace

struct ScanDriver::State {
    State(LongWork& work, ScanView& view, ScanLog& log, OggPass* pass)
        : run(work, view, log), oggPass(pass) {}

    ScanRun run;
    OggPass* oggPass;
};

ScanDriver::ScanDriver(LongWork& work, ScanView& view, ScanLog& log, OggPass* oggPass)
    : m_state(std::make_unique<State>(work, view, log, oggPass)) {}

ScanDriver::~ScanDriver() = default;

void ScanDriver::StartScan() {
    ScanRun& run = m_state->run;
    Prepare(run);
    const std::string folder = ChooseFolder();
    if (folder.empty()) {
        return;
    }
    run.OggPaths.clear();
    run.view.SetControlState(ControlMode::ScanRunning);
    const std::unique_ptr<FolderWalk> counting = OpenFolder(folder);
    if (!counting) {
        EndWithoutScan(run);
        return;
    }
    EndWord end;
    CountFiles(run, *counting);
    if (run.FilesTotal == 0 || run.work.Cancelled()) {
        EndWithoutScan(run);
        TellNothingDone(run, end);
        return;
    }
    OpenLog(run);
    run.ProgressStep = static_cast<float>(100 / run.FilesTotal);
    const std::unique_ptr<FolderWalk> search = OpenFolder(folder);
    if (!search) {
        EndWithoutScan(run);
        return;
    }
    run.view.ClearList();
    BackUp(run);
    ScanFiles(run, *search);
    if (!run.OggPaths.empty()) {
        StartCounters(run);
        if (m_state->oggPass != nullptr) {
            m_state->oggPass->ReadOggBatches(run);
        }
    }
    mainModule.Connection->Commit();
    Finish(run, end);
}

void ScanDriver::Cancel() {
    m_state->run.work.SetCancelled(true);
}

void ScanDriver::StoreFileRecord(CurrentFile& file) {
    quavernet::StoreFileRecord(file, m_state->run.saved);
}

} // namespace quavernet
