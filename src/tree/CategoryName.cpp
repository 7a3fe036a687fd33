#include "tree/CategoryName.h"

#include "app/LibraryViews.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "library/SqlQuote.h"
#include "platform/LibraryError.h"

#include <cstddef>
#include <optional>

namespace quavernet {

namespace {

struct NamedCategory {
    std::string Id;
    std::string Name;
};

void ShowBox(const std::string& text, std::int32_t titleId, MsgBox::Icon icon) {
    services.msgBox->Show(text, LoadResString(titleId), icon, MsgBox::Buttons::Ok);
}

// The highest key is that of the row just inserted. Nothing if the name is taken.
std::optional<NamedCategory> InsertedCategory(const std::string& name) {
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    ADODB::Recordset same;
    same.Open("Select Category_id, Category from Categories where Category = '" + SqlQuote(name) + "'",
              *mainModule.Connection);
    if (same.RecordCount() > 0) {
        return std::nullopt;
    }
    same.Close();
    mainModule.Connection->Execute("Insert into Categories (Category) values ('" +
                                   std::string(SqlPlain(name)) + "')");
    ADODB::Recordset categories;
    categories.Open("Select Category_id, Category from Categories Order by Category_id",
                    *mainModule.Connection);
    categories.MoveLast();
    NamedCategory category{categories.Fields(0).Text(), categories.Fields(1).Text()};
    categories.Close();
    return category;
}

void AddEntry(const NamedCategory& category, const std::string& path, std::size_t position) {
    const ADODB::WriteLock writeLock(*mainModule.Connection);
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
}

} // namespace

CategoryFinish FinishCategory(const std::string& name, const std::vector<std::string>& files,
                              LibraryViews& views) {
    if (name.empty()) {
        ShowBox(LoadResString(307), 308, MsgBox::Icon::Information);
        return CategoryFinish::NameMissing;
    }
    std::optional<NamedCategory> category;
    try {
        category = InsertedCategory(name);
    } catch (const LibraryError&) {
        throw; // The library as a whole is in trouble, whatever the name.
    } catch (const RuntimeError& failure) {
        ShowBox(LoadResString(445) + std::to_string(failure.Number()) + " - " + failure.Description(), 310,
                MsgBox::Icon::Critical);
        return CategoryFinish::NameRefused;
    }
    if (!category) {
        ShowBox(LoadResString(309), 310, MsgBox::Icon::Critical);
        return CategoryFinish::Duplicate;
    }
    for (std::size_t i = 0; i < files.size(); ++i) {
        AddEntry(*category, files[i], i + 1);
    }
    views.LoadTree();
    return CategoryFinish::Made;
}

} // namespace quavernet
