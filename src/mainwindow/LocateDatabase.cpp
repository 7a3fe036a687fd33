#include "mainwindow/Main.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "platform/RuntimeError.h"

#include <functional>
#include <optional>

namespace quavernet {

namespace {

constexpr std::int64_t LongestWait = 10; // Seconds.

std::string WithFinalSlash(const std::string& path) {
    return path.ends_with('/') ? path : path + "/";
}

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

// The library's path, or nothing if a wait was in vain.
std::optional<std::string> FindOrCreate() {
    const std::string folder = DocumentsFolder() + "Quavernet Database/";
    const std::string file = folder + "Quavernet.db";
    FileSystemObject& fileSystem = *services.fileSystem;
    if (fileSystem.FileExists(file)) {
        return file;
    }
    if (!fileSystem.FolderExists(folder)) {
        fileSystem.CreateFolder(folder);
        if (!WaitUntil([&] { return fileSystem.FolderExists(folder); })) {
            return std::nullopt;
        }
    }
    fileSystem.CopyFile(WithFinalSlash(services.shell->ProgramFolder()) + "Quavernet.db", file);
    if (!WaitUntil([&] { return fileSystem.FileExists(file); })) {
        return std::nullopt;
    }
    return file;
}

} // namespace

std::string LocateDatabase() {
    try {
        if (const auto file = FindOrCreate()) {
            return *file;
        }
    } catch (const RuntimeError&) {
        // The same failure box as for a wait in vain.
    }
    services.msgBox->Show(LoadResString(440) + "\n" + LoadResString(441) + "\n" + LoadResString(442),
                          LoadResString(443), MsgBox::Icon::Critical, MsgBox::Buttons::Ok);
    ExitProgram();
}

} // namespace quavernet
