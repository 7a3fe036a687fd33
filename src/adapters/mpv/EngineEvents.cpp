#include "adapters/mpv/EnginePlayer.h"

#include <algorithm>
#include <cstring>

namespace quavernet::mpv {

namespace {

/// Hz. Music of this rate or more may be brought to the rate of the file before it.
constexpr double GoodRate = 44100;

} // namespace

void EnginePlayer::Hear() {
    TakeEvents();
    TellNews();
}

void EnginePlayer::TakeEvents() {
    while (m_engine) {
        const mpv_event& event = m_engine->NextEvent(std::chrono::duration<double>(0));
        if (event.event_id == MPV_EVENT_NONE) {
            return;
        }
        Take(event);
    }
}

void EnginePlayer::Take(const mpv_event& event) {
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

void EnginePlayer::TakeStart() {
    if (Track* track = OfEntry(m_entryAt)) {
        track->begun = true;
    } else if (!m_current || m_current->state >= Track::State::Refused) {
        m_engine->Command({"stop"}); // A next file that was taken back when it had begun already.
    }
}

/// A file that was loaded or appended has the engine's number now; a seek has been begun.
void EnginePlayer::TakeReply(const mpv_event& event) {
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

void EnginePlayer::TakeNumber(const mpv_event& event) {
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

void EnginePlayer::Answered(Track& track) {
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

void EnginePlayer::TakeRestart() {
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

void EnginePlayer::TakeEnd(const mpv_event_end_file& end) {
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

void EnginePlayer::Refuse(Track& track, int code) {
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

void EnginePlayer::TakeChange(const mpv_event_property& property) {
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
void EnginePlayer::KeepDevice(bool keep) {
    const char* mode = keep && m_outputRate >= GoodRate ? "yes" : "weak";
    if (mode != m_deviceMode) {
        m_deviceMode = mode;
        m_engine->SetChoice("gapless-audio", mode);
    }
}

Track* EnginePlayer::OfNumber(std::uint64_t number) {
    if (m_current && m_current->number == number) {
        return &*m_current;
    }
    return m_next && m_next->number == number ? &*m_next : nullptr;
}

Track* EnginePlayer::OfEntry(std::int64_t entry) {
    if (m_current && m_current->entry == entry) {
        return &*m_current;
    }
    return m_next && m_next->entry == entry ? &*m_next : nullptr;
}

void EnginePlayer::Tell(News news) {
    m_news.emplace_back(news, m_current->number);
    m_wakeUp->Ring();
}

/// From the message loop alone. Whoever is told may call the player, let events run, or end it.
void EnginePlayer::TellNews() {
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
    if (IsPlaying() != m_toldPlaying || IsSilent() != m_toldSilent) {
        m_toldPlaying = IsPlaying();
        m_toldSilent = IsSilent();
        if (m_events != nullptr) {
            m_events->PlayingChanged();
        }
    }
}

/// The end of a file was told, and the one that the engine has gone on with was not asked for.
void EnginePlayer::DropUnwantedNext(std::uint64_t ended) {
    if (m_current && m_current->number == ended && m_current->state == Track::State::Ended && m_next) {
        DropNext();
    }
}

} // namespace quavernet::mpv
