// The media engine on libmpv. Made by RealServices.
#pragma once

#include "adapters/mpv/MpvOptions.h"
#include "platform/MediaPlayer.h"

#include <memory>

namespace quavernet {

class UserFiles;

/// The library is loaded in the background; the first SetFileName waits for it, and fails if there is none.
/// `post` brings what the engine tells into the message loop. All calls come from the thread of that loop.
/// `files` outlives the player, and is asked by other threads.
std::unique_ptr<MediaPlayer> CreateMpvPlayer(UserFiles& files, PostToLoop post, MpvOptions options = {});

} // namespace quavernet
