// The commands of the player: its window, playing, playlists and random play. Made once by the main window,
// before its menus.
#pragma once

namespace quavernet {

class CommandRegistry;
class PlayerWindow;

void RegisterPlaybackCommands(CommandRegistry& commands, PlayerWindow& player);

} // namespace quavernet
