// What the player does, put together for whoever controls it from outside. PlayerRemote reads it after each
// change.
#pragma once

#include "platform/MediaRemote.h"

#include <string>

namespace quavernet {

class MediaPlayer;
class PlayQueue;

class RemoteStatus {
public:
    /// Title, performer and cover are asked of the library once for each file; of a file that it does not
    /// know the title is its name.
    MediaStatus Read(const PlayQueue& queue, const MediaPlayer& player);

private:
    void LookUp(const std::string& path);

    std::string m_path; ///< The file of the next three.
    std::string m_title;
    std::string m_artist;
    std::string m_cover;
};

} // namespace quavernet
