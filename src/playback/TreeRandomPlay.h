// Random play of a category of the tree: "Random Play" of the tree's menu. Registered by PlaybackCommands.
#pragma once

namespace quavernet {

class LongWork;
class PlayerWindow;
class TreeModel;

/// Plays each entry of the selected category once, in a random order, in either player; whether files are
/// always added does not count. Nothing happens without a selected node. Throws RuntimeError if the name
/// can't stand in a statement.
void TreeRandomPlay(const TreeModel& tree, PlayerWindow& player, LongWork& work);

} // namespace quavernet
