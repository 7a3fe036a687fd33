#include "scanner/FileFields.h"

#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "scanner/Volumes.h"

namespace quavernet {

namespace {

constexpr const char* DateOfUndatedFiles = "01.01.1900 00:00:00";

} // namespace

void FillFileFields(const FileFacts& file) {
    CurrentFile& current = mainModule.CurrentFile;
    current.CurrentPath = file.path;
    current.CurrentFileName = file.name;

    // The date of creation, although the column that it goes to speaks of the last change.
    current.FileDate.clear();
    if (file.dateCreated.IsSet()) {
        IgnoreFailure([&] { current.FileDate = GeneralDateText(file.dateCreated, services.regional); });
    }
    if (current.FileDate.empty()) {
        current.FileDate = DateOfUndatedFiles;
    }
    current.FileName = current.CurrentFileName;
    current.FileSize = std::to_string(file.size);

    current.FileDrive = UNCPath(file.drivePath, true);
    if (current.FileDrive.empty()) {
        current.FileDrive = file.drivePath;
        current.FilePath = current.CurrentPath;
        return;
    }
    // A local drive gives itself back, and the path stays what it was.
    const std::string drive = file.drivePath.ends_with('/') ? file.drivePath : file.drivePath + "/";
    current.FilePath = drive == current.FileDrive ? current.CurrentPath
                                                  : ReplaceAll(current.CurrentPath, drive, current.FileDrive);
}

} // namespace quavernet
