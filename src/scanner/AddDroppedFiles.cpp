#include "scanner/AddDroppedFiles.h"

#include "app/AudioKind.h"
#include "app/MayAct.h"
#include "inspect/modMp3Info.h"
#include "platform/RuntimeError.h"
#include "scanner/FileFields.h"
#include "scanner/Lookups.h"
#include "scanner/PutBack.h"
#include "scanner/ScanDriver.h"

#include <cstdint>

namespace quavernet {

namespace {

// True if the file was not known and has been stored.
bool AddIfUnknown(const std::string& path, CurrentFile& file, ScanDriver& driver) {
    const bool isKnown = IsKnownPath(path);
    const PutBack putBack(file);
    file.CurrentPath = path;
    file.DetailsPath = path;
    if (!isKnown) {
        AddDroppedFileToLibrary(path, file, driver);
    }
    return !isKnown;
}

} // namespace

FileFacts InspectDroppedFile(const std::string& path, CurrentFile& file) {
    // CurrentFileName is still that of the file before, and a file without a tag is named after it. An Ogg
    // file goes this way too: it has no frame header, so its bit rate and length are 0.
    // Anything but a plain file isn't opened, since that alone makes some devices act; its facts then fail.
    if (services.fileSystem->FileExists(path)) {
        InspectFile(path, file);
    }
    return services.fileSystem->GetFile(path);
}

void StoreDroppedFile(const FileFacts& facts, CurrentFile& file, ScanDriver& driver) {
    FillFileFields(facts, file);
    driver.StoreFileRecord(file);
}

void AddDroppedFileToLibrary(const std::string& path, CurrentFile& file, ScanDriver& driver) {
    StoreDroppedFile(InspectDroppedFile(path, file), file, driver);
}

void AddDroppedFiles(DropTarget target, const std::vector<std::string>& paths, ScanDriver& driver,
                     ScanView& view) {
    if (target == DropTarget::Window || !MayAct()) {
        return;
    }
    CurrentFile file = mainModule.CurrentFile;
    try {
        bool added = false;
        std::int16_t index = 0;
        for (const std::string& path : paths) {
            index = Narrow16(index + 1.0); // The list is counted in 16 bits.
            if (AudioKindOf(path) != AudioKind::None && AddIfUnknown(path, file, driver)) {
                added = true;
                // File by file: a disk that is full at a later one takes back what has been gathered, and the
                // end of a drop is silent.
                mainModule.Connection->Commit();
            }
        }
        if (added && !mainModule.LoadOverSearch) {
            view.LoadDatabase("");
        }
    } catch (const RuntimeError&) {
        // Ends the drop; what has been stored stays.
    }
}

} // namespace quavernet
