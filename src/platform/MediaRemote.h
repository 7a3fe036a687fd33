// Control of the player from outside of its windows: media keys, the desktop's sound applet, other programs.
// The player tells what it does and takes their commands; the adapter lives in adapters/dbus.
#pragma once

#include <cstdint>
#include <string>

namespace quavernet {

/// What the player does, as it is shown to others.
struct MediaStatus {
    enum class Playback { Stopped, Playing, Paused }; ///< Stopped: at the end of the queue as well.
    enum class Loop { None, Track, Playlist };        ///< What begins again at its end.

    Playback playback = Playback::Stopped; ///< What is heard.
    Loop loop = Loop::None;                ///< The two repeat boxes.
    std::int32_t track = 0;                ///< Number of the current queue entry; 0: there is none.
    std::string title;                     ///< UTF-8, as all texts here.
    std::string artist;                    ///< Empty if it is not known.
    std::string path;                      ///< The current file; empty: there is none.
    std::string cover;                     ///< Path of the front image; empty: there is none.
    double length = -1;                    ///< Seconds; less than 0: not known.
    double volume = 1;                     ///< Place of the volume's slider, 0 to 1.
    bool canGoNext = false;                ///< Next starts another file.
    bool canGoPrevious = false;            ///< Previous starts another file.

    bool operator==(const MediaStatus&) const = default;
};

/// What others may ask of the player. Comes from the message loop.
class MediaRemoteCommands {
public:
    virtual ~MediaRemoteCommands() = default;

    virtual void RemotePlay() = 0;      ///< Starts the current file, or goes on; nothing while it plays.
    virtual void RemotePause() = 0;     ///< Nothing unless it plays.
    virtual void RemotePlayPause() = 0; ///< The one of the two that changes something.
    virtual void RemoteStop() = 0;      ///< The stop button.
    virtual void RemoteNext() = 0;      ///< The button for the next file.
    virtual void RemotePrevious() = 0;  ///< The button for the file before.

    /// Seconds from the start, 0 to the length.
    virtual void RemoteSetPosition(double seconds) = 0;
    /// Seconds from the start; 0 if there is no file.
    virtual double RemotePosition() const = 0;

    virtual void RemoteSetVolume(double volume) = 0;        ///< 0 to 1.
    virtual void RemoteSetLoop(MediaStatus::Loop loop) = 0; ///< Sets the repeat boxes.

    virtual void RemoteRaise() = 0; ///< Brings the player's window to the front.
    virtual void RemoteQuit() = 0;  ///< Closes all windows by the rules of closing.
};

class MediaRemote {
public:
    virtual ~MediaRemote() = default;

    /// Who is given the commands from now on; nullptr: nobody.
    virtual void SetCommands(MediaRemoteCommands* commands) = 0;

    /// What the player does now. Tells the listeners what has changed; nothing if nothing has.
    virtual void Show(const MediaStatus& status) = 0;

    /// The position has jumped: a seek, or a start that was not told of by a new track.
    virtual void Seeked(double seconds) = 0;
};

} // namespace quavernet
