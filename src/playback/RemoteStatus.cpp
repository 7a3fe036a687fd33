#include "playback/RemoteStatus.h"

#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "library/SqlQuote.h"
#include "platform/MediaPlayer.h"
#include "playback/PlayQueue.h"

#include <algorithm>

namespace quavernet {

namespace {

MediaStatus::Playback PlaybackOf(const PlayQueue& queue, const MediaPlayer& player) {
    if (player.IsPlaying()) {
        return MediaStatus::Playback::Playing;
    }
    const bool isPaused = queue.Paused() && !queue.Stopped() && !player.FileName().empty();
    return isPaused ? MediaStatus::Playback::Paused : MediaStatus::Playback::Stopped;
}

MediaStatus::Loop LoopOf(const PlayQueue& queue) {
    if (queue.Repeat()) {
        return MediaStatus::Loop::Track;
    }
    return queue.RepeatAll() ? MediaStatus::Loop::Playlist : MediaStatus::Loop::None;
}

} // namespace

MediaStatus RemoteStatus::Read(const PlayQueue& queue, const MediaPlayer& player) {
    MediaStatus status;
    status.playback = PlaybackOf(queue, player);
    status.loop = LoopOf(queue);
    status.track = queue.CurrentTrack();
    status.path = player.FileName();
    if (status.path != m_path) {
        LookUp(status.path);
    }
    status.title = m_title;
    status.artist = m_artist;
    status.cover = m_cover;
    status.length = player.Duration();
    status.volume = 1 + static_cast<double>(player.Volume()) / PlayQueue::LoudestPosition;
    // By the rules of the two buttons, to which a track of 0 counts as the first.
    status.canGoNext = std::max<std::int32_t>(status.track, 1) < queue.ListCount();
    status.canGoPrevious = status.track > 1 && queue.ListCount() > 0;
    return status;
}

void RemoteStatus::LookUp(const std::string& path) {
    m_path = path;
    m_title = FileNameFromPath(path);
    m_artist.clear();
    m_cover.clear();
    if (path.empty() || !mainModule.Connection) {
        return;
    }
    IgnoreFailure([&] {
        ADODB::Recordset file;
        file.Open(
            "Select I.Interpret, T.Name, F.Album_id, F.Inter_id from (Files F inner join Interpret I on "
            "F.Inter_id = I.Inter_id) inner join Titel T on T.Title_id = F.Title_id where F.Path = '" +
                SqlQuote(path) + "'",
            *mainModule.Connection);
        if (file.Eof()) {
            return;
        }
        m_artist = file.Fields(0).Text();
        m_title = file.Fields(1).Text();
        ADODB::Recordset cover;
        cover.Open("Select Front from Covers where Album_id = " + file.Fields(2).Text() +
                       " and Interpret_id = " + file.Fields(3).Text(),
                   *mainModule.Connection);
        if (!cover.Eof()) {
            m_cover = cover.Fields(0).Text();
        }
    });
}

} // namespace quavernet
