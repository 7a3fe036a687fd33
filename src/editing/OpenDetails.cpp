#include "editing/OpenDetails.h"

#include "app/MainModule.h"
#include "app/ShowBox.h"
#include "app/TextNumbers.h"
#include "browser/GridView.h"

namespace quavernet {

namespace {

void TellMissingFile() {
    ShowBox(Texts::DetailsFileMissing, Texts::DetailsNotShown, MsgBox::Icon::Exclamation);
}

// A file may vanish between the look at it and its reading.
std::unique_ptr<frmDetails> LoadedDialog(const EditingParts& parts, QWidget& owner) {
    try {
        return std::make_unique<frmDetails>(parts, &owner);
    } catch (const RuntimeError& failure) {
        if (failure.Number() != ErrorNumber::FileNotFound) {
            throw;
        }
        return nullptr;
    }
}

} // namespace

void OpenDetails(const EditingParts& parts, QWidget& owner) {
    const std::int32_t row = parts.Grid.Selection().Row();
    if (row < 1) {
        return;
    }
    if (!services.fileSystem->FileExists(mainModule.FilePaths.Item(row))) {
        TellMissingFile();
        return;
    }
    if (const auto dialog = LoadedDialog(parts, owner)) {
        dialog->exec();
    } else {
        TellMissingFile();
    }
}

void mnuDetails_Click(const EditingParts& parts, QWidget& owner) {
    mainModule.DetailsRow = parts.Grid.Selection().Row();
    OpenDetails(parts, owner);
}

} // namespace quavernet
