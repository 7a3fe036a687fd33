#include "editing/FileNameEditor.h"

#include "app/LongWork.h"
#include "app/MainModule.h"
#include "editing/FileNameTools.h"
#include "editing/RenameListedFile.h"

namespace quavernet {

FileNameEditor::FileNameEditor() {
    if (mainModule.SelectedRows.Count() == 0) {
        return;
    }
    m_row = mainModule.SelectedRows.Rows().front();
    m_oldName = ListedFile(m_row).Name;
    m_extension = FileExtension(m_oldName);
}

std::optional<int> FileNameEditor::cmsSave_Click(std::string& text, LongWork& work) {
    if (mainModule.SelectedRows.Count() == 0 ||
        !services.fileSystem->FileExists(mainModule.FilePaths.Item(m_row))) {
        return 339;
    }
    if (text.empty() || text == m_extension) {
        return 341;
    }
    text = WithExtension(text, m_extension);
    work.SetPanel(Panel::Scanning, RenameListedFile(m_row, {ListedFile(m_row).Folder, m_oldName}, text).Path);
    m_oldName = text;
    return std::nullopt;
}

} // namespace quavernet
