#include "editing/RenameListedFile.h"

#include "app/MainModule.h"
#include "library/SqlQuote.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"

namespace quavernet {

namespace {

// The folder goes unquoted: one with an apostrophe finds no row, and makes no statement that could be sent. A
// name with a NUL, which the disk did not take, makes none either.
bool CanBeTold(const FolderAndName& old, const std::string& name) {
    return old.Folder.find('\'') == std::string::npos && name.find('\0') == std::string::npos;
}

} // namespace

FolderAndName ListedFile(std::int32_t row) {
    const std::string path = mainModule.FilePaths.Item(row);
    const auto end = path.rfind('/') + 1; // 0 for a path without a folder.
    return {path.substr(0, end), path.substr(end)};
}

RenamedFile RenameListedFile(std::int32_t row, const FolderAndName& old, const std::string& name) {
    const std::string newPath = old.Folder + name;
    // Taken before the disk changes: while another program writes to the library, the file keeps its name.
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    bool onDisk = false;
    IgnoreFailure([&] {
        services.fileSystem->RenameFile(mainModule.FilePaths.Item(row), newPath);
        onDisk = true;
    });
    if (CanBeTold(old, name)) {
        mainModule.Connection->Execute("Update Files set Path = '" + SqlQuote(newPath) + "',  Name = '" +
                                       SqlQuote(name) + "' where Path  = '" + old.Folder +
                                       SqlQuote(old.Name) + "'");
    }
    mainModule.FilePaths.Replace(row, newPath);
    mainModule.FileNames.Replace(row, name);
    return {newPath, onDisk};
}

} // namespace quavernet
