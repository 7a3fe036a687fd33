// The player on the desktop's session bus, as "org.mpris.MediaPlayer2" in version 2.2 describes it: media
// keys, sound applets and other programs find it there. Made by RealServices.
#pragma once

#include "platform/MediaRemote.h"

#include <memory>
#include <string>

namespace quavernet {

/// Connects to the bus in the background, and waits for nothing. Without a bus nobody is told anything.
/// `busAddress` empty: the bus of the session.
std::unique_ptr<MediaRemote> CreateMprisRemote(const std::string& busAddress = {});

} // namespace quavernet
