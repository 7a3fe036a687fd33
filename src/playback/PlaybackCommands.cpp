#include "playback/PlaybackCommands.h"

#include "app/CommandRegistry.h"
#include "app/PlayerWindow.h"

namespace quavernet {

void RegisterPlaybackCommands(CommandRegistry& commands, PlayerWindow& player) {
    commands.Register("mnuPlayer", [&player] { player.BringToFront(); });
}

} // namespace quavernet
