#include "scanner/AddDroppedFiles.h"

#include "app/AudioKind.h"
#include "app/EndWord.h"
#include "app/LongWork.h"
#include "app/MayAct.h"
#include "app/TextNumbers.h"
#include "inspect/modMp3Info.h"
#include "platform/RuntimeError.h"
#include "scanner/FileFields.h"
#include "scanner/Lookups.h"
#include "scanner/PutBack.h"
#include "scanner/ScanDriver.h"
#include "scanner/WaitForRead.h"

#include <algorithm>
#include <cstdint>
#include <span>

namespace quavernet {

namespace {

// The pointer's answer must not take longer than its next move.
constexpr std::size_t MostLookups = 1000;

// True if the file was not known and has been stored.
bool AddIfUnknown(const std::string& path, CurrentFile& file, NewFilesAhead& ahead, ScanDriver& driver) {
    const bool isKnown = IsKnownPath(path);
    const PutBack putBack(file);
    file.CurrentPath = path;
    file.DetailsPath = path;
    if (!isKnown) {
        AddDroppedFileToLibrary(path, file, ahead, driver);
    }
    return !isKnown;
}

void AddUnknown(const std::vector<std::string>& paths, ScanDriver& driver, std::size_t& added) {
    CurrentFile file = mainModule.CurrentFile;
    std::int16_t index = 0;
    NewFilesAhead ahead([&] { return AudioFiles(std::span(paths).subspan(index - 1U)); });
    for (const std::string& path : paths) {
        index = Narrow16(index + 1.0); // The list is counted in 16 bits.
        if (IsAudio(path) && AddIfUnknown(path, file, ahead, driver)) {
            ++added;
            // File by file: a disk that is full at a later one takes back what has been gathered, and the
            // end of a drop is silent.
            mainModule.Connection->Commit();
        }
    }
}

} // namespace

FileFacts InspectDroppedFile(const std::string& path, CurrentFile& file, NewFilesAhead& ahead) {
    ahead.WaitForContents(path);
    // CurrentFileName is still that of the file before, and a file without a tag is named after it. An Ogg
    // file goes this way too: it has no frame header, so its bit rate and length are 0.
    // Anything but a plain file isn't opened, since that alone makes some devices act; its facts then fail.
    if (services.fileSystem->FileExists(path)) {
        InspectFile(path, file);
    }
    return services.fileSystem->GetFile(path);
}

void StoreDroppedFile(const FileFacts& facts, CurrentFile& file, ScanDriver& driver) {
    FillFileFields(facts, file);
    driver.StoreFileRecord(file);
}

void AddDroppedFileToLibrary(const std::string& path, CurrentFile& file, NewFilesAhead& ahead,
                             ScanDriver& driver) {
    StoreDroppedFile(InspectDroppedFile(path, file, ahead), file, driver);
}

bool WouldAddFiles(const std::vector<std::string>& paths) {
    std::size_t lookups = MostLookups;
    return std::ranges::any_of(paths, [&](const std::string& path) {
        return IsAudio(path) && (lookups-- == 0 || !IsKnownPath(path));
    });
}

void AddDroppedFiles(const std::vector<std::string>& paths, ScanDriver& driver, ScanView& view,
                     LongWork& work) {
    if (!MayAct()) {
        return;
    }
    EndWord end;
    std::size_t added = 0;
    bool failed = false;
    try {
        AddUnknown(paths, driver, added);
        if (added > 0 && !mainModule.LoadOverSearch) {
            view.LoadDatabase("");
        }
    } catch (const RuntimeError&) {
        failed = true; // Ends the drop; what has been stored stays.
    }
    end.Count(added, Texts::NewFiles);
    if (!failed) {
        end.Count(paths.size() - added, Texts::SkippedFiles);
    }
    work.TellEnd(failed ? end.EndedEarly() : end.Done());
}

} // namespace quavernet
