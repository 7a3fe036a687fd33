#include "adapters/mpv/MpvPlayer.h"

#include "adapters/mpv/MpvEngine.h"
#include "adapters/mpv/PositionClock.h"
#include "adapters/mpv/Track.h"
#include "app/LoadResString.h"
#include "app/TextNumbers.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <deque>

namespace quavernet {

namespace mpv {

namespace {

using std::chrono::steady_clock;

/// How old an answer about the position may get while somebody asks for it.
constexpr std::chrono::milliseconds PositionAge{250};

/// Hz. Music of this rate or more may be brought to the rate of the file before it.
constexpr double GoodRate = 44100;

/// Sets the numbers of seeks apart from those of files, in replies.
constexpr std::uint64_t SeekMark = 1ULL << 63;

/// The engine's volume is cubic: of its full value of 100, x % sounds like (x / 100) to the third power.
double EngineVolume(std::int32_t hundredthsOfDecibel) {
    return 100 * std::cbrt(std::pow(10.0, hundredthsOfDecibel / 2000.0));
}

} // namespace

class MpvPlayer final : public MediaPlayer {
public:
    MpvPlayer(UserFiles& files, PostToLoop post, MpvOptions options)
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
    enum class News { EndOfStream, LoadedLate, RefusedLate };

    // Calls.
    void WantEngine();
    void Load(const std::string& path);
    void WaitUntilLoaded();
    void AppendNext();
    void DropNext();
    void Seek();
    void AskPosition() const;
    void UpdateClock();

    // Events.
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
    std::string m_toldSilence;

    PositionClock m_clock;
    std::uint64_t m_seek = 0;             ///< Number of the last seek or start.
    bool m_seekWaits = false;             ///< The set point waits for the file to be loaded.
    bool m_seeking = false;               ///< A seek has been asked for and is not yet done.
    bool m_seekBegun = true;              ///< A restart that was told before this is not that of the seek.
    mutable bool m_positionAsked = false; ///< No answer has come yet.
    mutable steady_clock::time_point m_lastAsked;

