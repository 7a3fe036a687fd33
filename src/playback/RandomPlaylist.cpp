#include "playback/RandomPlaylist.h"

#include "app/GetTempDir.h"
#include "app/MainModule.h"
#include "app/OpenWithShell.h"
#include "app/TextNumbers.h"

namespace quavernet {

bool AddRandomFile(PlaylistWriter& playlist, const std::string& fileId) {
    ADODB::Recordset file;
    file.Open("Select Name, Length, Path from Files where File_id = " + fileId, *mainModule.Connection);
    const bool found = !file.Eof();
    if (found) {
        playlist.Add(file.Fields(0), file.Fields(1), file.Fields(2).Text());
    }
    file.Close();
    return found;
}

void PlayRandomPlaylist(const std::function<void(PlaylistWriter&)>& fill) {
    try {
        const std::string path = GetTempDir() + "Random.m3u";
        PlaylistWriter playlist(path, PlaylistWriter::Place::Temporary);
        fill(playlist);
        playlist.Close();
        OpenWithShell(path);
    } catch (const RuntimeError&) {
        ShowExclamation(Texts::OpenFailed, Texts::PlayingFailed);
    }
}

} // namespace quavernet
