// The commands of the player: its window, playing, playlists and random play, wherever they are offered. Made
// once by the main window, before its menus.
#pragma once

class QWidget;

namespace quavernet {

class CommandRegistry;
class GridSelection;
class LongWork;
class PlayerWindow;
class TreeModel;

/// What the commands of playback work on.
struct PlaybackParts {
    const GridSelection& Grid;
    const TreeModel& Tree; ///< The one that is shown: each load replaces its content.
    PlayerWindow& Player;
    LongWork& Work;
};

/// `owner` is the window above which the dialogs open.
void RegisterPlaybackCommands(CommandRegistry& commands, const PlaybackParts& parts, QWidget& owner);

} // namespace quavernet
