// The commands that play the rows which are selected in the list: the play button, the menu "Play" of the
// main menu and that of the list. Registered by PlaybackCommands.
#pragma once

namespace quavernet {

class GridSelection;
class LongWork;
class PlayerWindow;

/// The play button. It counts no play. Failures pass through. Lets events run.
void cmdPlay_Click(const GridSelection& grid, PlayerWindow& player);

/// Counts a play of each selected row when the request has been made. Failures pass through. Lets events run.
void mnuPlaySelectedItems_Click(PlayerWindow& player);

/// "Play" of the list's menu. In the external player fewer than two rows are played as by a double click,
/// which alone counts. A failure shows a box. Lets events run.
void mnuKontextPlay_Click(const GridSelection& grid, PlayerWindow& player, LongWork& work);

} // namespace quavernet
