#include "library/CleanDatabase.h"

#include "app/EndWord.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextNumbers.h"
#include "library/BackUpLibrary.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace quavernet {

namespace {

struct Entry {
    std::string parent;
    std::int64_t position;
};

// The file's entries from the last position to the first: where it is listed twice in a category, closing the
// gap after the later entry leaves the earlier one in its place.
std::vector<Entry> EntriesOf(const std::string& fileId) {
    std::vector<Entry> entries;
    ADODB::Recordset rows;
    rows.Open("Select Parent, [Position] from FileCategories where File_id = " + fileId,
              *mainModule.Connection);
    if (rows.RecordCount() > 0) {
        for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
            entries.push_back({rows.Fields(0).Text(), rows.Fields(1).Integer()});
        }
    }
    rows.Close();
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return a.position > b.position; });
    return entries;
}

// The category's name goes in as it was read, without SqlQuote: a name with an apostrophe fails here and
// stops the run, after the file's own row has gone.
void RemoveEntry(const std::string& fileId, const Entry& entry) {
    const std::string position = std::to_string(entry.position);
    mainModule.Connection->Execute("Delete from FileCategories where ([Position] = " + position +
                                   " and File_id = " + fileId + " and Parent = '" + entry.parent + "')");
    mainModule.Connection->Execute(
        "Update FileCategories set [Position] = [Position] - 1 where ([Position] > " + position +
        " and Parent = '" + entry.parent + "')");
}

// False if the file is there after all.
bool RemoveFile(const std::string& path, const std::string& fileId) {
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    // Another running program may have stored the file since: it writes no row from here on, so that one look
    // at the disk tells.
    if (services.fileSystem->FileExists(path)) {
        return false;
    }
    mainModule.Connection->Execute("Delete from Files where File_id = " + fileId);
    for (const Entry& entry : EntriesOf(fileId)) {
        RemoveEntry(fileId, entry);
    }
    return true;
}

// How many have been removed.
std::size_t RemoveMissingFiles() {
    std::size_t removed = 0;
    ADODB::Recordset files;
    files.Open("Select Path, File_id from Files", *mainModule.Connection);
    if (files.RecordCount() > 0) {
        bool committed = false;
        for (files.MoveFirst(); !files.Eof(); files.MoveNext()) {
            const std::string path = files.Fields(0).Text();
            if (!services.fileSystem->FileExists(path)) {
                removed += RemoveFile(path, files.Fields(1).Text()) ? 1 : 0;
                committed = false;
            } else if (!committed) {
                // A slow volume may show one existing file after the other for minutes, without a statement:
                // nobody is to wait for us meanwhile.
                mainModule.Connection->Commit();
                committed = true;
            }
        }
    }
    files.Close();
    return removed;
}

} // namespace

void mnuCleanDatabase_Click(LongWork& work, LibraryViews& views) {
    const std::string question = LoadResString(357) + "\n" + LoadResString(358) + "\n\n" + LoadResString(359);
    // What goes is not brought back: Return alone must not do it.
    if (services.msgBox->Show(question, LoadResString(360), MsgBox::Icon::Information,
                              MsgBox::Buttons::NoByDefault) == MsgBox::Answer::Yes) {
        CleanDatabase(work, views);
    }
}

void CleanDatabase(LongWork& work, LibraryViews& views) {
    work.SetMousePointer(MousePointer::Hourglass);
    work.SetPanel(Panel::Scanning, LoadResString(383));
    work.DoEvents();
    EndWord end;
    const std::string noBackup = BackUpLibrary();
    const std::size_t removed = RemoveMissingFiles();
    views.LoadTree();
    if (!mainModule.LoadOverSearch) {
        views.LoadDatabase("");
    }
    work.SetPanel(Panel::Scanning, "");
    work.SetMousePointer(MousePointer::Default);
    if (removed == 0) {
        end.Say(LoadResString(Texts::NoFileMissing));
    } else {
        end.Count(removed, Texts::RemovedFile, Texts::RemovedFiles);
    }
    const std::string reason = noBackup.empty() ? "" : " - " + LoadResString(Texts::NoBackup) + noBackup;
    work.TellEnd(end.Done() + reason);
}

} // namespace quavernet
