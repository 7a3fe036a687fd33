// Playlists of a category of the tree, and playing one: "Play" and "Playliste erstellen..." of the tree's
// menu. Registered by PlaybackCommands.
#pragma once

namespace quavernet {

class PlayerWindow;
class TreeModel;

/// "Play" of the tree's menu: an entry as by a double click; a category as a whole, in the external player by
/// a playlist of its name in the temporary folder. A failure shows a box. Lets events run.
void mnuPlay_Click(const TreeModel& tree, PlayerWindow& player);

/// Asks for a file and writes the selected category to it. Any failure, also that of an empty category, ends
/// it silently; a file that was there before then stays. Lets events run.
void mnuCreatePlaylist_Click(const TreeModel& tree);

} // namespace quavernet
