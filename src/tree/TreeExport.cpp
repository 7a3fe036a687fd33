#include "tree/TreeExport.h"

#include "app/LoadResString.h"
#include "app/LongWork.h"
#include "app/MainModule.h"
#include "app/TextNumbers.h"
#include "platform/RuntimeError.h"
#include "scanner/Lookups.h"
#include "tree/ExchangeFile.h"
#include "tree/NodeKey.h"
#include "tree/TreeModel.h"

#include <optional>

namespace quavernet {

namespace {

// A dialog that can't come up counts as one that was cancelled.
std::optional<std::string> AskForTarget() {
    try {
        return services.dialogs->ShowSave(LoadResString(Texts::ExchangeFilter),
                                          GetSpecialFolderPath(Shell::DocumentsFolder));
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

// Rows are counted in 16 bits: a longer table is a failure.
void Open(ADODB::Recordset& rows, const char* select) {
    rows.Open(select, *mainModule.Connection);
    (void)Narrow16(static_cast<double>(rows.RecordCount()));
}

// False if there is none.
bool WriteCategories(NewFile& file) {
    file.Append(std::string(CategoriesLine) + '\n');
    ADODB::Recordset categories;
    Open(categories, "Select Category from Categories");
    const bool hasRows = !categories.Eof();
    for (; !categories.Eof(); categories.MoveNext()) {
        file.Append(categories.Fields(0).Text() + '\n');
    }
    categories.Close();
    return hasRows;
}

void WriteEntries(NewFile& file) {
    file.Append(std::string(FilesLine) + '\n');
    ADODB::Recordset entries;
    Open(entries, "Select [Position], Parent, Filename, File_id from FileCategories");
    for (; !entries.Eof(); entries.MoveNext()) {
        const std::string position = entries.Fields(0).Text();
        const std::string parent = entries.Fields(1).Text();
        const std::string filename = entries.Fields(2).Text();
        const std::string path =
            FirstValue("Select Path from Files where File_id = " + entries.Fields(3).Text()).value_or("");
        file.Append(EntryLine({position, parent, filename, path}));
    }
    entries.Close();
}

} // namespace

void ExportTree(const TreeModel& tree, LongWork& work) {
    if (!tree.Contains(RootKey) || tree.Node(RootKey).Children.empty()) {
        return;
    }
    work.SetMousePointer(MousePointer::Hourglass);
    if (const std::optional<std::string> path = AskForTarget()) {
        const std::unique_ptr<NewFile> file = services.files->Create(*path);
        // Another running program may have deleted the categories that the tree shows: the file then has its
        // first line alone.
        if (WriteCategories(*file)) {
            WriteEntries(*file);
        }
        file->Keep();
    }
    work.SetMousePointer(MousePointer::Default);
}

} // namespace quavernet
