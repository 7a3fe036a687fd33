#include "editing/FileNamesEditor.h"

#include "app/EndWord.h"
#include "app/LongWork.h"
#include "app/MainModule.h"
#include "app/TextNumbers.h"
#include "editing/FileNameTools.h"
#include "editing/RenameListedFile.h"

namespace quavernet {

FileNamesEditor::FileNamesEditor() {
    m_items.reserve(mainModule.SelectedRows.Count());
    for (const std::int32_t row : mainModule.SelectedRows.Rows()) {
        m_items.push_back({row, mainModule.FileNames.Item(row)});
    }
}

void FileNamesEditor::CleanUpAll(const std::function<std::string(const std::string&)>& cleanUp) {
    for (EditedName& item : m_items) {
        item.Name = cleanUp(item.Name);
    }
}

const std::string& FileNamesEditor::ListClick(int index) {
    const std::string& name = m_items.at(static_cast<std::size_t>(index)).Name;
    m_index = index;
    m_extension = FileExtension(name);
    return name;
}

std::optional<int> FileNamesEditor::cmdChangeName_Click(std::string& text) {
    if (m_index == None) {
        return std::nullopt;
    }
    if (text.empty()) {
        return 336;
    }
    text = WithExtension(text, m_extension);
    m_items[static_cast<std::size_t>(m_index)].Name = text;
    return std::nullopt;
}

void FileNamesEditor::cmdSave_Click(LongWork& work) const {
    EndWord end;
    std::size_t renamed = 0;
    std::size_t refused = 0;
    for (const EditedName& item : m_items) {
        const FolderAndName old = ListedFile(item.Row);
        const bool onDisk = RenameListedFile(item.Row, old, item.Name).OnDisk;
        if (item.Name != old.Name) {
            ++(onDisk ? renamed : refused);
        }
    }
    end.Count(renamed, Texts::RenamedFile, Texts::RenamedFiles);
    if (refused > 0) {
        end.Count(refused, Texts::NotRenamedFile, Texts::NotRenamedFiles);
    }
    work.TellEnd(end.Done());
}

} // namespace quavernet
