// The media engine: plays one file at a time and says when it has ended. The play queue is its only caller;
// the adapter lives in adapters/mpv, tests bring one that follows a script.
#pragma once

#include <cstdint>
#include <string>

namespace quavernet {

/// What the engine tells by itself. Comes from the message loop, never from inside a call of MediaPlayer.
class MediaPlayerEvents {
public:
    virtual ~MediaPlayerEvents() = default;

    /// The file that was set last has been played to its end. Not told of a file that was refused, stopped or
    /// replaced.
    virtual void EndOfStream() = 0;

    /// A file that took longer to load than SetFileName waits: its Duration is known now.
    virtual void LoadedLate() = 0;

    /// The same for a file that turns out to be none that can be played, or breaks off before its end.
    virtual void RefusedLate() = 0;

    /// IsPlaying or SilenceReason may have changed.
    virtual void PlayingChanged() = 0;
};

class MediaPlayer {
public:
    static constexpr std::int32_t FullVolume = 0;
    static constexpr double NotReady = -1; ///< A position or duration that is not known yet.

    virtual ~MediaPlayer() = default;

    /// Who is told of the engine's events from now on; nullptr: nobody.
    virtual void SetEvents(MediaPlayerEvents* events) = 0;

    /// Loads a file, which takes the place of the one before; Play starts it. Waits a moment for the file,
    /// and throws RuntimeError if it can't be played: it is missing, no plain file, or no sound. A file that
    /// the engine has begun by itself (SetNextFile) goes on without a break.
    virtual void SetFileName(const std::string& path) = 0;
    virtual std::string FileName() const = 0; ///< Empty if there is none.

    /// Which file SetFileName will be given at the end of this one; empty: none. Lets the engine go on
    /// without a break. Never fails: a file that can't be played shows at its own SetFileName.
    virtual void SetNextFile(const std::string& path) = 0;

    virtual void Play() = 0;            ///< Starts, or goes on after Pause. Nothing happens without a file.
    virtual void Pause() = 0;           ///< The position stays.
    virtual void Stop() = 0;            ///< The file stays set; Play begins it again.
    virtual bool IsPlaying() const = 0; ///< Sound goes on: not paused, stopped or at the end.

    /// Seconds. NotReady while no file is loaded.
    virtual double Duration() const = 0;
    virtual double CurrentPosition() const = 0;
    virtual void SetCurrentPosition(double seconds) = 0;

    /// Hundredths of a decibel, 0 or less. Holds for all files.
    virtual std::int32_t Volume() const = 0;
    virtual void SetVolume(std::int32_t volume) = 0;

    /// Why nothing is heard although all is well with the file (no sound device); empty if there is no
    /// reason.
    virtual std::string SilenceReason() const = 0;
};

} // namespace quavernet
