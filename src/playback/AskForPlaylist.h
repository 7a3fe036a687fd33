// The question for the file of a playlist that is to be saved. Asked by the commands of list, tree
// and player.
#pragma once

#include <optional>
#include <string>

namespace quavernet {

/// The path as the user has typed or chosen it. Nothing if the dialog was cancelled or can't come up. Lets
/// events run.
std::optional<std::string> AskForPlaylist();

} // namespace quavernet
