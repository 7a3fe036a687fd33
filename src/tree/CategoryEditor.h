// The administration of the categories without its screen: the list, the field for a name, and what may be
// done with them. frmEditTree hands clicks and keys to it and shows what it says.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quavernet {

class CategoryEditor {
public:
    static constexpr std::int32_t None = -1; ///< No category is selected.

    /// Fills the list. Throws RuntimeError if the library can't be read.
    CategoryEditor() { FillCategoryList(); }

    /// The user has pressed a mouse button in the list: whatever is being typed is dropped.
    void ListMouseDown();
    /// The user has selected a category, with mouse or keyboard.
    void ListClick(std::int32_t index);

    void cmdNew_Click();
    void cmdEdit_Click(); ///< Edits the selected category. Without a selection the field is empty.

    /// Stores the name as that of a new category or of the last one of the list. Gives the number of the text
    /// that tells why it may not; the list then shows the category of that name. Throws RuntimeError if a
    /// statement fails: a name with an apostrophe makes it do so.
    std::optional<std::int32_t> cmdSave_Click(const std::string& name);

    /// Deletes the selected category and its entries without a question. Throws RuntimeError if a statement
    /// fails.
    void cmdDelete_Click();

    /// Selects the category of this name (the last one if there is none) and begins to edit it.
    void EditCategory(const std::string& name);

    const std::vector<std::string>& Categories() const { return m_categories; }
    std::int32_t ListIndex() const { return m_listIndex; }
    std::string ListText() const; ///< Name of the selected category; empty without one.
    /// What the field holds when typing begins, and when it has ended.
    const std::string& EditText() const { return m_editText; }

    /// What is enabled: the field together with its button, the other three buttons.
    bool CanType() const { return m_canType; }
    bool CanNew() const { return !m_canType; }
    bool CanEditOrDelete() const { return m_canEditOrDelete; } ///< cmdEdit and cmdDelete.

private:
    void FillCategoryList();
    /// Fills the list again if another program has written since, and tells it; the selection stays.
    bool FollowOthers();
    void BeginTyping(bool isNew, const std::string& text);
    void EndTyping();
    bool WalkTo(const std::string& name); ///< False if no category has it; the last one is selected then.

    std::vector<std::string> m_categories;
    std::int64_t m_changesOfOthers = 0; ///< When the list was filled.
    std::int32_t m_listIndex = None;
    std::string m_editText;
    bool m_newMode = false; ///< What is being typed is a new category's name, not another name for one.
    bool m_canType = false;
    bool m_canEditOrDelete = false;
};

} // namespace quavernet
