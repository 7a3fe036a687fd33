#include "app/MainModule.h"
#include "library/SqlQuote.h"
#include "tree/DropRun.h"

namespace quavernet {

namespace {

struct RowFile {
    std::string File_id;
    std::string Name;
};

RowFile FileOfRow(std::int32_t row) {
    ADODB::Recordset rows;
    rows.Open("Select File_id, Name from Files where Path = '" + SqlQuote(mainModule.FilePaths.Item(row)) +
                  "'",
              *mainModule.Connection);
    RowFile file{rows.Fields(0).Text(), rows.Fields(1).Text()};
    rows.Close();
    return file;
}

std::string CategoryIdForRow(std::string_view category) {
    ADODB::Recordset rows;
    rows.Open("Select Category_id, Category from Categories where Category = '" + std::string(category) + "'",
              *mainModule.Connection);
    std::string id = rows.Fields(0).Text();
    rows.Close();
    return id;
}

void InsertRow(DropRun& run, const RowFile& file, const std::string& categoryId) {
    mainModule.Connection->Execute(
        "Insert Into FileCategories (File_id, Category_id, [Position], Parent, FileName) values (" +
        file.File_id + ", " + categoryId + ", " + std::to_string(run.pos) + ", '" +
        std::string(SqlPlain(run.node.Category)) + "', '" + SqlQuote(file.Name) + "')");
    ++run.entries;
}

// The rows take the entry's place and the ones after it, in the order in which they were selected.
void DropOnEntry(DropRun& run) {
    const RowNumbers& rows = mainModule.SelectedRows;
    mainModule.Connection->Execute("Update FileCategories set [Position] = [Position] + " +
                                   std::to_string(rows.Count()) +
                                   " where ([Position] >= " + std::to_string(run.pos) + " and Parent = '" +
                                   std::string(SqlPlain(run.node.Category)) + "')");
    Advance(run.pos, -1);
    for (const std::int32_t row : rows.Rows()) {
        Advance(run.pos);
        const RowFile file = FileOfRow(row);
        InsertRow(run, file, CategoryIdForRow(SqlQuote(run.node.Category)));
    }
    ADODB::Recordset last;
    last.Open("Select Max(FileCategory_id) from FileCategories", *mainModule.Connection);
    if (last.Fields(0).IsNull()) {
        throw RuntimeError(ErrorNumber::InvalidUseOfNull, "Invalid use of Null");
    }
    run.entryId = Narrow16(last.Fields(0).Number()); // Has 16 bits, and fails after the inserts.
    last.Close();
}

void DropOnCategory(DropRun& run) {
    for (const std::int32_t row : mainModule.SelectedRows.Rows()) {
        const RowFile file = FileOfRow(row);
        InsertRow(run, file, CategoryIdForRow(SqlPlain(run.node.Category)));
        Advance(run.pos);
    }
}

} // namespace

void DropGridRows(DropRun& run) {
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    if (run.watch.HasNews() && !FollowTarget(run)) {
        return;
    }
    if (run.hadFileTarget) {
        DropOnEntry(run);
    } else {
        DropOnCategory(run);
    }
}

} // namespace quavernet
