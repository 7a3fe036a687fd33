#include "mainwindow/Main.h"

#include "app/LibraryFailure.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "platform/LibraryError.h"
#include "platform/Paths.h"

#include <functional>

namespace quavernet {

namespace {

constexpr std::int64_t LongestWait = 10; // Seconds.

// False if it has not come to exist after more than ten seconds, by the difference of whole seconds. Where a
// new entry is visible at once this ends in its first round.
bool WaitUntil(const std::function<bool()>& exists) {
    const DateTime start = services.clock->Now();
    while (!exists()) {
        if (SecondsBetween(start, services.clock->Now()) > LongestWait) {
            return false;
        }
    }
    return true;
}

std::string DocumentsFolder() {
    std::string folder = WithFinalSlash(GetSpecialFolderPath(Shell::DocumentsFolder));
    if (!folder.starts_with('/')) {
        // The text that stands for "no such folder" must not become a folder of that name.
        throw RuntimeError(ErrorNumber::PathNotFound, "Path not found");
    }
    return folder;
}

LibraryFault FaultOf(const RuntimeError& error) {
    switch (error.Number()) {
    case ErrorNumber::DiskFull:
        return LibraryFault::DiskFull;
    case ErrorNumber::PermissionDenied:
        return LibraryFault::FolderReadOnly;
    default:
        return LibraryFault::Other;
    }
}

// What is in the file's place stays. Another start of the program may have been quicker: then that is the
// library.
void CopyTemplate(const std::string& file) {
    FileSystemObject& fileSystem = *services.fileSystem;
    try {
        fileSystem.CopyFile(WithFinalSlash(services.shell->ProgramFolder()) + "Quavernet.db", file);
    } catch (const RuntimeError& error) {
        if (fileSystem.FileExists(file)) {
            return;
        }
        if (error.Number() == ErrorNumber::FileAlreadyExists) {
            const bool isFolder = fileSystem.FolderExists(file);
            throw LibraryError(isFolder ? LibraryFault::Folder : LibraryFault::NoPlainFile, file,
                               error.Number(), error.Description());
        }
        throw;
    }
}

// False if a wait was in vain.
bool FindOrCreate(const std::string& folder, const std::string& file) {
    FileSystemObject& fileSystem = *services.fileSystem;
    if (fileSystem.FileExists(file)) {
        return true;
    }
    if (!fileSystem.FolderExists(folder)) {
        fileSystem.CreateFolder(folder);
        if (!WaitUntil([&] { return fileSystem.FolderExists(folder); })) {
            return false;
        }
    }
    CopyTemplate(file);
    return WaitUntil([&] { return fileSystem.FileExists(file); });
}

} // namespace

std::string LocateDatabase() {
    std::string file;
    std::string details;
    try {
        const std::string folder = DocumentsFolder() + "Quavernet Database/";
        file = folder + "Quavernet.db";
        if (FindOrCreate(folder, file)) {
            return file;
        }
    } catch (const LibraryError& error) {
        details = LibraryFailureText(error);
    } catch (const RuntimeError& error) {
        details = LibraryFailureText(LibraryError(FaultOf(error), file, error.Number(), error.Description()));
    }
    // One box, also for a wait in vain, which has no reason to tell.
    services.msgBox->ShowWithDetails(
        LoadResString(440) + "\n" + LoadResString(441) + "\n" + LoadResString(442), details,
        LoadResString(443), MsgBox::Icon::Critical, MsgBox::Buttons::Ok);
    ExitProgram();
}

} // namespace quavernet
