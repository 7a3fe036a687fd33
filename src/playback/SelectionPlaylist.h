// Playlists of the rows that are selected in the list: the one that goes to the external player, and those
// that the user saves. Called by the commands that play the selection and by the three that save it.
#pragma once

#include <string>
#include <vector>

namespace quavernet {

class LongWork;
class PlayerWindow;

/// Paths of the selected rows, in the order of the selection. Commands take them before they let events run:
/// they stay what was asked for, whatever the list shows then. Throws RuntimeError 5 for a row that is not in
/// the list.
std::vector<std::string> SelectedPaths();

/// Writes "Playlist.m3u" in the temporary folder and hands it to the external player. Throws RuntimeError if
/// a path is not in the library or the file can't be written. Lets events run while a box tells that the
/// file is missing.
void PlaySelectedFiles(const std::vector<std::string>& paths);

/// Ask for a file, write the selection to it, and open it in either player if the user wants that. Any
/// failure ends them silently; a file that was there before then stays. Let events run.
void mnuPlaylist_Click(PlayerWindow& player, LongWork& work);        ///< Only if a row is selected.
void mnuKontextPlaylist_Click(PlayerWindow& player, LongWork& work); ///< The toolbar's "plist" too.

} // namespace quavernet
