#include "browser/GridOpen.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
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

void ShowOpenFailure(std::int32_t textId) {
    services.msgBox->Show(LoadResString(textId), LoadResString(329), MsgBox::Icon::Exclamation,
                          MsgBox::Buttons::Ok);
}

void OpenWithShell(const std::string& path) {
    const int result = services.shell->ShellExecute(path);
    if (result == 2 || result == 5) {
        ShowOpenFailure(330);
    } else if (result == 3) {
        ShowOpenFailure(392);
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
    if (mainModule.UseExternalPlayer) {
        OpenWithShell(path);
    } else {
        OpenInPlayer(player, work);
    }
    mainModule.Connection->Execute("Update Files Set Hits = Hits + 1 where File_id = " +
                                   std::to_string(grid.RowData(grid.Row())));
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

GridEnterAction GridEnter() {
    switch (mainModule.SelectedRows.Count()) {
    case 0:
        return GridEnterAction::None;
    case 1:
        return GridEnterAction::DblClick;
    default:
        return GridEnterAction::PlaySelectedFiles;
    }
}

} // namespace quavernet
