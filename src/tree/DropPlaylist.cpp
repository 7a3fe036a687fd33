#include "app/AudioKind.h"
#include "app/CurrentFile.h"
#include "app/LongWork.h"
#include "app/MainModule.h"
#include "library/SqlQuote.h"
#include "platform/Paths.h"
#include "platform/TextLines.h"
#include "platform/Utf8.h"
#include "scanner/WaitForRead.h"
#include "tree/DropRun.h"
#include "tree/PlaylistFile.h"

namespace quavernet {

namespace {

constexpr std::size_t ExtensionLength = 4;

// The playlist's name, or with the first number from 1 on that makes it free.
std::string FreeCategoryName(const std::string& baseName) {
    for (int i = 0;; ++i) {
        std::string name = i > 0 ? baseName + std::to_string(i) : baseName;
        ADODB::Recordset rows;
        rows.Open("Select * from Categories where Category = '" + std::string(SqlPlain(name)) + "'",
                  *mainModule.Connection);
        const bool isFree = rows.RecordCount() == 0;
        rows.Close();
        if (isFree) {
            return name;
        }
    }
}

// The key of the new category: the highest one, which comes last.
std::string LastCategoryId() {
    ADODB::Recordset rows;
    rows.Open("Select Category_id from Categories", *mainModule.Connection);
    rows.MoveLast();
    std::string id = rows.Eof() ? "1" : rows.Fields(0).Text();
    rows.Close();
    return id;
}

std::string AddCategory(const std::string& baseName) {
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    const std::string name = FreeCategoryName(baseName);
    mainModule.Connection->Execute("Insert Into Categories (Category) values ('" + name + "')");
    return LastCategoryId();
}

// The files that are named after so many lines, in order, for reading ahead: what the lines lead to is found
// out when their turn comes.
std::vector<std::string> FilesAfter(const std::string& playlist, std::size_t lines) {
    std::vector<std::string> files;
    TextLines text(*services.files, playlist);
    std::string line;
    while (text.Next(line)) {
        if (lines > 0) {
            --lines;
        } else if (line.starts_with('/') && IsAudio(line)) {
            files.push_back(line);
        }
    }
    return files;
}

} // namespace

void DropPlaylist(DropRun& run) {
    const std::string path = run.request.Files.front(); // Others of the drop don't count.
    const std::string fileName = FileNameFromPath(path);
    const std::string baseName(DropRightCharacters(fileName, ExtensionLength));
    run.work.SetMousePointer(MousePointer::Hourglass);
    const std::string categoryId = AddCategory(baseName);
    mainModule.Connection->Commit(); // As long as its failure is a silent one.
    TextLines lines(*services.files, path);
    CurrentFile file = mainModule.CurrentFile;
    std::string line;
    std::size_t done = 0;
    NewFilesAhead ahead([&] { return FilesAfter(path, done - 1); });
    const auto exists = [&](const std::string& named) {
        ahead.WaitForFacts(named);
        return FileExists(named);
    };
    bool isShared = false; // Another program has written since.
    bool isOver = false;
    while (lines.Next(line)) {
        ++done;
        if (line.starts_with('#')) {
            continue;
        }
        if (isOver) {
            ++run.skipped;
            continue;
        }
        // Whether a line's file is there is asked with failures passed over, and this ends the drop's own way
        // with failures.
        run.failuresEndDrop = false;
        const std::string present = PlaylistFile(line, exists);
        if (present.empty()) {
            ++run.skipped;
            continue;
        }
        std::optional<ADODB::WriteLock> writeLock;
        const std::string stored = StoreIfUnknown(run, present, file, ahead, writeLock);
        Advance(run.pos);
        writeLock.emplace(*mainModule.Connection);
        isShared = run.watch.HasNews() || isShared;
        if (isShared && !TakesEntries(categoryId, baseName)) {
            isOver = true;
            continue;
        }
        // The entries name the playlist as their parent, also when the category has a number after that name:
        // they show in the new category, and their length counts for the old one.
        InsertEntryOfPath(run, stored, categoryId, SqlQuote(baseName));
    }
    run.work.SetMousePointer(MousePointer::Default);
}

} // namespace quavernet
