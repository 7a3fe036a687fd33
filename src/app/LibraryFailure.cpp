#include "app/LibraryFailure.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "platform/BackupPath.h"

namespace quavernet {

namespace {

std::string ReasonText(const LibraryError& error) {
    switch (error.Fault()) {
    case LibraryFault::Locked:
        return LoadResString(756);
    case LibraryFault::Damaged:
        return LoadResString(757);
    case LibraryFault::Newer:
        return LoadResString(758);
    case LibraryFault::NoLibrary:
        return LoadResString(759);
    case LibraryFault::FileReadOnly:
        return LoadResString(760);
    case LibraryFault::FolderReadOnly:
        return LoadResString(761);
    case LibraryFault::Folder:
        return LoadResString(762);
    case LibraryFault::NoPlainFile:
        return LoadResString(763);
    case LibraryFault::Missing:
        return LoadResString(764);
    case LibraryFault::DiskFull:
        return LoadResString(765);
    case LibraryFault::Device:
        return LoadResString(766);
    case LibraryFault::Moved:
        return LoadResString(776);
    case LibraryFault::Other:
        break;
    }
    return FailureReasonText(error.Description());
}

// A library that is sound but can't be had right now must not be given up for an older copy.
bool IsContentInDoubt(LibraryFault fault) {
    switch (fault) {
    case LibraryFault::Newer:
    case LibraryFault::Locked:
    case LibraryFault::FileReadOnly:
    case LibraryFault::FolderReadOnly:
    case LibraryFault::DiskFull:
    case LibraryFault::Device:
    case LibraryFault::Moved: // What lies there now is somebody's choice.
        return false;
    default:
        return true;
    }
}

// One line for each copy that is there, the newest first.
std::string CopyLines(const std::string& library) {
    std::string lines;
    for (int number = 1; number <= BackupCount; ++number) {
        const std::string path = BackupPath(library, number);
        IgnoreFailure([&] {
            const FileFacts copy = services.fileSystem->GetFile(path);
            lines += "\n" + path + " (" + GeneralDateText(copy.dateLastModified, services.regional) + ")";
        });
    }
    return lines;
}

// Whoever can't get at the library wants to know what else there is; the advice to put a copy in its place is
// for one whose content is in doubt.
std::string CopiesText(const LibraryError& error) {
    if (error.Fault() == LibraryFault::DiskFull) {
        return {}; // Space is to be made, and the copies are not what should go for it.
    }
    const std::string lines = CopyLines(error.Path());
    const bool isInDoubt = IsContentInDoubt(error.Fault());
    if (!lines.empty()) {
        return "\n\n" + LoadResString(769) + lines + (isInDoubt ? "\n\n" + LoadResString(770) : "");
    }
    // At a first start nobody asks for copies.
    return !isInDoubt || error.Fault() == LibraryFault::Other ? std::string() : "\n\n" + LoadResString(771);
}

} // namespace

std::string LibraryFailureText(const LibraryError& error) {
    std::string text = ReasonText(error);
    if (error.Path().empty()) {
        return text; // There is no place yet beside which copies could lie.
    }
    return text + "\n" + LoadResString(768) + error.Path() + CopiesText(error);
}

std::string FailureReasonText(const std::string& description) {
    return LoadResString(767) + description;
}

} // namespace quavernet
