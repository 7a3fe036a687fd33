#include "browser/GridOpen.h"

#include "app/MainModule.h"
#include "app/OpenWithShell.h"
#include "app/TextNumbers.h"
#include "platform/RuntimeError.h"

namespace quavernet {

namespace {

void SortAndLoad(std::int32_t column, GridSelection& grid, SortView& view) {
    view.SetRedraw(false);
    try {
        grid.SetRow(0);
        view.SetHeaderPicture(SortByHeader(column));
        view.LoadDatabase("");
    } catch (const RuntimeError&) {
        view.SetRedraw(true); // A load that failed must not leave the list frozen.
        throw;
    }
    view.SetRedraw(true);
}

// Alone among the places that open files, the list also tells a file that may not be read and a missing
// folder.
void OpenRow(const std::string& path) {
    const int result = services.shell->ShellExecute(path);
    if (result == Shell::FileMissing || result == Shell::AccessDenied) {
        ShowOpenFailure(Texts::FileNotFound);
    } else if (result == Shell::FolderMissing) {
        ShowOpenFailure(Texts::NetworkMissing);
    }
}

void OpenInPlayer(PlayerWindow& player, LongWork& work) {
    player.Show();
    work.DoEvents();
    player.FillPlaylist();
    work.DoEvents();
    if (player.QueueCount() == 1 || !mainModule.AlwaysAddToPlaylist) {
        player.PlayFile(1);
    }
}

void PlayRow(const GridSelection& grid, PlayerWindow& player, LongWork& work) {
    const std::string path = mainModule.FilePaths.Item(grid.Row());
    // Known before events run: the request counts for its own row, whatever the list shows afterwards.
    const std::string fileId = std::to_string(grid.RowData(grid.Row()));
    if (mainModule.UseExternalPlayer) {
        OpenRow(path);
    } else {
        OpenInPlayer(player, work);
    }
    mainModule.Connection->Execute("Update Files Set Hits = Hits + 1 where File_id = " + fileId);
}

} // namespace

void grdMp3_DblClick(std::int32_t mouseCol, std::int32_t mouseRow, GridSelection& grid, PlayerWindow& player,
                     SortView& view, LongWork& work) {
    work.SetMousePointer(MousePointer::Hourglass);
    try {
        if (mouseRow == 0) {
            SortAndLoad(mouseCol, grid, view);
        } else if (mouseRow > 0 && !grid.RightClicked() && grid.Rows() >= 2) {
            PlayRow(grid, player, work);
        }
    } catch (const RuntimeError&) {
        // Ends the double click without a word.
    }
    work.SetMousePointer(MousePointer::Default);
}

void PlayCurrentRow(const GridSelection& grid, PlayerWindow& player, LongWork& work) {
    work.SetMousePointer(MousePointer::Hourglass);
    if (grid.Rows() >= 2) {
        IgnoreFailure([&] { PlayRow(grid, player, work); });
    }
    work.SetMousePointer(MousePointer::Default);
}

GridEnterAction GridEnter() {
    switch (mainModule.SelectedRows.Count()) {
    case 0:
        return GridEnterAction::None;
    case 1:
        return GridEnterAction::PlayCurrentRow;
    default:
        return GridEnterAction::PlaySelectedFiles;
    }
}

} // namespace quavernet
