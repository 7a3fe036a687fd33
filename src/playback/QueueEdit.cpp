// What the user changes in PlayQueue: removing, shuffling, files and folders that are added or dropped,
// playlists.
#include "app/AudioKind.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/OpenWithShell.h"
#include "app/ScopedValue.h"
#include "app/ShowBox.h"
#include "app/TextNumbers.h"
#include "library/SqlQuote.h"
#include "playback/AskForPlaylist.h"
#include "playback/PlayQueue.h"
#include "playback/PlaylistWriter.h"
#include "playback/ShuffledOrder.h"
#include "scanner/FolderOrder.h"
#include "scanner/WaitForRead.h"

#include <algorithm>

namespace quavernet {

namespace {

std::string Documents() {
    return GetSpecialFolderPath(Shell::DocumentsFolder);
}

// Names in the order in which a listing shows them: in any case of letters.
bool ComesBefore(const FolderFile& a, const FolderFile& b) {
    const std::string lowerA = LowerAscii(a.name);
    const std::string lowerB = LowerAscii(b.name);
    return lowerA != lowerB ? lowerA < lowerB : a.name < b.name;
}

} // namespace

void PlayQueue::cmdRem_Click() {
    Run([this] {
        if (ListIndex() != QueueEntries::None) {
            RemoveSelected();
        }
    });
}

// Path and text go together, so that what runs in the events finds the two stores in step. What plays goes
// on, also if it is the entry that is removed.
void PlayQueue::RemoveSelected() {
    // The entry's number, from 1, is compared with the position, from 0: removing the entry after the
    // current one shifts the number as well.
    if (m_currentTrack >= ListIndex()) {
        m_currentTrack = Narrow16(m_currentTrack - 1.0);
    }
    unsigned clearings = m_entries.Clearings();
    LetEventsRun();
    const std::int32_t position = ListIndex();
    if (clearings != m_entries.Clearings() || position == QueueEntries::None) {
        return;
    }
    m_entries.Remove(position);
    m_statusChanged = true;
    if (position + 1 == m_startedEntry) {
        m_startedEntry = 0;
    } else if (position + 1 < m_startedEntry) {
        --m_startedEntry;
    }
    LetEventsRun();
    if (clearings == m_entries.Clearings()) {
        m_entries.Select(std::min(position, ListCount() - 1));
    }
}

void PlayQueue::cmdRemAll_Click() {
    Run([this] { EmptyQueue(); }); // The current track keeps its number, and what plays goes on.
}

// The texts are moved as they are: the marker goes along with its entry, wherever that comes to lie.
void PlayQueue::cmdRandomize_Click() {
    Run([this] {
        mainModule.RandomCount = m_entries.PathCount();
        mainModule.RandomNumbers.Randomize();
        m_entries.Arrange(ShuffledOrder(m_entries.PathCount()));
        m_startedEntry = 0;
        Start(1, Origin::Player);
    });
}

void PlayQueue::mnuAddFile_Click() {
    Run([this] {
        const bool wasEmpty = BeginAdding();
        std::optional<std::string> path;
        Outside([&] { path = services.dialogs->ShowOpen(LoadResString(Texts::AudioFilter), Documents()); });
        if (!path || !m_loaded) {
            return;
        }
        AddFile(*path);
        if (wasEmpty) {
            Start(1, Origin::Player);
        }
    });
}

// Whether the list is empty: what is added then is started.
bool PlayQueue::BeginAdding() {
    const bool isEmpty = ListCount() == 0;
    if (isEmpty) {
        m_entries.ClearPaths();
    }
    return isEmpty;
}

void PlayQueue::mnuAddFolder_Click() {
    if (m_waitsForFolder) {
        return;
    }
    Run([this] {
        const bool wasEmpty = BeginAdding();
        std::optional<std::string> folder;
        Outside([&] { folder = services.dialogs->BrowseForFolder(LoadResString(Texts::ChooseFolder)); });
        if (!folder || !m_loaded) {
            return;
        }
        const unsigned starts = m_starts;
        if (!IsExcludedFolder(*folder) && !AddFolder(*folder)) {
            return;
        }
        if (wasEmpty && starts == m_starts) {
            Start(1, Origin::Player);
        }
    });
}

// Only the folder's own files, and only those whose extension is in lower case. The folder may lie on a share
// that hangs: events run until it can be listed. Who closes the window, or empties a queue that had entries,
// ends the wait: then it is false.
bool PlayQueue::AddFolder(const std::string& folder) {
    const auto walk = services.fileSystem->GetFolder(folder);
    FolderAhead ahead(walk->Path());
    const ScopedValue waits(m_waitsForFolder, true);
    const auto letEventsRun = [this, hadEntries = ListCount() > 0, clearings = m_entries.Clearings()] {
        LetEventsRun();
        return m_loaded && (!hadEntries || clearings == m_entries.Clearings());
    };
    if (!ahead.WaitForIt(letEventsRun)) {
        return false;
    }
    std::vector<FolderFile> files = walk->List(walk->Path()).files;
    std::sort(files.begin(), files.end(), ComesBefore);
    for (const FolderFile& file : files) {
        if (!file.hidden && (file.name.ends_with(".mp3") || file.name.ends_with(".wav"))) {
            AddFile(WithFinalSlash(walk->Path()) + file.name);
        }
    }
    return true;
}

// The first name decides about all. A playlist is none of the three kinds.
void PlayQueue::DropOnWindow(const std::vector<std::string>& paths) {
    Run([&] {
        if (paths.empty() || AudioKindOf(paths.front()) == AudioKind::None) {
            return;
        }
        EmptyQueue();
        for (const std::string& path : paths) {
            AddFile(path);
        }
        Start(1, Origin::Player);
    });
}

// Adds to the queue, unlike a drop beside the list, and starts nothing.
void PlayQueue::DropOnList(const std::vector<std::string>& paths) {
    Run([&] {
        if (paths.empty() || AudioKindOf(paths.front()) == AudioKind::None) {
            return;
        }
        (void)BeginAdding();
        for (const std::string& path : paths) {
            AddFile(path);
        }
    });
}

void PlayQueue::cmdLoadPlaylist_Click() {
    Run([this] {
        std::optional<std::string> path;
        Outside(
            [&] { path = services.dialogs->ShowOpen(LoadResString(Texts::PlaylistFilter), Documents()); });
        if (path && m_loaded) {
            fGetM3u(1, *path, true);
            Start(1, Origin::Player);
        }
    });
}

void PlayQueue::cmdCreatePlaylist_Click() {
    Run([this] {
        std::optional<std::string> path;
        Outside([&] { path = AskForPlaylist(); });
        if (path && m_loaded) {
            SavePlaylist(*path);
        }
    });
}

// Somebody waits for this file: that it could not be written is told.
void PlayQueue::SavePlaylist(const std::string& path) {
    try {
        WritePlayerPlaylist(path);
    } catch (const RuntimeError& failure) {
        Outside([&] {
            if (failure.Number() == ErrorNumber::DiskFull) {
                ShowBox(FailureText(failure), Texts::SavingCancelled, MsgBox::Icon::Critical);
            } else {
                ShowExclamation(Texts::OpenFailed, Texts::SavingCancelled);
            }
        });
    }
}

void PlayQueue::WritePlayerPlaylist(const std::string& path) const {
    PlaylistWriter playlist(path);
    IgnoreFailure([&] { WriteEntries(playlist); });
    playlist.Close();
}

// An apostrophe in a path is a failure: the statement takes the path as it is.
void PlayQueue::WriteEntries(PlaylistWriter& playlist) const {
    for (std::int32_t entry = 1; entry <= m_entries.PathCount(); ++entry) {
        ADODB::Recordset row;
        row.Open("Select Name, Length from Files where Path = '" + std::string(SqlPlain(Path(entry))) + "'",
                 *mainModule.Connection);
        playlist.Add(row.Fields(0), row.Fields(1), Path(entry));
        row.Close();
    }
}

} // namespace quavernet