    std::string m_audioOutput; ///< What the engine plays on; empty: not known yet.
    double m_outputRate = 0;   ///< Of the device, in Hz; the last one if it is closed.
    std::string m_deviceMode;  ///< What the engine was told last of keeping it open.
    std::string m_libraryFault;
};

// Calls

void MpvPlayer::WantEngine() {
    if (m_engine) {
        return;
    }
    try {
        m_engine = std::make_unique<Engine>(m_files, m_options, m_wakeUp);
    } catch (const RuntimeError& error) {
        m_libraryFault = LoadResString(Texts::NoMediaEngine) + error.Description();
        throw RuntimeError(error.Number(), m_libraryFault);
    }
    m_libraryFault.clear();
    m_engine->SetNumber("volume", EngineVolume(m_volume));
}

void MpvPlayer::SetFileName(const std::string& path) {
    WantEngine();
    TakeEvents();
    if (m_current && m_current->state == Track::State::Ended && m_next && m_next->begun &&
        m_next->path == path && m_next->state <= Track::State::Loaded) {
        m_current = std::move(m_next); // The engine is at it already.
        m_next.reset();
        m_nextPath.clear();
        m_clock.Set(0, steady_clock::now());
        ++m_seek;
        m_seekBegun = true;
        m_seeking = false;
        m_seekWaits = false;
        UpdateClock();
    } else {
        m_nextPath.clear();
        m_seekWaits = false;
        m_paused = true;
        m_engine->SetFlag("pause", true);
        Load(path);
        m_clock.Set(0, steady_clock::now());
    }
    WaitUntilLoaded();
    if (m_current->state == Track::State::Refused) {
        const RuntimeError refusal = m_current->refusal.value();
        m_current.reset();
        UpdateClock();
        throw refusal;
    }
    m_current->late = m_current->state == Track::State::Loading;
}

void MpvPlayer::Load(const std::string& path) {
    DropNext();
    if (m_current) {
        m_engine->Streams().Forget(m_current->number);
    }
    m_current.emplace(++m_lastNumber, path);
    ++m_seek;
    m_seekBegun = true;
    m_seeking = false;
    UpdateClock();
    KeepDevice(false);
    m_engine->Command({"loadfile", m_engine->Streams().Announce(m_lastNumber, path), "replace"},
                      m_lastNumber);
}

void MpvPlayer::WaitUntilLoaded() {
    // The window has to answer within 100 ms, whatever the file does.
    const auto end = steady_clock::now() + m_options.patience;
    while (m_current->state == Track::State::Loading) {
        const mpv_event& event =
            m_engine->NextEvent(std::max(end - steady_clock::now(), steady_clock::duration()));
        if (event.event_id == MPV_EVENT_NONE && steady_clock::now() >= end) {
            return;
        }
        Take(event);
    }
}

void MpvPlayer::SetNextFile(const std::string& path) {
    if (path == m_nextPath) {
        return;
    }
    m_nextPath = path;
    DropNext();
    AppendNext();
}

void MpvPlayer::AppendNext() {
    // Only to a file that is known to be good: the engine would pass over one that is not.
    if (!m_nextPath.empty() && m_current && m_current->state == Track::State::Loaded) {
        m_next.emplace(++m_lastNumber, m_nextPath);
        m_engine->Command({"loadfile", m_engine->Streams().Announce(m_lastNumber, m_nextPath), "append"},
                          m_lastNumber);
    }
}

void MpvPlayer::DropNext() {
    if (m_next) {
        m_engine->Command({m_next->begun ? "stop" : "playlist-clear"}); // The latter: all but what plays.
        m_engine->Streams().Forget(m_next->number);
        m_next.reset();
    }
}

void MpvPlayer::Play() {
    if (!m_current) {
        return;
    }
    if (m_current->state >= Track::State::Refused) {
        if (m_current->state == Track::State::Ended) {
            m_clock.Set(0, steady_clock::now());
        }
        const std::string path = m_current->path;
        Load(path);
        m_current->late = true;
        m_seekWaits = m_clock.At(steady_clock::now()) > 0;
    }
    m_paused = false;
    // Until a seek is done nothing is heard of the place before it.
    m_engine->SetFlag("pause", m_seekWaits || m_seeking);
    UpdateClock();
}

void MpvPlayer::Pause() {
    if (m_current) {
        m_paused = true;
        m_engine->SetFlag("pause", true);
        UpdateClock();
    }
}

void MpvPlayer::Stop() {
    if (m_current) {
        DropNext();
        m_engine->Command({"stop"});
        m_current->state = Track::State::Stopped;
        m_seekWaits = false;
        UpdateClock();
        m_clock.Set(0, steady_clock::now());
    }
}

bool MpvPlayer::IsPlaying() const {
    return m_current && m_current->state == Track::State::Loaded && !m_paused;
}

double MpvPlayer::CurrentPosition() const {
    if (!m_current || m_current->state == Track::State::Loading ||
        m_current->state == Track::State::Refused) {
        return NotReady;
    }
    const auto now = steady_clock::now();
    if (m_clock.IsRunning() && now - m_lastAsked > PositionAge) {
        AskPosition();
    }
    const double position = std::max(m_clock.At(now), 0.0);
    return m_current->duration > 0 ? std::min(position, m_current->duration) : position;
}

void MpvPlayer::SetCurrentPosition(double seconds) {
    if (!m_current) {
        return;
    }
    double place = std::max(seconds, 0.0);
    if (m_current->duration > 0) {
        place = std::min(place, m_current->duration);
    }
    m_current->restarted = false;
    UpdateClock();
    m_clock.Set(place, steady_clock::now());
    if (m_current->state == Track::State::Loaded) {
        Seek();
    } else {
        m_seekWaits = true;
    }
}

void MpvPlayer::Seek() {
    m_seekWaits = false;
    ++m_seek;
    m_seekBegun = false;
    m_seeking = true;
    m_engine->Command({"seek", std::to_string(m_clock.At(steady_clock::now())), "absolute+exact"},
                      SeekMark + m_seek);
}

void MpvPlayer::AskPosition() const {
    if (!m_positionAsked) {
        m_positionAsked = true;
        m_lastAsked = steady_clock::now();
        m_engine->AskNumber("time-pos", m_seek);
    }
}

/// The position moves on while there is sound; between a seek and its end it waits at the place that was set.
void MpvPlayer::UpdateClock() {
    const bool wasRunning = m_clock.IsRunning();
    m_clock.Run(IsPlaying() && m_current->restarted, steady_clock::now());
    if (m_clock.IsRunning() && !wasRunning) {
        AskPosition();
    }
    if (IsPlaying() != m_toldPlaying) {
        m_wakeUp->Ring();
    }
}

void MpvPlayer::SetVolume(std::int32_t volume) {
    m_volume = std::min(volume, FullVolume);
    if (m_engine) {
        m_engine->SetNumber("volume", EngineVolume(m_volume));
    }
}

std::string MpvPlayer::SilenceReason() const {
    if (!m_libraryFault.empty()) {
        return m_libraryFault;
    }
    return m_audioOutput == "null" ? LoadResString(Texts::NoSoundDevice) : std::string();
}

// Events

void MpvPlayer::Hear() {
    TakeEvents();
    TellNews();
}

void MpvPlayer::TakeEvents() {
    while (m_engine) {
        const mpv_event& event = m_engine->NextEvent(std::chrono::duration<double>(0));
        if (event.event_id == MPV_EVENT_NONE) {
            return;
        }
        Take(event);
    }
}

void MpvPlayer::Take(const mpv_event& event) {
    switch (event.event_id) {
    case MPV_EVENT_COMMAND_REPLY:
        TakeReply(event);
        break;
    case MPV_EVENT_START_FILE:
        m_entryAt = static_cast<const mpv_event_start_file*>(event.data)->playlist_entry_id;
        TakeStart();
        break;
    case MPV_EVENT_FILE_LOADED:
        if (const Track* track = OfEntry(m_entryAt)) {
            m_engine->AskNumber("duration", track->number);
        }
        break;
    case MPV_EVENT_GET_PROPERTY_REPLY:
        TakeNumber(event);
        break;
    case MPV_EVENT_PLAYBACK_RESTART:
        TakeRestart();
        break;
    case MPV_EVENT_END_FILE:
        TakeEnd(*static_cast<const mpv_event_end_file*>(event.data));
        break;
    case MPV_EVENT_PROPERTY_CHANGE:
        TakeChange(*static_cast<const mpv_event_property*>(event.data));
        break;
    default:
        break;
    }
}

void MpvPlayer::TakeStart() {
    if (Track* track = OfEntry(m_entryAt)) {
        track->begun = true;
    } else if (!m_current || m_current->state >= Track::State::Refused) {
        m_engine->Command({"stop"}); // A next file that was taken back when it had begun already.
    }
}

/// A file that was loaded or appended has the engine's number now; a seek has been begun.
void MpvPlayer::TakeReply(const mpv_event& event) {
    if (event.reply_userdata == SeekMark + m_seek) {
        m_seekBegun = true;
        if (event.error < 0) {
            TakeRestart(); // It goes on from where it is.
        }
    }
    const mpv_node& result = static_cast<const mpv_event_command*>(event.data)->result;
    Track* track = OfNumber(event.reply_userdata);
    if (track == nullptr || result.format != MPV_FORMAT_NODE_MAP) {
        return;
    }
    for (int i = 0; i < result.u.list->num; ++i) {
        if (std::strcmp(result.u.list->keys[i], "playlist_entry_id") == 0) {
            track->entry = result.u.list->values[i].u.int64;
        }
    }
}

void MpvPlayer::TakeNumber(const mpv_event& event) {
    const auto& property = *static_cast<const mpv_event_property*>(event.data);
    const double value = event.error >= 0 && property.format == MPV_FORMAT_DOUBLE
                             ? *static_cast<const double*>(property.data)
                             : NotReady;
    if (std::strcmp(property.name, "duration") == 0) {
        if (Track* track = OfNumber(event.reply_userdata)) {
            track->duration = value;
            Answered(*track);
        }
        return;
    }
    m_positionAsked = false;
    // While the position doesn't move, and until the last seek is done, the place that was set counts.
    if (event.reply_userdata == m_seek && m_clock.IsRunning() && event.error >= 0) {
        m_clock.Set(value, steady_clock::now());
    }
}

void MpvPlayer::Answered(Track& track) {
    if (track.state != Track::State::Loading) {
        return;
    }
    track.state = Track::State::Loaded;
    if (m_current && track.number == m_current->number) {
        if (m_seekWaits) {
            Seek();
        }
        AppendNext();
        if (track.late) {
            Tell(News::LoadedLate);
        }
        UpdateClock();
    }
}

void MpvPlayer::TakeRestart() {
    Track* track = OfEntry(m_entryAt);
    if (track == nullptr || !m_seekBegun || m_seekWaits) {
        return;
    }
    track->restarted = true;
    if (m_seeking) {
        m_seeking = false;
        m_engine->SetFlag("pause", m_paused);
    }
    UpdateClock();
    KeepDevice(true);
}

void MpvPlayer::TakeEnd(const mpv_event_end_file& end) {
    Track* track = OfEntry(end.playlist_entry_id);
    if (track == nullptr || track->state >= Track::State::Refused) {
        return;
    }
    const std::shared_ptr<PatientFile> file = m_engine->Streams().Opened(track->number);
    const bool isBroken = file && file->IsBroken();
    // A seek to the end before anything was heard leaves nothing to play: that is an end as well.
    const bool isAtEnd = end.reason == MPV_END_FILE_REASON_EOF ||
                         (end.error == MPV_ERROR_NOTHING_TO_PLAY && m_clock.At(steady_clock::now()) > 0 &&
                          track->state == Track::State::Loaded);
    if (isAtEnd && !isBroken) {
        track->state = Track::State::Ended;
        if (track->number == m_current->number) {
            UpdateClock();
            m_clock.Set(std::max(track->duration, 0.0), steady_clock::now());
            Tell(News::EndOfStream);
        }
    } else if (end.reason != MPV_END_FILE_REASON_STOP && end.reason != MPV_END_FILE_REASON_QUIT) {
        Refuse(*track, end.error);
    }
    UpdateClock();
}

void MpvPlayer::Refuse(Track& track, int code) {
    const std::shared_ptr<PatientFile> file = m_engine->Streams().Opened(track.number);
    track.refusal = file ? file->Refusal() : std::nullopt;
    if (!track.refusal) {
        const std::string reason = code < 0 ? m_engine->ErrorText(code) + ": " : std::string();
        track.refusal = RuntimeError(ErrorNumber::PathFileAccess, reason + track.path);
    }
    const bool wasLoaded = track.state == Track::State::Loaded;
    track.state = Track::State::Refused;
    if (track.number == m_current->number && (wasLoaded || track.late)) {
        DropNext();
        Tell(News::RefusedLate);
    }
}

void MpvPlayer::TakeChange(const mpv_event_property& property) {
    // Between two files there may be no device: the last one counts.
    if (std::strcmp(property.name, Engine::AudioOutput) == 0 && property.format == MPV_FORMAT_STRING) {
        m_audioOutput = *static_cast<char* const*>(property.data);
        m_wakeUp->Ring();
    } else if (std::strcmp(property.name, Engine::OutputRate) == 0 && property.format == MPV_FORMAT_DOUBLE) {
        m_outputRate = *static_cast<const double*>(property.data);
        KeepDevice(m_current && m_current->restarted);
    }
}

/// Whether the device stays open as it is if the next file has another rate. It does where one file follows
/// the other by itself, so that there is no gap, unless it was opened for a file of poor quality. A file that
/// was asked for gets its own rate.
void MpvPlayer::KeepDevice(bool keep) {
    const char* mode = keep && m_outputRate >= GoodRate ? "yes" : "weak";
    if (mode != m_deviceMode) {
        m_deviceMode = mode;
        m_engine->SetChoice("gapless-audio", mode);
    }
}

Track* MpvPlayer::OfNumber(std::uint64_t number) {
    if (m_current && m_current->number == number) {
        return &*m_current;
    }
    return m_next && m_next->number == number ? &*m_next : nullptr;
}

Track* MpvPlayer::OfEntry(std::int64_t entry) {
    if (m_current && m_current->entry == entry) {
        return &*m_current;
    }
    return m_next && m_next->entry == entry ? &*m_next : nullptr;
}

void MpvPlayer::Tell(News news) {
    m_news.emplace_back(news, m_current->number);
    m_wakeUp->Ring();
}

/// From the message loop alone. Whoever is told may call the player, let events run, or end it.
void MpvPlayer::TellNews() {
    const std::weak_ptr<bool> alive = m_life;
    while (!m_news.empty()) {
        const auto [news, number] = m_news.front();
        m_news.pop_front();
        if (m_events == nullptr || !m_current || m_current->number != number) {
            continue; // Of a file that was replaced meanwhile.
        }
        if (news == News::EndOfStream && m_current->state == Track::State::Ended) {
            m_events->EndOfStream();
        } else if (news == News::LoadedLate && m_current->state != Track::State::Stopped) {
            m_events->LoadedLate();
        } else if (news == News::RefusedLate && m_current->state == Track::State::Refused) {
            m_events->RefusedLate();
        }
        if (alive.expired()) {
            return;
        }
        DropUnwantedNext(number);
    }
    if (IsPlaying() != m_toldPlaying || SilenceReason() != m_toldSilence) {
        m_toldPlaying = IsPlaying();
        m_toldSilence = SilenceReason();
        if (m_events != nullptr) {
            m_events->PlayingChanged();
        }
    }
}

/// The end of a file was told, and the one that the engine has gone on with was not asked for.
void MpvPlayer::DropUnwantedNext(std::uint64_t ended) {
    if (m_current && m_current->number == ended && m_current->state == Track::State::Ended && m_next) {
        DropNext();
    }
}

} // namespace mpv

std::unique_ptr<MediaPlayer> CreateMpvPlayer(UserFiles& files, PostToLoop post, MpvOptions options) {
    mpv::Library::LoadAhead(options.library);
    return std::make_unique<mpv::MpvPlayer>(files, std::move(post), std::move(options));
}

} // namespace quavernet
