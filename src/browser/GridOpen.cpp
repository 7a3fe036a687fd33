#include "browser/GridOpen.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "platform/RuntimeError.h"

namespace quavernet {

namespace {

constexpr int DefaultPointer = 0;
constexpr int HourglassPointer = 11;

void SortAndLoad(std::int32_t column, GridSelection& grid, GridOpenWindow& window) {
    window.SetRedraw(false);
    try {
        grid.SetRow(0);
        window.SetHeaderPicture(SortByHeader(column));
        window.LoadDatabase("");
    } catch (const RuntimeError&) {
        window.SetRedraw(true); // A load that failed must not leave the list frozen.
        throw;
    }
    window.SetRedraw(true);
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

void OpenInPlayer(PlayerWindow& player) {
    player.Show();
    services.events->DoEvents();
    player.FillPlaylist();
    services.events->DoEvents();
    if (player.QueueCount() == 1 || !mainModule.AlwaysAddToPlaylist) {
        player.PlayFile(1);
    }
}

void PlayRow(const GridSelection& grid, PlayerWindow& player) {
    const std::string path = mainModule.FilePaths.Item(grid.Row());
    if (mainModule.UseExternalPlayer) {
        OpenWithShell(path);
    } else {
        OpenInPlayer(player);
    }
    mainModule.Connection->Execute("Update Files Set Hits = Hits + 1 where File_id = " +
                                   std::to_string(grid.RowData(grid.Row())));
}

} // namespace

void grdMp3_DblClick(std::int32_t mouseCol, std::int32_t mouseRow, GridSelection& grid, PlayerWindow& player,
                     GridOpenWindow& window) {
    window.SetMousePointer(HourglassPointer);
    try {
        if (mouseRow == 0) {
            SortAndLoad(mouseCol, grid, window);
        } else if (mouseRow > 0 && !grid.RightClicked() && grid.Rows() >= 2) {
            PlayRow(grid, player);
        }
    } catch (const RuntimeError&) {
        // Ends the double click without a word.
    }
    window.SetMousePointer(DefaultPointer);
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
