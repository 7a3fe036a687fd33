#include "adapters/mpv/EnginePlayer.h"

#include "app/LoadResString.h"
#include "app/TextNumbers.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <cmath>

namespace quavernet::mpv {

namespace {

/// How old an answer about the position may get while somebody asks for it.
constexpr std::chrono::milliseconds PositionAge{250};

/// How long a device that wasn't there is not looked for.
constexpr std::chrono::seconds DeviceAge{5};

/// The engine's volume is cubic: of its full value of 100, x % sounds like (x / 100) to the third power.
double EngineVolume(std::int32_t hundredthsOfDecibel) {
    return 100 * std::cbrt(std::pow(10.0, hundredthsOfDecibel / 2000.0));
}

} // namespace

void EnginePlayer::WantEngine() {
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

void EnginePlayer::SetFileName(const std::string& path) {
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
        LookForDevice();
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

/// There may be a sound device by now. Not asked for each file: where there is none, looking takes its time.
void EnginePlayer::LookForDevice() {
    const auto now = steady_clock::now();
    if (m_audioOutput == NoDevice && now - m_lookedForDevice > DeviceAge) {
        m_lookedForDevice = now;
        m_engine->Command({"ao-reload"});
    }
}

void EnginePlayer::Load(const std::string& path) {
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

void EnginePlayer::WaitUntilLoaded() {
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

void EnginePlayer::SetNextFile(const std::string& path) {
    if (path == m_nextPath) {
        return;
    }
    m_nextPath = path;
    DropNext();
    AppendNext();
}

void EnginePlayer::AppendNext() {
    // Only to a file that is known to be good: the engine would pass over one that is not.
    if (!m_nextPath.empty() && m_current && m_current->state == Track::State::Loaded) {
        m_next.emplace(++m_lastNumber, m_nextPath);
        m_engine->Command({"loadfile", m_engine->Streams().Announce(m_lastNumber, m_nextPath), "append"},
                          m_lastNumber);
    }
}

void EnginePlayer::DropNext() {
    if (m_next) {
        m_engine->Command({m_next->begun ? "stop" : "playlist-clear"}); // The latter: all but what plays.
        m_engine->Streams().Forget(m_next->number);
        m_next.reset();
    }
}

void EnginePlayer::Play() {
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

void EnginePlayer::Pause() {
    if (m_current) {
        m_paused = true;
        m_engine->SetFlag("pause", true);
        UpdateClock();
    }
}

void EnginePlayer::Stop() {
    if (m_current) {
        DropNext();
        m_engine->Command({"stop"});
        m_current->state = Track::State::Stopped;
        m_seekWaits = false;
        UpdateClock();
        m_clock.Set(0, steady_clock::now());
    }
}

bool EnginePlayer::IsPlaying() const {
    return m_current && m_current->state == Track::State::Loaded && !m_paused;
}

double EnginePlayer::CurrentPosition() const {
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

void EnginePlayer::SetCurrentPosition(double seconds) {
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

void EnginePlayer::Seek() {
    m_seekWaits = false;
    ++m_seek;
    m_seekBegun = false;
    m_seeking = true;
    m_engine->Command({"seek", std::to_string(m_clock.At(steady_clock::now())), "absolute+exact"},
                      SeekMark + m_seek);
}

void EnginePlayer::AskPosition() const {
    if (!m_positionAsked) {
        m_positionAsked = true;
        m_lastAsked = steady_clock::now();
        m_engine->AskNumber("time-pos", m_seek);
    }
}

/// The position moves on while there is sound; between a seek and its end it waits at the place that was set.
void EnginePlayer::UpdateClock() {
    const bool wasRunning = m_clock.IsRunning();
    m_clock.Run(IsPlaying() && m_current->restarted, steady_clock::now());
    if (m_clock.IsRunning() && !wasRunning) {
        AskPosition();
    }
    if (IsPlaying() != m_toldPlaying) {
        m_wakeUp->Ring();
    }
}

void EnginePlayer::SetVolume(std::int32_t volume) {
    m_volume = std::min(volume, FullVolume);
    if (m_engine) {
        m_engine->SetNumber("volume", EngineVolume(m_volume));
    }
}

std::string EnginePlayer::SilenceReason() const {
    if (!m_libraryFault.empty()) {
        return m_libraryFault;
    }
    return m_audioOutput == NoDevice ? LoadResString(Texts::NoSoundDevice) : std::string();
}

} // namespace quavernet::mpv
