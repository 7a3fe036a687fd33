// What a file has beside its bytes (its place, owner, rights and attributes), for copies that take a file's
// place. Called by SafeSave, SafeWrite and WholeFileCopy.
#pragma once

#include <string>

#include <sys/stat.h>

namespace quavernet::posix {

/// Throws RuntimeError with the path for an error number that is not 0: 61 if the disk is full, 57 if the
/// device fails, 75 else.
void Check(int error, const std::string& path);

/// The file that a path leads to through all links. Throws as Check does.
std::string RealPath(const std::string& path);

/// Access lists and the user's own attributes, from one open file to another, as far as the file system takes
/// them.
void CopyAttributes(int from, int to);

/// Owner, group and rights for a copy, as far as the system allows. Throws as Check does.
void KeepOwnerAndRights(int copy, const struct stat& facts, const std::string& path);

/// What the user takes from the rights of all new files. It can only be read by setting it: for that moment
/// to the strictest one, since another thread may make a file.
mode_t NewFileMask();

} // namespace quavernet::posix
