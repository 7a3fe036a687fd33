// One handle of the engine with the options that the program wants of it. Nothing here waits for the engine:
// it may itself be waiting for a sound server. Used by EnginePlayer.
#pragma once

#include "adapters/mpv/MpvLibrary.h"
#include "adapters/mpv/MpvOptions.h"
#include "adapters/mpv/StreamTable.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quavernet::mpv {

/// Brings the news that there are events into the message loop: once, until it has been heard there. Not
/// heard any more when the last owner has let go of it.
class WakeUp : public std::enable_shared_from_this<WakeUp> {
public:
    WakeUp(PostToLoop post, std::function<void()> heard)
        : m_post(std::move(post)), m_heard(std::move(heard)) {}

    void Ring(); ///< From any thread.

private:
    PostToLoop m_post;
    std::function<void()> m_heard; ///< Runs in the message loop.
    std::atomic<bool> m_ringing{false};
};

class Engine {
public:
    // Properties of which an event tells when they change.
    static constexpr const char* AudioOutput = "current-ao";                 ///< Text.
    static constexpr const char* OutputRate = "audio-out-params/samplerate"; ///< Number, in Hz.

    /// Loads the library and starts the engine's threads. Throws RuntimeError if there is no library or it
    /// fails.
    Engine(UserFiles& files, const MpvOptions& options, std::shared_ptr<WakeUp> wakeUp);
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    StreamTable& Streams() { return *m_streams; }

    // All of these return at once; what they lead to comes as events, replies with the number given here.
    void Command(const std::vector<std::string>& words, std::uint64_t number = 0);
    void SetFlag(const char* property, bool value);
    void SetNumber(const char* property, double value);
    void SetChoice(const char* property, const std::string& value);
    void AskNumber(const char* property, std::uint64_t number);

    /// The next event; of the kind "none" if there is none after that time. Valid until the next call.
    const mpv_event& NextEvent(std::chrono::duration<double> patience);

    /// The engine's text for one of its error codes.
    std::string ErrorText(int code) const { return m_library.error_string(code); }

private:
    void SetOptions(const MpvOptions& options);

    Library m_library;
    std::shared_ptr<StreamTable> m_streams;
    std::shared_ptr<WakeUp> m_wakeUp;
    std::chrono::milliseconds m_endPatience;
    mpv_handle* m_handle = nullptr;
};

} // namespace quavernet::mpv
