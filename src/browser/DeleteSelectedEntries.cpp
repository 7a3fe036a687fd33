#include "browser/DeleteSelectedEntries.h"

#include "app/LibraryViews.h"
#include "app/LongWork.h"
#include "app/MainModule.h"
#include "browser/GridSelection.h"
#include "library/SqlQuote.h"

#include <string>
#include <vector>

namespace quavernet {

namespace {

// The entries are read once, and the positions in hand are not lowered by the gaps that close meanwhile: of a
// file that is twice in one category the later entry is missed, and stays as one that no tree shows.
void DeleteEntriesOf(const std::string& fileId) {
    ADODB::Recordset entries;
    entries.Open("Select Parent, [Position] from FileCategories where File_id = " + fileId,
                 *mainModule.Connection);
    for (; !entries.Eof(); entries.MoveNext()) {
        const std::string parent(SqlPlain(entries.Fields(0).Text()));
        const std::string position = entries.Fields(1).Text();
        mainModule.Connection->Execute("Delete from FileCategories where ([Position] = " + position +
                                       " and File_id = " + fileId + " and Parent = '" + parent + "')");
        mainModule.Connection->Execute(
            "Update FileCategories set [Position] = [Position] - 1 where ([Position] > " + position +
            " and Parent = '" + parent + "')");
    }
    entries.Close();
}

void DeleteFile(const std::string& path) {
    const std::string wherePath = " where Path = '" + SqlQuote(path) + "'";
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    ADODB::Recordset file;
    file.Open("Select File_id from Files" + wherePath, *mainModule.Connection);
    if (file.RecordCount() == 0) {
        return; // This command inside itself, or another running program, was faster.
    }
    const std::string fileId = file.Fields(0).Text();
    file.Close();
    mainModule.Connection->Execute("Delete from Files" + wherePath);
    DeleteEntriesOf(fileId);
}

std::vector<std::string> SelectedPaths() {
    std::vector<std::string> paths;
    for (const std::int32_t row : mainModule.SelectedRows.Rows()) {
        paths.push_back(mainModule.FilePaths.Item(row));
    }
    return paths;
}

// After the last rows have gone, the new last one is the current one.
void RestoreRow(GridSelection& grid, std::int32_t topRow) {
    if (grid.Rows() < 2) {
        return;
    }
    if (grid.Rows() < mainModule.GridCurrentRow) {
        --mainModule.GridCurrentRow;
    }
    grid.SetRow(mainModule.GridCurrentRow);
    grid.SelChange(); // Takes the top row of the moment for the remembered one.
    mainModule.GridTopRow = topRow;
    grid.SetTopRow(topRow);
}

} // namespace

void DeleteSelectedEntries(GridSelection& grid, LongWork& work, LibraryViews& views) {
    mainModule.GridCurrentRow = grid.Row();
    const std::int32_t topRow = mainModule.GridTopRow = grid.TopRow();
    // What is selected now: another list may come up while events run.
    const std::vector<std::string> paths = SelectedPaths();
    work.SetMousePointer(MousePointer::Hourglass);
    work.DoEvents();
    for (const std::string& path : paths) {
        DeleteFile(path);
    }
    // A command that comes while the views load finds no rows: their files are gone.
    mainModule.SelectedRows.Clear();
    views.LoadTree();
    views.LoadDatabase("");
    RestoreRow(grid, topRow);
    work.SetMousePointer(MousePointer::Default);
}

} // namespace quavernet
