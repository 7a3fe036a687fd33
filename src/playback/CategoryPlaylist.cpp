#include "playback/CategoryPlaylist.h"

#include "app/GetTempDir.h"
#include "app/MainModule.h"
#include "app/OpenWithShell.h"
#include "app/PlayerWindow.h"
#include "app/TextNumbers.h"
#include "library/FirstField.h"
#include "library/SqlQuote.h"
#include "playback/AskForPlaylist.h"
#include "playback/PlaylistWriter.h"
#include "tree/NodeKey.h"
#include "tree/TreeEvents.h"
#include "tree/TreeModel.h"

namespace quavernet {

namespace {

void AddById(PlaylistWriter& playlist, const std::string& fileId) {
    ADODB::Recordset file;
    file.Open("Select Path, Name, Length from Files where File_id = " + fileId, *mainModule.Connection);
    playlist.Add(file.Fields(1), file.Fields(2), file.Fields(0).Text());
    file.Close();
}

void WriteCategoryPlaylist(const std::string& category, const std::string& path,
                           PlaylistWriter::Place place) {
    const std::string categoryId =
        FirstField("Select Category_id from Categories where Category = '" + SqlQuote(category) + "'");
    ADODB::Recordset entries;
    entries.Open("Select File_id from FileCategories where Category_id = " + categoryId +
                     " order by [Position]",
                 *mainModule.Connection);
    (void)entries.Fields(0); // Fails for a category without entries: no file is then begun.
    PlaylistWriter playlist(path, place);
    for (; !entries.Eof(); entries.MoveNext()) {
        AddById(playlist, entries.Fields(0).Text());
    }
    entries.Close();
    playlist.Close();
}

// A name that leads to another folder is no name of a file.
std::string TemporaryPath(const std::string& category) {
    if (category.find('/') != std::string::npos) {
        throw RuntimeError(ErrorNumber::PathNotFound, "Path not found: " + category);
    }
    return GetTempDir() + category + ".m3u";
}

void PlayCategory(const std::string& category, const TreeModel& tree, PlayerWindow& player) {
    if (mainModule.UseExternalPlayer) {
        const std::string path = TemporaryPath(category);
        WriteCategoryPlaylist(category, path, PlaylistWriter::Place::Temporary);
        OpenWithShell(path);
        return;
    }
    player.Show();
    player.FillPlaylistFromTree(PlayerWindow::WholeCategory, tree);
    player.PlayFileFromTree(1);
}

} // namespace

void mnuPlay_Click(const TreeModel& tree, PlayerWindow& player) {
    try {
        const std::string key = tree.SelectedItem().Key;
        if (KindOfKey(key) == NodeKind::File) {
            TreeDblClick(tree, player);
        } else {
            PlayCategory(CategoryFromKey(key), tree, player);
        }
    } catch (const RuntimeError&) {
        ShowExclamation(Texts::OpenFailed, Texts::PlayingFailed);
    }
}

void mnuCreatePlaylist_Click(const TreeModel& tree) {
    IgnoreFailure([&] {
        // The tree may be another one when the dialog closes.
        const std::string category = CategoryFromKey(tree.SelectedItem().Key);
        if (const auto path = AskForPlaylist()) {
            WriteCategoryPlaylist(category, *path, PlaylistWriter::Place::Chosen);
        }
    });
}

} // namespace quavernet
