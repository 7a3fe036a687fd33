#include "tree/CategoryEditor.h"

#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "library/FirstField.h"
#include "library/SqlQuote.h"

#include <algorithm>

namespace quavernet {

namespace {

constexpr std::int32_t NameMissing = 336;
constexpr std::int32_t NameTaken = 338;

void InsertCategory(std::string_view name) {
    mainModule.Connection->Execute("Insert Into Categories (Category) values ('" + std::string(name) + "')");
}

void RenameCategory(std::string_view oldName, std::string_view newName) {
    const std::string values = std::string(newName) + "' where ";
    mainModule.Connection->Execute("Update FileCategories set Parent = '" + values + "Parent = '" +
                                   std::string(oldName) + "'");
    mainModule.Connection->Execute("Update Categories set Category = '" + values + "Category = '" +
                                   std::string(oldName) + "'");
}

} // namespace

void CategoryEditor::FillCategoryList() {
    m_categories.clear();
    m_listIndex = None;
    m_changesOfOthers = mainModule.Connection->ChangesOfOthers();
    ADODB::Recordset names;
    names.Open("Select Category from Categories", *mainModule.Connection);
    for (; !names.Eof(); names.MoveNext()) {
        m_categories.push_back(names.Fields(0).Text());
    }
    names.Close();
}

bool CategoryEditor::FollowOthers() {
    if (mainModule.Connection->ChangesOfOthers() == m_changesOfOthers) {
        return false;
    }
    const std::string selected = ListText();
    FillCategoryList();
    const auto found = std::ranges::find(m_categories, selected);
    if (!selected.empty() && found != m_categories.end()) {
        m_listIndex = static_cast<std::int32_t>(found - m_categories.begin());
    }
    return true;
}

std::string CategoryEditor::ListText() const {
    return m_listIndex == None ? std::string() : m_categories[static_cast<std::size_t>(m_listIndex)];
}

void CategoryEditor::ListMouseDown() {
    EndTyping();
}

void CategoryEditor::ListClick(std::int32_t index) {
    m_listIndex = index;
    m_canEditOrDelete = m_canEditOrDelete || index != None;
}

void CategoryEditor::BeginTyping(bool isNew, const std::string& text) {
    m_newMode = isNew;
    m_editText = text;
    m_canType = true;
    m_canEditOrDelete = false;
}

// cmdEdit and cmdDelete are on even if no category is selected: one then begins with an empty field, the
// other does nothing.
void CategoryEditor::EndTyping() {
    m_editText.clear();
    m_canType = false;
    m_canEditOrDelete = true;
}

void CategoryEditor::cmdNew_Click() {
    BeginTyping(true, {});
}

void CategoryEditor::cmdEdit_Click() {
    BeginTyping(false, ListText());
}

// Selects each category in turn, up to the one of this very name; another spelling by case is another name.
// This is no click: what is enabled while a name is typed stays so.
bool CategoryEditor::WalkTo(const std::string& name) {
    for (std::size_t i = 0; i < m_categories.size(); ++i) {
        m_listIndex = static_cast<std::int32_t>(i);
        if (m_categories[i] == name) {
            return true;
        }
    }
    return false;
}

std::optional<std::int32_t> CategoryEditor::cmdSave_Click(const std::string& name) {
    if (name.empty()) {
        return NameMissing;
    }
    if (WalkTo(name)) { // An unchanged name too.
        return NameTaken;
    }
    // Only the last category can be renamed here, whichever was chosen: the walk has left the list on its
    // last one, and the old name is read after it.
    const std::string oldName = ListText();
    const ADODB::WriteLock writeLock(*mainModule.Connection); // A name that is free stays so.
    const bool isShared = FollowOthers();
    if (isShared && WalkTo(name)) {
        return NameTaken;
    }
    if (isShared && !m_newMode && std::ranges::find(m_categories, oldName) == m_categories.end()) {
        EndTyping(); // Another program has taken it away; the list tells so.
        return std::nullopt;
    }
    // The field takes no apostrophe, so that names go into all statements as they are.
    const std::string_view plain = SqlPlain(name);
    if (m_newMode) {
        InsertCategory(plain);
    } else {
        RenameCategory(SqlPlain(oldName), plain);
    }
    EndTyping();
    FillCategoryList();
    return std::nullopt;
}

// The tree's memory of expanded categories is left as it is.
void CategoryEditor::cmdDelete_Click() {
    if (ListText().empty()) {
        return;
    }
    {
        const ADODB::WriteLock writeLock(*mainModule.Connection);
        (void)FollowOthers();
        const std::string name = ListText();
        if (name.empty()) {
            return; // Another program has deleted it.
        }
        const std::string id(Trim(FirstField("Select Category_id from Categories where Category = '" +
                                             std::string(SqlPlain(name)) + "'")));
        mainModule.Connection->Execute("Delete from FileCategories where Category_id = " + id);
        mainModule.Connection->Execute("Delete from Categories where Category_id = " + id);
    }
    FillCategoryList();
    if (!m_categories.empty()) {
        ListClick(0);
    }
}

void CategoryEditor::EditCategory(const std::string& name) {
    (void)WalkTo(name);
    cmdEdit_Click();
}

} // namespace quavernet
