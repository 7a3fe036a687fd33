// Gives a file of the list another name: on disk, in the library and in what the list's commands read. Called
// by the two dialogs that rename files.
#pragma once

#include <cstdint>
#include <string>

namespace quavernet {

/// The path of a listed file, taken apart.
struct FolderAndName {
    std::string Folder; ///< With its final "/".
    std::string Name;
};

struct RenamedFile {
    std::string Path; ///< The one meant for the library.
    bool OnDisk;      ///< The file system did it.
};

/// Path of a listed row, taken apart. Throws RuntimeError 5 if there is no such row.
FolderAndName ListedFile(std::int32_t row);

/// Renames the file of the row to `name` in the old folder, writes name and path into its row of the library,
/// and puts them into FilePaths and FileNames.
///
/// Whether the rename worked changes nothing: the library gets the wanted name also when the file is
/// missing, or got another one because there was a file of that name. What of it can't be told to the library
/// stays untold, without a failure: in a folder with an apostrophe no row is found. Throws RuntimeError if
/// the statement fails; FilePaths and FileNames then keep the old name.
RenamedFile RenameListedFile(std::int32_t row, const FolderAndName& old, const std::string& name);

} // namespace quavernet
