// What the dialog for the name of one file does, without its window. Made by frmFileName when it opens.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quavernet {

class LongWork;

class FileNameEditor {
public:
    /// Takes the first row of SelectedRows. Without one there is no name, and nothing that could be saved.
    /// Throws RuntimeError 5 for a row that the list does not have.
    FileNameEditor();

    /// The name that the file has, as far as the dialog knows: each save makes the saved one the old one.
    const std::string& OldName() const { return m_oldName; }

    /// Renames the file to `text`, which gets its extension back if that is missing, and shows the path in
    /// the status bar. If it is refused nothing happens, and the number of the text that tells why comes
    /// back. Fails as RenameListedFile does.
    std::optional<int> cmsSave_Click(std::string& text, LongWork& work);

private:
    std::int32_t m_row = 0; ///< 0: none was selected.
    std::string m_oldName;
    std::string m_extension; ///< Of the name at the beginning.
};

} // namespace quavernet
