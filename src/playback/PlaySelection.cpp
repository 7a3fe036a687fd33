#include "playback/PlaySelection.h"

#include "app/MainModule.h"
#include "app/OpenWithShell.h"
#include "app/PlayerWindow.h"
#include "app/TextNumbers.h"
#include "browser/GridOpen.h"
#include "library/SqlQuote.h"
#include "playback/SelectionPlaylist.h"

namespace quavernet {

namespace {

void PlayInternally(PlayerWindow& player) {
    player.Show();
    player.FillPlaylist();
    player.PlayFile(1);
}

} // namespace

void cmdPlay_Click(const GridSelection& grid, PlayerWindow& player) {
    if (mainModule.SelectedRows.Count() > 0 && grid.Rows() > 1) {
        if (mainModule.UseExternalPlayer) {
            PlaySelectedFiles(SelectedPaths());
        } else {
            PlayInternally(player);
        }
    }
}

void mnuPlaySelectedItems_Click(PlayerWindow& player) {
    const std::vector<std::string> paths = SelectedPaths();
    if (paths.empty()) {
        return;
    }
    if (mainModule.UseExternalPlayer) {
        PlaySelectedFiles(paths);
    } else {
        PlayInternally(player);
    }
    for (const std::string& path : paths) {
        mainModule.Connection->Execute("Update Files Set Hits = Hits + 1 where Path = '" + SqlQuote(path) +
                                       "'");
    }
}

void mnuKontextPlay_Click(const GridSelection& grid, PlayerWindow& player, LongWork& work) {
    try {
        if (!mainModule.UseExternalPlayer) {
            player.Show();
            player.FillPlaylist();
            if (!mainModule.AlwaysAddToPlaylist) {
                player.PlayFile(1);
            }
        } else if (mainModule.SelectedRows.Count() < 2) {
            PlayCurrentRow(grid, player, work);
        } else {
            PlaySelectedFiles(SelectedPaths());
        }
    } catch (const RuntimeError&) {
        ShowExclamation(Texts::OpenFailed, Texts::PlayingFailed);
    }
}

} // namespace quavernet
