#include "app/AudioKind.h"
#include "app/CurrentFile.h"
#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "library/SqlQuote.h"
#include "platform/RegionalSettings.h"
#include "scanner/AddDroppedFiles.h"
#include "scanner/Lookups.h"
#include "scanner/PutBack.h"
#include "tree/DropRun.h"
#include "tree/NodeKey.h"

#include <algorithm>
#include <optional>

namespace quavernet {

namespace {

bool IsAudio(const std::string& path) {
    return AudioKindOf(path) != AudioKind::None;
}

std::string IdOfTarget(const std::string& category) {
    ADODB::Recordset rows;
    rows.Open("Select Category_id from Categories where Category = '" + category + "'",
              *mainModule.Connection);
    std::string id = rows.Fields(0).Text();
    rows.Close();
    return id;
}

} // namespace

void Advance(std::int16_t& pos, int by) {
    pos = Narrow16(static_cast<double>(pos) + by);
}

void TakeFileTarget(DropRun& run) {
    run.hadFileTarget = true;
    run.pos = Narrow16(Val(PositionFromKey(run.node.Key)));
}

std::string StoreIfUnknown(DropRun& run, const std::string& path, CurrentFile& file) {
    const bool isKnown = IsKnownPath(path);
    const PutBack putBack(file);
    file.CurrentPath = path;
    file.DetailsPath = path;
    if (!isKnown) {
        run.fileAdded = true;
        ++run.stored;
        // No other program waits while this file is read, and its failure takes back nothing.
        mainModule.Connection->Commit();
        const FileFacts facts = InspectDroppedFile(path, file);
        // The date that comes next is read with failures passed over, and this ends the drop's own way with
        // failures.
        run.failuresEndDrop = false;
        StoreDroppedFile(facts, file, run.driver);
    }
    // A path that is not in its normal form ("/m//a.mp3") is stored in it.
    return file.CurrentPath;
}

void InsertEntryOfPath(DropRun& run, const std::string& path, std::string_view categoryId,
                       std::string_view quotedParent) {
    ADODB::Recordset rows;
    rows.Open("Select File_id, Name from Files where Path = '" + SqlQuote(path) + "'",
              *mainModule.Connection);
    const std::string fileId(Trim(rows.Fields(0).Text()));
    const std::string name = SqlQuote(rows.Fields(1).Text());
    rows.Close();
    mainModule.Connection->Execute(
        "Insert Into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (" + fileId +
        ", " + std::string(categoryId) + ", " + std::to_string(run.pos) + ", '" + std::string(quotedParent) +
        "', '" + name + "')");
    ++run.entries;
}

void DropFiles(DropRun& run) {
    if (KindOfKey(run.node.Key) == NodeKind::File) {
        TakeFileTarget(run);
    } else {
        run.pos = Narrow16(static_cast<double>(run.node.Children) + 1);
    }
    const std::vector<std::string>& paths = run.request.Files;
    const std::string fileCount = std::to_string(std::count_if(paths.begin(), paths.end(), IsAudio));
    CurrentFile file = mainModule.CurrentFile;
    for (const std::string& path : paths) {
        if (!IsAudio(path)) {
            ++run.skipped;
            continue;
        }
        const std::string category(SqlPlain(run.node.Category));
        std::optional<ADODB::WriteLock> writeLock(*mainModule.Connection);
        const std::string categoryId = IdOfTarget(category);
        if (run.hadFileTarget) {
            // Once for every file, and each time by the count of all: what is after the new entries moves far
            // enough for any order in which they come, and the gap that remains shows nowhere.
            mainModule.Connection->Execute("Update FileCategories set [Position] = [Position] + " +
                                           fileCount + " where ([Position] >= " + std::to_string(run.pos) +
                                           " and Parent = '" + category + "')");
        }
        writeLock.reset();
        const std::string stored = StoreIfUnknown(run, path, file);
        writeLock.emplace(*mainModule.Connection);
        InsertEntryOfPath(run, stored, categoryId, category);
        Advance(run.pos);
    }
}

} // namespace quavernet
