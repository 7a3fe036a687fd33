// Gives a file another name without ever overwriting one. Called by the file system of this folder.
#pragma once

#include <string>

namespace quavernet::posix {

/// The names in one folder, as the system has them. Tests bring one in which case makes no other name.
class FolderNames {
public:
    virtual ~FolderNames() = default;

    /// Gives 0 or the error number: EEXIST if something has the name, which may be the file itself.
    virtual int RenameIfFree(const std::string& from, const std::string& to) = 0;

    /// Whether both names find one and the same file. Links are not followed.
    virtual bool FindTheSame(const std::string& a, const std::string& b) = 0;

    /// Whether the folder lists the name byte for byte. True where it can't be told.
    virtual bool Lists(const std::string& name) = 0;
};

/// Renames a file in its folder, or does what is told at FileSystemObject::RenameFile where the name is
/// taken. Gives 0 or the error number.
int RenameToFreeName(FolderNames& folder, const std::string& from, const std::string& to);

/// As FileSystemObject::RenameFile. Gives 0 or the error number.
int RenameToFreeName(const std::string& source, const std::string& target);

} // namespace quavernet::posix
