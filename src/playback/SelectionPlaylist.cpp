#include "playback/SelectionPlaylist.h"

#include "app/GetTempDir.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/OpenWithShell.h"
#include "app/PlayerWindow.h"
#include "app/TextNumbers.h"
#include "library/SqlQuote.h"
#include "playback/AskForPlaylist.h"
#include "playback/PlaylistWriter.h"
#include "playback/ShownWork.h"

namespace quavernet {

namespace {

void AddByPath(PlaylistWriter& playlist, const std::string& path) {
    ADODB::Recordset file;
    file.Open("Select Name, Length from Files where Path = '" + SqlQuote(path) + "'", *mainModule.Connection);
    playlist.Add(file.Fields(0), file.Fields(1), path);
    file.Close();
}

void WritePlaylist(PlaylistWriter playlist, const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        AddByPath(playlist, path);
    }
    playlist.Close();
}

void OpenPlaylist(const std::string& playlist, PlayerWindow& player) {
    if (mainModule.UseExternalPlayer) {
        OpenWithShell(playlist);
        return;
    }
    constexpr std::int16_t EmptyFirst = 1;
    player.Show();
    player.fGetM3u(EmptyFirst, playlist, true);
    player.PlayFile(1);
}

void WriteSelectionPlaylist(const std::string& playlist, const std::vector<std::string>& paths,
                            PlayerWindow& player, LongWork& work) {
    const ShownPanelText panel(work, LoadResString(Texts::WritingPlaylist));
    {
        const ShownHourglass hourglass(work);
        WritePlaylist(PlaylistWriter(playlist), paths);
    }
    if (services.msgBox->Show(LoadResString(Texts::PlaylistWritten), LoadResString(Texts::FileWritten),
                              MsgBox::Icon::Information, MsgBox::Buttons::YesNo) == MsgBox::Answer::Yes) {
        OpenPlaylist(playlist, player);
    }
}

} // namespace

std::vector<std::string> SelectedPaths() {
    std::vector<std::string> paths;
    paths.reserve(mainModule.SelectedRows.Count());
    for (const std::int32_t row : mainModule.SelectedRows.Rows()) {
        paths.push_back(mainModule.FilePaths.Item(row));
    }
    return paths;
}

void PlaySelectedFiles(const std::vector<std::string>& paths) {
    const std::string playlist = GetTempDir() + "Playlist.m3u";
    WritePlaylist(PlaylistWriter(playlist, PlaylistWriter::Place::Temporary), paths);
    OpenWithShell(playlist);
}

void mnuKontextPlaylist_Click(PlayerWindow& player, LongWork& work) {
    IgnoreFailure([&] {
        const std::vector<std::string> paths = SelectedPaths();
        if (const auto playlist = AskForPlaylist()) {
            WriteSelectionPlaylist(*playlist, paths, player, work);
        }
    });
}

void mnuPlaylist_Click(PlayerWindow& player, LongWork& work) {
    if (mainModule.SelectedRows.Count() > 0) {
        mnuKontextPlaylist_Click(player, work);
    }
}

} // namespace quavernet
