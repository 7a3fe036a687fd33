// The media engine: what its caller sets and asks, and what libmpv says meanwhile, brought together. Made by
// CreateMpvPlayer.
#pragma once

#include "adapters/mpv/MpvEngine.h"
#include "adapters/mpv/PositionClock.h"
#include "adapters/mpv/Track.h"
#include "platform/MediaPlayer.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace quavernet::mpv {

class EnginePlayer final : public MediaPlayer {
public:
    EnginePlayer(UserFiles& files, PostToLoop post, MpvOptions options)
        : m_files(files), m_options(std::move(options)),
          m_wakeUp(std::make_shared<WakeUp>(std::move(post), [this] { Hear(); })) {}

    void SetEvents(MediaPlayerEvents* events) override { m_events = events; }
    void SetFileName(const std::string& path) override;
    std::string FileName() const override { return m_current ? m_current->path : std::string(); }
    void SetNextFile(const std::string& path) override;
    void Play() override;
    void Pause() override;
    void Stop() override;
    bool IsPlaying() const override;
    double Duration() const override { return m_current ? m_current->duration : NotReady; }
    double CurrentPosition() const override;
    void SetCurrentPosition(double seconds) override;
    std::int32_t Volume() const override { return m_volume; }
    void SetVolume(std::int32_t volume) override;
    std::string SilenceReason() const override;

private:
    using steady_clock = std::chrono::steady_clock;

    /// Sets the numbers of seeks apart from those of files, in replies.
    static constexpr std::uint64_t SeekMark = 1ULL << 63;

    enum class News { EndOfStream, LoadedLate, RefusedLate };

    /// The engine's output where nothing else can be opened.
    static constexpr const char* NoDevice = "null";

    // EnginePlayer.cpp: the calls.
    bool IsSilent() const { return !m_libraryFault.empty() || m_audioOutput == NoDevice; }
    void WantEngine();
    void LookForDevice();
    void Load(const std::string& path);
    void WaitUntilLoaded();
    void AppendNext();
    void DropNext();
    void Seek();
    void AskPosition() const;
    void UpdateClock();

    // EngineEvents.cpp: what the engine says, and what the listener is told.
    void Hear();
    void TakeEvents();
    void Take(const mpv_event& event);
    void TakeStart();
    void TakeReply(const mpv_event& event);
    void TakeNumber(const mpv_event& event);
    void TakeEnd(const mpv_event_end_file& end);
    void TakeRestart();
    void TakeChange(const mpv_event_property& property);
    void KeepDevice(bool keep);
    void Answered(Track& track);
    void Refuse(Track& track, int code);
    Track* OfNumber(std::uint64_t number);
    Track* OfEntry(std::int64_t entry);
    void Tell(News news);
    void TellNews();
    void DropUnwantedNext(std::uint64_t ended);

    UserFiles& m_files;
    const MpvOptions m_options;
    const std::shared_ptr<WakeUp> m_wakeUp;
    const std::shared_ptr<bool> m_life = std::make_shared<bool>(); ///< Goes with the player, and tells so.
    std::unique_ptr<Engine> m_engine;
    MediaPlayerEvents* m_events = nullptr;

    std::optional<Track> m_current;
    std::optional<Track> m_next; ///< What the engine goes on with by itself.
    std::string m_nextPath;      ///< What is wanted there.
    std::uint64_t m_lastNumber = 0;
    std::int64_t m_entryAt = 0; ///< The engine's number of the file that it is at.
    bool m_paused = true;
    std::int32_t m_volume = FullVolume;

    std::deque<std::pair<News, std::uint64_t>> m_news; ///< To be told from the message loop, with the track.
    bool m_toldPlaying = false;
    bool m_toldSilent = false;

    PositionClock m_clock;
    std::uint64_t m_seek = 0;             ///< Number of the last seek or start.
    bool m_seekWaits = false;             ///< The set point waits for the file to be loaded.
    bool m_seeking = false;               ///< A seek has been asked for and is not yet done.
    bool m_seekBegun = true;              ///< A restart that was told before this is not that of the seek.
    mutable bool m_positionAsked = false; ///< No answer has come yet.
    mutable steady_clock::time_point m_lastAsked;

    std::string m_audioOutput; ///< What the engine plays on; empty: not known yet.
    steady_clock::time_point m_lookedForDevice;
    double m_outputRate = 0;  ///< Of the device, in Hz; the last one if it is closed.
    std::string m_deviceMode; ///< What the engine was told last of keeping it open.
    std::string m_libraryFault;
};

} // namespace quavernet::mpv
