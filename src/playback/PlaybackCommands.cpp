#include "playback/PlaybackCommands.h"

#include "app/CommandRegistry.h"
#include "app/PlayerWindow.h"
#include "playback/CategoryPlaylist.h"
#include "playback/PlaySelection.h"
#include "playback/RandomPlay.h"
#include "playback/SelectionPlaylist.h"
#include "playback/TreeRandomPlay.h"
#include "playback/frmRandomPlay.h"

namespace quavernet {

namespace {

// Boxes and dialogs let events run, and so does the player: no other command comes in between.
void RegisterListRequests(CommandRegistry& commands, const PlaybackParts& parts) {
    commands.RegisterAlone("cmdPlay", [parts] { cmdPlay_Click(parts.Grid, parts.Player); });
    commands.RegisterAlone("mnuPlaySelectedItems", [parts] { mnuPlaySelectedItems_Click(parts.Player); });
    commands.RegisterAlone("mnuKontextPlay",
                           [parts] { mnuKontextPlay_Click(parts.Grid, parts.Player, parts.Work); });
    commands.RegisterAlone("mnuPlaylist", [parts] { mnuPlaylist_Click(parts.Player, parts.Work); });
    for (const char* name : {"mnuKontextPlaylist", "plist"}) {
        commands.RegisterAlone(name, [parts] { mnuKontextPlaylist_Click(parts.Player, parts.Work); });
    }
    for (const char* name : {"cmdRandomize", "mnuRandomPlay", "mnuKontextRandom"}) {
        commands.RegisterAlone(name, [parts] { cmdRandomize_Click(parts.Player, parts.Work); });
    }
}

void RegisterTreeRequests(CommandRegistry& commands, const PlaybackParts& parts) {
    commands.RegisterAlone("mnuPlay", [parts] { mnuPlay_Click(parts.Tree, parts.Player); });
    commands.RegisterAlone("mnuTreeRandom",
                           [parts] { TreeRandomPlay(parts.Tree, parts.Player, parts.Work); });
    commands.RegisterAlone("mnuCreatePlaylist", [parts] { mnuCreatePlaylist_Click(parts.Tree); });
}

} // namespace

void RegisterPlaybackCommands(CommandRegistry& commands, const PlaybackParts& parts, QWidget& owner) {
    RegisterListRequests(commands, parts);
    RegisterTreeRequests(commands, parts);
    commands.Register("mnuPlayer", [parts] { parts.Player.BringToFront(); });
    commands.Register("mnuRandom", [&owner] { frmRandomPlay(&owner).exec(); });
}

} // namespace quavernet
