// How entries come into PlayQueue: from the list, the tree, the charts, random play, files and playlists.
#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "library/FirstField.h"
#include "library/SqlQuote.h"
#include "playback/M3uReader.h"
#include "playback/PlayQueue.h"
#include "tree/LoadTree.h"
#include "tree/NodeKey.h"
#include "tree/TreeModel.h"

namespace quavernet {

namespace {

constexpr const char* Fields = "Select I.Interpret, T.Name";
constexpr const char* FieldsWithPath = "Select I.Interpret, T.Name, F.Path";

/// A playlist of so many lines is read within the blink of an eye. Beyond, the window stays alive.
constexpr std::size_t LinesBetweenEvents = 4096;

std::string Statement(const char* fields, const std::string& condition) {
    return std::string(fields) + " from (Files F inner join Interpret I on F.Inter_id = I.Inter_id)" +
           " inner join Titel T on T.Title_id = F.Title_id" + condition;
}

// Throws if there is no row.
std::string EntryText(const ADODB::Recordset& row) {
    return row.Fields(0).Text() + " - " + row.Fields(1).Text();
}

} // namespace

void PlayQueue::FillPlaylist() {
    Run([this] {
        LetEventsRun();
        if (!m_loaded) {
            return;
        }
        EmptyUnlessAdding();
        for (const std::int32_t row : mainModule.SelectedRows.Rows()) {
            AddByPath(mainModule.FilePaths.Item(row));
        }
        if (!mainModule.AlwaysAddToPlaylist) {
            m_entries.Select(0);
        }
    });
}

void PlayQueue::EmptyUnlessAdding() {
    if (ListCount() == 0 || !mainModule.AlwaysAddToPlaylist) {
        EmptyQueue();
    }
}

// A path that the library doesn't know is a failure.
void PlayQueue::AddByPath(const std::string& path) {
    ADODB::Recordset row;
    row.Open(Statement(Fields, " where Path = '" + SqlQuote(path) + "'"), *mainModule.Connection);
    m_entries.Append(EntryText(row), path);
    row.Close();
    m_statusChanged = true;
}

void PlayQueue::AddById(const std::string& condition) {
    ADODB::Recordset row;
    row.Open(Statement(FieldsWithPath, condition), *mainModule.Connection);
    m_entries.Append(EntryText(row), row.Fields(2).Text());
    row.Close();
    m_statusChanged = true;
}

// Unlike the list's rows, what comes from the tree is always selected from the top.
void PlayQueue::FillPlaylistFromTree(std::int16_t mode, const TreeModel& tree) {
    Run([&] {
        constexpr std::int16_t OneFile = 1;
        constexpr std::int16_t WholeCategory = 2;
        EmptyUnlessAdding();
        if (mode == OneFile) {
            AddById(" where F.File_id = " + GetFileIdFromNode(tree, ""));
        } else if (mode == WholeCategory) {
            AddCategory(CategoryFromKey(tree.SelectedItem().Key));
        }
        m_entries.Select(0);
    });
}

// A category without entries is a failure.
void PlayQueue::AddCategory(const std::string& category) {
    const std::string id =
        FirstField("Select Category_id from Categories where Category = '" + SqlQuote(category) + "'");
    ADODB::Recordset entries;
    entries.Open("Select File_id from FileCategories where Category_id = " + id + " order by [Position]",
                 *mainModule.Connection);
    (void)entries.Fields(0);
    for (; !entries.Eof(); entries.MoveNext()) {
        AddById(" where F.File_id = " + entries.Fields(0).Text());
    }
    entries.Close();
}

void PlayQueue::FillPlaylistFromCharts(const RowTexts& chartPaths, std::int32_t row) {
    Run([&] {
        EmptyQueue();
        AddByPath(chartPaths.Item(row));
        m_entries.Select(0);
    });
}

// An id without a row is a failure like any other: a random queue may be shorter than was asked for.
void PlayQueue::FillRandomPlaylist(const std::string& fileId, std::int32_t /*counter*/) {
    Run([&] { AddById(" where File_id = " + fileId); });
}

void PlayQueue::AddPlaylist(const std::string& path) {
    Run([&] { AddFile(path); });
}

// Does not throw: where several files are added, each is added or left out by itself.
void PlayQueue::AddFile(const std::string& path) {
    try {
        ADODB::Recordset row;
        row.Open(Statement(Fields, " where F.Path = '" + SqlQuote(path) + "'"), *mainModule.Connection);
        m_entries.Append(row.Eof() ? FileNameFromPath(path) : EntryText(row), path);
        row.Close();
        m_statusChanged = true;
        m_entries.Select(0);
    } catch (const RuntimeError&) {
        // Left out.
    }
}

void PlayQueue::fGetM3u(std::int16_t mode, const std::string& fileName, bool checkExists) {
    Run([&] { ReadM3u(mode, fileName, checkExists); });
}

// Any mode gives up the paths; the list box is emptied by mode 1 alone. The texts are bare file names, also
// of files that the library knows.
void PlayQueue::ReadM3u(std::int16_t mode, const std::string& fileName, bool checkExists) {
    constexpr std::int16_t EmptyTheList = 1;
    m_startedEntry = 0;
    m_statusChanged = true;
    m_entries.ClearPaths();
    if (mode == EmptyTheList) {
        m_entries.ClearList();
    }
    M3uReader reader(fileName, checkExists);
    const unsigned clearings = m_entries.Clearings();
    std::string path;
    for (std::size_t lines = 1; reader.Next(path); ++lines) {
        if (!path.empty()) {
            m_entries.Append(FileNameFromPath(path), path);
        }
        if (lines % LinesBetweenEvents == 0) {
            LetEventsRun();
            if (clearings != m_entries.Clearings()) {
                return; // Another fill has taken the place of this one, or the window was closed.
            }
        }
    }
}

} // namespace quavernet
