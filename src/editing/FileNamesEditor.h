// What the dialog for the names of several files does, without its window. Made by frmFilesName when it
// opens.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quavernet {

class LongWork;

/// An item of lstFileNames.
struct EditedName {
    std::int32_t Row; ///< Of the list in the main window.
    std::string Name;
};

class FileNamesEditor {
public:
    static constexpr int None = -1;

    /// Takes the names of the rows in SelectedRows, in the order of their selection. Throws RuntimeError 5
    /// for a row that the list does not have.
    FileNamesEditor();

    const std::vector<EditedName>& Items() const { return m_items; }
    int ListIndex() const { return m_index; } ///< The selected item, counted from 0, or None.

    /// Applies one of the clean-ups to every item.
    void CleanUpAll(const std::function<std::string(const std::string&)>& cleanUp);

    /// Selects an item. Gives its name, which is then to be edited; its extension is the one that
    /// cmdChangeName_Click puts back.
    const std::string& ListClick(int index);

    /// Gives the selected item the text as its name, with the extension at its end. If it is refused nothing
    /// happens, and the number of the text that tells why comes back. Without a selected item nothing
    /// happens.
    std::optional<int> cmdChangeName_Click(std::string& text);

    /// Renames all files, changed or not, whatever the clean-ups have made of the extensions: they alone may
    /// change it. `work` is told how many got another name, and how many the disk refused. Fails as
    /// RenameListedFile does; the items from the failing one on are then not renamed.
    void cmdSave_Click(LongWork& work) const;

private:
    std::vector<EditedName> m_items;
    int m_index = None;
    std::string m_extension; ///< Of the item that was selected last, as it was then.
};

} // namespace quavernet
