#include "app/AudioKind.h"
#include "app/CurrentFile.h"
#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "library/FirstField.h"
#include "library/SqlQuote.h"
#include "platform/RegionalSettings.h"
#include "scanner/AddDroppedFiles.h"
#include "scanner/Lookups.h"
#include "scanner/PutBack.h"
#include "scanner/WaitForRead.h"
#include "tree/DropRun.h"
#include "tree/NodeKey.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>

namespace quavernet {

namespace {

std::string IdOfTarget(const std::string& category) {
    ADODB::Recordset rows;
    rows.Open("Select Category_id from Categories where Category = '" + category + "'",
              *mainModule.Connection);
    std::string id = rows.Fields(0).Text();
    rows.Close();
    return id;
}

// Called when the entry under the mouse may have another position, and so may the free places before it. They
// are still there if the other program has added or deleted entries; if it has moved this very entry they are
// elsewhere, and one place is made for the next file. False if there is no position for that.
bool KeepRoom(DropRun& run) {
    if (run.room == 0) {
        return true;
    }
    const std::string inCategory = " and Parent = '" + std::string(SqlPlain(run.node.Category)) + "'";
    const std::string target = std::to_string(run.pos + run.room);
    const std::string taken = FirstField(
        "Select Count(FileCategory_id) from FileCategories where [Position] >= " + std::to_string(run.pos) +
        " and [Position] < " + target + inCategory);
    if (run.pos > 0 && taken == "0") {
        return true;
    }
    if (run.pos + run.room >= std::numeric_limits<std::int16_t>::max()) {
        return false;
    }
    run.pos = static_cast<std::int16_t>(run.pos + run.room);
    run.room = 1;
    mainModule.Connection->Execute(
        "Update FileCategories set [Position] = [Position] + 1 where [Position] >= " + target + inCategory);
    return true;
}

// The places are made by Parent. An entry of the category that names another one is not moved by them.
bool MovesWithRoom(const DropRun& run) {
    ADODB::Recordset rows;
    rows.Open("Select FileCategory_id from FileCategories where FileCategory_id = " +
                  GetFileCategoryIdFromKey(run.node.Key) + " and Parent = '" + SqlQuote(run.node.Category) +
                  "'",
              *mainModule.Connection);
    return rows.RecordCount() > 0;
}

void SkipRest(DropRun& run, std::size_t from) {
    run.skipped += run.request.Files.size() - from;
}

} // namespace

void Advance(std::int16_t& pos, int by) {
    pos = Narrow16(static_cast<double>(pos) + by);
}

void TakeFileTarget(DropRun& run) {
    run.hadFileTarget = true;
    run.pos = Narrow16(Val(PositionFromKey(run.node.Key)));
}

bool FollowTarget(DropRun& run) {
    if (run.hadFileTarget) {
        const auto position = PositionNow(GetFileCategoryIdFromKey(run.node.Key), run.node.Category);
        if (!position || !MovesWithRoom(run)) {
            return position.has_value();
        }
        run.pos = Narrow16(Val(*position) - run.room);
        return KeepRoom(run);
    }
    const auto children = ChildrenNow(run.node.Category);
    if (children) {
        run.pos = Narrow16(static_cast<double>(*children) + 1);
    }
    return children.has_value();
}

std::string StoreIfUnknown(DropRun& run, const std::string& path, CurrentFile& file, NewFilesAhead& ahead,
                           std::optional<ADODB::WriteLock>& writeLock) {
    const bool isKnown = IsKnownPath(path);
    const PutBack putBack(file);
    file.CurrentPath = path;
    file.DetailsPath = path;
    if (!isKnown) {
        run.fileAdded = true;
        ++run.stored;
        // No other program waits while this file is read, and its failure takes back nothing.
        writeLock.reset();
        mainModule.Connection->Commit();
        const FileFacts facts = InspectDroppedFile(path, file, ahead);
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
    const auto fileCount = std::count_if(paths.begin(), paths.end(), &IsAudio);
    CurrentFile file = mainModule.CurrentFile;
    std::size_t i = 0;
    NewFilesAhead ahead([&] { return AudioFiles(std::span(paths).subspan(i)); });
    for (; i < paths.size(); ++i) {
        const std::string& path = paths[i];
        if (!IsAudio(path)) {
            ++run.skipped;
            continue;
        }
        const std::string category(SqlPlain(run.node.Category));
        std::optional<ADODB::WriteLock> writeLock(*mainModule.Connection);
        if (run.watch.HasNews() && !FollowTarget(run)) {
            SkipRest(run, i);
            return;
        }
        std::string categoryId = IdOfTarget(category);
        if (run.hadFileTarget) {
            // Once for every file, and each time by the count of all: what is after the new entries moves far
            // enough for any order in which they come, and the gap that remains shows nowhere.
            mainModule.Connection->Execute(
                "Update FileCategories set [Position] = [Position] + " + std::to_string(fileCount) +
                " where ([Position] >= " + std::to_string(run.pos) + " and Parent = '" + category + "')");
            run.room += static_cast<int>(fileCount);
        }
        const std::string stored = StoreIfUnknown(run, path, file, ahead, writeLock);
        if (!writeLock) {
            writeLock.emplace(*mainModule.Connection);
            if (run.watch.HasNews()) {
                if (!FollowTarget(run)) {
                    SkipRest(run, i + 1);
                    return;
                }
                categoryId = IdOfTarget(category); // It may have been made again.
            }
        }
        InsertEntryOfPath(run, stored, categoryId, category);
        Advance(run.pos);
        run.room -= run.hadFileTarget ? 1 : 0;
    }
}

} // namespace quavernet
