// What a double click or the Enter key on the main list does: sort by a column, or play a row in the internal
// or an external player. Called by the list's form and by the commands that stand for a double click.
#pragma once

#include "app/LongWork.h"
#include "app/PlayerWindow.h"
#include "browser/GridSelection.h"
#include "browser/GridSort.h"

#include <cstdint>
#include <string>

namespace quavernet {

/// The list as a sort by its head sees it.
class SortView {
public:
    virtual ~SortView() = default;

    virtual void SetRedraw(bool redraw) = 0;                   ///< Painting of the grid.
    virtual void SetHeaderPicture(const SortArrow& arrow) = 0; ///< All other header cells lose theirs.
    virtual void LoadDatabase(const std::string& list) = 0;
};

/// A double click at a cell. In row 0 it sorts by the column; in another row it plays the current row.
/// Failures end it silently. Lets events run while the internal player comes up and takes the row.
void grdMp3_DblClick(std::int32_t mouseCol, std::int32_t mouseRow, GridSelection& grid, PlayerWindow& player,
                     SortView& view, LongWork& work);

/// Plays the current row as a double click on it does, wherever the mouse is and whatever button went down
/// last. For the Enter key and for commands.
void PlayCurrentRow(const GridSelection& grid, PlayerWindow& player, LongWork& work);

/// What the Enter key runs: with one selected row PlayCurrentRow, with several PlaySelectedFiles.
enum class GridEnterAction { None, PlayCurrentRow, PlaySelectedFiles };
GridEnterAction GridEnter();

} // namespace quavernet
