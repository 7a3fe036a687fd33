// What is known of one file that the engine was given. Used by EnginePlayer.
#pragma once

#include "platform/MediaPlayer.h"
#include "platform/RuntimeError.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace quavernet::mpv {

struct Track {
    enum class State {
        Loading,
        Loaded,
        Refused, ///< It can't be played, or broke off.
        Stopped, ///< The engine doesn't hold it any more.
        Ended,   ///< Played to its end.
    };

    Track(std::uint64_t trackNumber, std::string trackPath)
        : number(trackNumber), path(std::move(trackPath)) {}

    std::uint64_t number; ///< Ours: one for each time that a file is given to the engine.
    std::string path;
    std::int64_t entry = 0; ///< The engine's number; 0 until it has told.
    State state = State::Loading;
    bool begun = false;     ///< The engine is at this file.
    bool restarted = false; ///< Its position goes on: after its start, and after each seek.
    bool late = false;      ///< SetFileName has given up waiting.
    double duration = MediaPlayer::NotReady;
    std::optional<RuntimeError> refusal;
};

} // namespace quavernet::mpv
