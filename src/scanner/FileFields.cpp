#include "scanner/FileFields.h"

#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "scanner/Volumes.h"

namespace quavernet {

namespace {

constexpr const char* DateOfUndatedFiles = "01.01.1900 00:00:00";

} // namespace

void FillFileFields(const FileFacts& facts, CurrentFile& file) {
    file.CurrentPath = facts.path;
    file.CurrentFileName = facts.name;

    // The date of creation, although the column that it goes to speaks of the last change.
    file.FileDate.clear();
    if (facts.dateCreated.IsSet()) {
        IgnoreFailure([&] { file.FileDate = GeneralDateText(facts.dateCreated, services.regional); });
    }
    if (file.FileDate.empty()) {
        file.FileDate = DateOfUndatedFiles;
    }
    file.FileName = file.CurrentFileName;
    file.FileSize = std::to_string(facts.size);

    file.FileDrive = UNCPath(facts.drivePath, true);
    if (file.FileDrive.empty()) {
        file.FileDrive = facts.drivePath;
        file.FilePath = file.CurrentPath;
        return;
    }
    // A local drive gives itself back, and the path stays what it was.
    const std::string drive = facts.drivePath.ends_with('/') ? facts.drivePath : facts.drivePath + "/";
    file.FilePath =
        drive == file.FileDrive ? file.CurrentPath : ReplaceAll(file.CurrentPath, drive, file.FileDrive);
}

} // namespace quavernet
