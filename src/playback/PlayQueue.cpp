#include "playback/PlayQueue.h"

#include "app/AudioKind.h"
#include "app/MainModule.h"
#include "app/ScopedValue.h"
#include "app/TextHelpers.h"
#include "playback/PlayTime.h"
#include "playback/PlayerView.h"
#include "playback/QueueMarks.h"

#include <algorithm>

namespace quavernet {

PlayQueue::~PlayQueue() {
    // The view may be on its way out, too.
    if (m_loaded) {
        m_player.SetEvents(nullptr);
    }
}

void PlayQueue::Form_Load() {
    m_loaded = true;
    m_currentTrack = 0;
    m_paused = m_stopped = false;
    m_positionSeconds = 0;
    m_showElapsed = true;
    m_repeat = m_repeatAll = false;
    m_startedEntry = 0;
    m_starting = m_refused = m_hasFile = m_waitsForLength = false;
    m_promised.reset();
    m_entries.Clear();
    ShowEmptyWindow();
    m_player.SetEvents(this);
    m_player.SetVolume(MediaPlayer::FullVolume);
}

void PlayQueue::ShowEmptyWindow() {
    m_hasFileLabel = false;
    m_positionMax = m_shownPosition = 0;
    m_shownTime.clear();
    m_view.SetFile({}, {});
    m_view.SetQuality({});
    m_view.SetTime({});
    m_view.SetLength({});
    m_view.SetPositionMax(0);
    m_view.SetPosition(0);
    m_view.SetRepeat(false, false);
    m_view.SetPercent("100%"); // After the first move of the slider there is a blank before the sign.
}

void PlayQueue::Form_Unload() {
    if (!m_loaded) {
        return;
    }
    m_loaded = false;
    ++m_starts; // A start that waits for its events ends there.
    m_player.SetEvents(nullptr);
    IgnoreFailure([&] { m_player.Stop(); });
    m_player.SetNextFile({});
    m_hasFile = false;
    m_entries.Clear();
}

// Every handler runs in the mode in which a failure ends it silently.
void PlayQueue::Run(const std::function<void()>& handler) {
    if (!m_loaded) {
        return;
    }
    {
        const ScopedValue depth(m_depth, m_depth + 1);
        try {
            handler();
        } catch (const RuntimeError&) {
            // What the handler has done stays done.
        }
    }
    if (m_depth == 0) {
        Settle();
    }
}

// Work that lets events run. Their handlers are nobody's inner ones: each tells of its changes by itself.
void PlayQueue::Outside(const std::function<void()>& work) {
    m_entries.Flush();
    const ScopedValue depth(m_depth, 0);
    work();
}

void PlayQueue::LetEventsRun() {
    Outside([] { services.events->DoEvents(); });
}

// Tells of what the handler has changed, once however much it was.
void PlayQueue::Settle() {
    m_entries.Flush();
    TellNextFile();
    if (m_statusChanged) {
        m_statusChanged = false;
        m_view.StatusChanged();
    }
}

void PlayQueue::TellNextFile() {
    if (!m_hasFile) {
        return;
    }
    std::string next = NextFile();
    if (m_promised != next) {
        m_promised = std::move(next);
        m_player.SetNextFile(*m_promised);
    }
}

// What EndOfStream would give to the engine if it came now.
std::string PlayQueue::NextFile() const {
    std::int32_t next = m_currentTrack;
    if (!m_repeat) {
        const bool isLast = ListIndex() == ListCount() - 1;
        next = m_repeatAll && isLast ? 1 : next + 1;
        if (!m_repeatAll && next > ListCount()) {
            return {};
        }
    }
    const bool isPlayable = m_entries.HasPath(next) && AudioKindOf(Path(next)) != AudioKind::Ogg;
    return isPlayable ? Path(next) : std::string();
}

void PlayQueue::EmptyQueue() {
    m_entries.Clear();
    m_startedEntry = 0;
    m_statusChanged = true;
}

// For random plays, which give up the paths before the list. All others empty the list first.
void PlayQueue::Clear() {
    Run([this] {
        m_entries.ClearPaths();
        EmptyQueue();
    });
}

void PlayQueue::SetListIndex(std::int32_t position) {
    Run([&] {
        if (position == QueueEntries::None) {
            m_entries.Deselect();
        } else {
            m_entries.Select(position);
        }
    });
}

// An entry that doesn't exist has no marker to lose.
void PlayQueue::RemoveMarker(std::int32_t entry) {
    if (m_entries.Has(entry)) {
        m_entries.SetText(entry - 1, ReplaceAll(Text(entry - 1), PlayingMark, ""));
    }
}

// Lets events run if it writes the mark. Without an entry there is nothing to mark.
void PlayQueue::MarkFileError(std::int32_t position) {
    if (!m_entries.Has(position + 1) || ContainsIgnoringCase(Text(position), ErrorMark)) {
        return;
    }
    m_entries.SetText(position, "(" + Text(position) + ") " + std::string(ErrorMark));
    LetEventsRun();
}

void PlayQueue::chkRepeat_Click(bool checked) {
    Run([&] {
        m_repeat = checked;
        m_repeatAll = m_repeatAll && !checked;
        m_statusChanged = true;
        m_view.SetRepeat(m_repeat, m_repeatAll);
    });
}

void PlayQueue::chkRepeatAll_Click(bool checked) {
    Run([&] {
        m_repeatAll = checked;
        m_repeat = m_repeat && !checked;
        m_statusChanged = true;
        m_view.SetRepeat(m_repeat, m_repeatAll);
    });
}

void PlayQueue::Timer1_Timer() {
    Run([this] { Tick(); });
}

// The window is told of what differs from what it shows, since ticks come ten times a second.
void PlayQueue::Tick() {
    const double position = m_player.CurrentPosition();
    // Without a file the engine's position is -1.
    if (const std::int32_t seconds = std::max(Narrow32(position), 0); seconds != m_shownPosition) {
        m_shownPosition = seconds;
        m_view.SetPosition(seconds);
    }
    m_positionSeconds = Narrow16(position);
    const bool isReady = m_positionSeconds != -1;
    ShowTime(PlayTimeText(m_showElapsed ? m_positionSeconds
                          : isReady     ? m_positionMax - m_positionSeconds
                                        : 0));
}

void PlayQueue::ShowTime(const std::string& text) {
    if (text != m_shownTime) {
        m_shownTime = text;
        m_view.SetTime(text);
    }
}

void PlayQueue::Slider1_Scroll(std::int32_t seconds) {
    Run([&] {
        m_shownPosition = seconds; // By the user.
        m_statusChanged = true;
        m_player.SetCurrentPosition(seconds);
        Tick();
    });
}

void PlayQueue::Slider3_Scroll(std::int32_t value) {
    Run([&] {
        m_player.SetVolume(value - LoudestPosition);
        m_view.SetPercent(std::to_string(value / 25) + " %");
        m_statusChanged = true;
    });
}

void PlayQueue::lblTime_DblClick() {
    Run([this] {
        m_showElapsed = !m_showElapsed;
        Tick();
    });
}

} // namespace quavernet
