#include "tree/CategoryName.h"

#include "app/LibraryViews.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/ShowBox.h"
#include "library/SqlQuote.h"
#include "platform/LibraryError.h"
#include "tree/PlaceNow.h"

#include <cstddef>
#include <optional>

namespace quavernet {

namespace {

struct NamedCategory {
    std::string Id;
    std::string Name;
};

bool IsTaken(const std::string& name) {
    ADODB::Recordset same;
    same.Open("Select Category_id, Category from Categories where Category = '" + SqlQuote(name) + "'",
              *mainModule.Connection);
    return same.RecordCount() > 0;
}

/// Why the library takes no category of this name; nothing if it has one now.
std::optional<std::string> InsertNamed(const std::string& name) {
    try {
        mainModule.Connection->Execute("Insert into Categories (Category) values ('" +
                                       std::string(SqlPlain(name)) + "')");
    } catch (const LibraryError&) {
        throw; // The library as a whole is in trouble, whatever the name.
    } catch (const RuntimeError& failure) {
        return FailureText(failure);
    }
    return std::nullopt;
}

// The highest key is taken for that of the row just inserted.
NamedCategory NewestCategory() {
    ADODB::Recordset categories;
    categories.Open("Select Category_id, Category from Categories Order by Category_id",
                    *mainModule.Connection);
    categories.MoveLast();
    NamedCategory category{categories.Fields(0).Text(), categories.Fields(1).Text()};
    categories.Close();
    return category;
}

/// Makes the category; `refusal` is the box that tells why not. No box here: nobody waits for the library
/// while the user reads.
CategoryFinish MakeCategory(const std::string& name, NamedCategory& category, std::string& refusal) {
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    if (IsTaken(name)) {
        refusal = LoadResString(309);
        return CategoryFinish::Duplicate;
    }
    if (const auto reason = InsertNamed(name)) {
        refusal = *reason;
        return CategoryFinish::NameRefused;
    }
    category = NewestCategory();
    return CategoryFinish::Made;
}

/// False if another program has taken the category away.
bool AddEntry(const NamedCategory& category, const std::string& path, std::size_t position,
              OthersWatch& watch) {
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    if (watch.HasNews() && !TakesEntries(category.Id, category.Name)) {
        return false;
    }
    ADODB::Recordset file;
    file.Open("Select File_id, Name from Files where Path = '" + SqlQuote(path) + "'",
              *mainModule.Connection);
    if (file.RecordCount() > 0) {
        mainModule.Connection->Execute(
            "Insert Into FileCategories (File_id, Category_ID, Filename, [Position], Parent) values (" +
            file.Fields(0).Text() + ", " + category.Id + ", '" + SqlQuote(file.Fields(1).Text()) + "', " +
            std::to_string(position) + ", '" + std::string(SqlPlain(category.Name)) + "')");
    }
    file.Close();
    return true;
}

} // namespace

CategoryFinish FinishCategory(const std::string& name, const std::vector<std::string>& files,
                              LibraryViews& views) {
    if (name.empty()) {
        ShowBox(307, 308, MsgBox::Icon::Information);
        return CategoryFinish::NameMissing;
    }
    NamedCategory category;
    std::string refusal;
    OthersWatch watch(mainModule.Connection->ChangesOfOthers());
    const CategoryFinish finish = MakeCategory(name, category, refusal);
    if (finish != CategoryFinish::Made) {
        ShowBox(refusal, 310, MsgBox::Icon::Critical);
        return finish;
    }
    bool isThere = true;
    for (std::size_t i = 0; i < files.size() && isThere; ++i) {
        isThere = AddEntry(category, files[i], i + 1, watch);
    }
    views.LoadTree();
    return CategoryFinish::Made;
}

} // namespace quavernet
