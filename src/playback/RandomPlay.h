// Random play of the whole library: the random button beside the search box and the menu items that stand for
// it. Registered by PlaybackCommands.
#pragma once

namespace quavernet {

class LongWork;
class PlayerWindow;

/// Draws as many ids as the settings say between the first and the last of the library, with replacement, and
/// plays their files in either player. An empty library plays nothing. Throws SettingError for a stored count
/// that is no number. No events run while ids are drawn.
void cmdRandomize_Click(PlayerWindow& player, LongWork& work);

} // namespace quavernet
