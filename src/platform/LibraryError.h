// A failure that concerns the library as a whole and not one statement. Thrown by the engine's adapter, told
// to the user by app/LibraryFailure.
#pragma once

#include "platform/RuntimeError.h"

#include <string>
#include <utility>

namespace quavernet {

/// What is wrong with the library, as far as it makes a difference to the user.
enum class LibraryFault {
    Missing,     ///< Nothing is in its place.
    Folder,      ///< A folder is in the library's place.
    NoPlainFile, ///< A pipe, a device, or a link that leads nowhere is there.
    FileReadOnly,
    FolderReadOnly, ///< The engine keeps its log beside the library.
    NoLibrary,      ///< A file of something else.
    Newer,          ///< Made by a newer version of the program.
    Damaged,
    Locked, ///< By another program, for longer than is waited for.
    DiskFull,
    Moved,  ///< Or replaced, or deleted, while the program ran.
    Device, ///< Reading or writing fails.
    Other,
};

class LibraryError : public RuntimeError {
public:
    LibraryError(LibraryFault fault, std::string path, int number, std::string description)
        : RuntimeError(number, std::move(description)), m_fault(fault), m_path(std::move(path)) {}

    /// By which the user is told what to do.
    LibraryFault Fault() const { return m_fault; }
    /// The library's file.
    const std::string& Path() const { return m_path; }

private:
    LibraryFault m_fault;
    std::string m_path;
};

} // namespace quavernet
