#include "scanner/GetFilesCount.h"

#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "scanner/FolderOrder.h"
#include "scanner/WaitForRead.h"

namespace quavernet {

namespace {

constexpr std::size_t DotLimit = 101; ///< Characters at which the dots start over.

// The kept text is one dot shorter than the panel, so the panel is read again: a text that an event handler
// has put there grows on.
void AddDot(ScanRun& run) {
    if (CharacterCount(run.StatusDots) < DotLimit) {
        run.StatusDots = run.work.PanelText(ScanPanel::Scanning);
        run.work.SetPanel(ScanPanel::Scanning, run.StatusDots + ".");
    } else {
        run.StatusDots = run.texts.Initialise;
        run.work.SetPanel(ScanPanel::Scanning, run.StatusDots);
    }
}

} // namespace

void GetFilesCount(ScanRun& run, FolderWalk& walk) {
    const auto ahead = WalkAheadOf(run, walk.Path(), [](std::string_view) { return Ahead::Nothing; });
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
        if (!WaitForFolder(run, ahead.get(), folder)) {
            return;
        }
        FolderContents contents = walk.List(folder);
        for (const FolderFile& file : contents.files) {
            if (!file.hidden) {
                AddDot(run);
                run.FilesTotal += 1;
            }
        }
        if (run.Recursive) {
            folders.AddSubFolders(std::move(contents.subFolders));
        }
    }
}

} // namespace quavernet
