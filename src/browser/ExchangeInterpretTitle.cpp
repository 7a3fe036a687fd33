#include "browser/ExchangeInterpretTitle.h"

#include "app/LibraryViews.h"
#include "app/MainModule.h"
#include "library/FirstField.h"
#include "library/SqlQuote.h"

#include <string>
#include <vector>

namespace quavernet {

namespace {

/// Field 0 of the first row, or the text as it is where there is none.
std::string FieldOr(const std::string& select, std::string text) {
    ADODB::Recordset rows;
    rows.Open(select, *mainModule.Connection);
    if (rows.RecordCount() > 0) {
        text = rows.Fields(0).Text();
    }
    rows.Close();
    return text;
}

/// A table of names, and the columns of its keys and names.
struct NameTable {
    const char* Table;
    const char* Id;
    const char* Name;
};
constexpr NameTable Performers{"Interpret", "Inter_id", "Interpret"};
constexpr NameTable Titles{"Titel", "Title_id", "Name"};

std::string NameOf(const NameTable& table, const std::string& id) {
    return FieldOr(
        std::string("Select ") + table.Name + " from " + table.Table + " where " + table.Id + " = " + id, {});
}

std::string IdOf(const NameTable& table, const std::string& name) {
    const std::string quoted = SqlQuote(name);
    const std::string found =
        std::string(" from ") + table.Table + " where " + table.Name + " = '" + quoted + "'";
    std::string id = FieldOr(std::string("Select ") + table.Id + found, {});
    if (id.empty()) {
        mainModule.Connection->Execute(std::string("Insert Into ") + table.Table + " (" + table.Name +
                                       ") values ('" + quoted + "')");
        id = FirstField(std::string("Select Max(") + table.Id + ")" + found);
    }
    return id;
}

void ExchangeFile(const std::string& path) {
    const std::string where = " where Path = '" + SqlQuote(path) + "'";
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    ADODB::Recordset file;
    file.Open("Select Title_id, Inter_id from Files" + where, *mainModule.Connection);
    if (file.RecordCount() == 0) {
        return; // Another command, or another running program, was faster.
    }
    const std::string titleId = file.Fields(0).Text();
    const std::string performerId = file.Fields(1).Text();
    file.Close();
    const std::string oldPerformer = NameOf(Performers, performerId);
    const std::string oldTitle = NameOf(Titles, titleId);
    const std::string newPerformerId = IdOf(Performers, oldTitle);
    const std::string newTitleId = IdOf(Titles, oldPerformer);
    mainModule.Connection->Execute("Update Files Set Inter_id = " + newPerformerId +
                                   ", Title_id = " + newTitleId + where);
}

} // namespace

void ExchangeInterpretTitle(LibraryViews& views) {
    const std::vector<std::int32_t> rows = mainModule.SelectedRows.Rows();
    for (const std::int32_t row : rows) {
        ExchangeFile(mainModule.FilePaths.Item(row));
    }
    views.LoadDatabase("");
}

} // namespace quavernet
