#include "adapters/mpv/MpvPlayer.h"

#include "adapters/mpv/EnginePlayer.h"

#include <utility>

namespace quavernet {

std::unique_ptr<MediaPlayer> CreateMpvPlayer(UserFiles& files, PostToLoop post, MpvOptions options) {
    mpv::Library::LoadAhead(options.library);
    return std::make_unique<mpv::EnginePlayer>(files, std::move(post), std::move(options));
}

} // namespace quavernet
