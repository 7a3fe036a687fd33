#include "editing/RenameListedFile.h"

#include "app/MainModule.h"
#include "library/SqlQuote.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"

namespace quavernet {

namespace {

// The folder goes unquoted: one with an apostrophe finds no row, and makes no statement that could be sent. A
// name with a NUL, which the disk did not take, makes none either.
bool CanBeTold(const RenamedFile& file, const std::string& name) {
    return file.Folder.find('\'') == std::string::npos && name.find('\0') == std::string::npos;
}

} // namespace

RenamedFile ListedFile(std::int32_t row) {
    const std::string path = mainModule.FilePaths.Item(row);
    const auto end = path.rfind('/') + 1; // 0 for a path without a folder.
    return {path.substr(0, end), path.substr(end)};
}

std::string RenameListedFile(std::int32_t row, const RenamedFile& file, const std::string& name) {
    const std::string newPath = file.Folder + name;
    // Taken before the disk changes: while another program writes to the library, the file keeps its name.
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    IgnoreFailure([&] { services.fileSystem->RenameFile(mainModule.FilePaths.Item(row), newPath); });
    if (CanBeTold(file, name)) {
        mainModule.Connection->Execute("Update Files set Path = '" + SqlQuote(newPath) + "',  Name = '" +
                                       SqlQuote(name) + "' where Path  = '" + file.Folder +
                                       SqlQuote(file.OldName) + "'");
    }
    mainModule.FilePaths.Replace(row, newPath);
    mainModule.FileNames.Replace(row, name);
    return newPath;
}

} // namespace quavernet
