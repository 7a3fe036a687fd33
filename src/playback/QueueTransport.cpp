// The buttons of PlayQueue's transport and the keys of its list.
#include "app/Keys.h"
#include "app/LoadResString.h"
#include "app/ShowHelp.h"
#include "app/TextNumbers.h"
#include "platform/RuntimeError.h"
#include "playback/PlayQueue.h"
#include "playback/PlayerView.h"
#include "playback/QueueMarks.h"

#include <algorithm>

namespace quavernet {

// The marker of the entry before stays where it is.
void PlayQueue::cmdPlay_Click() {
    Run([this] {
        if (ListIndex() != QueueEntries::None) {
            m_currentTrack = static_cast<std::int16_t>(ListIndex() + 1);
            Start(m_currentTrack, Origin::Player);
        }
    });
}

void PlayQueue::cmdPause_Click() {
    Run([this] {
        if (!m_hasFileLabel) {
            return;
        }
        m_statusChanged = true;
        if (m_paused) {
            m_player.Play();
            m_paused = m_stopped = false;
            m_view.SetCaption(LoadResString(Texts::Player));
        } else {
            m_player.Pause();
            m_paused = true;
            m_view.SetCaption(LoadResString(Texts::PlayerPaused));
        }
    });
}

// A pause stays one: the next click on the pause button plays again.
void PlayQueue::cmdStop_Click() {
    Run([this] {
        m_statusChanged = true;
        m_player.Stop();
        m_stopped = true;
        m_player.SetCurrentPosition(0);
        RemoveMarker(m_currentTrack);
        Tick();
    });
}

// At the end of the list nothing is started, and there is no way on to its beginning: the last entry is
// marked as the current one.
void PlayQueue::cmdNext_Click() {
    Run([this] {
        if (ListCount() == 0) {
            return;
        }
        m_statusChanged = true;
        RemoveMarker(m_currentTrack);
        const std::int32_t next = (m_currentTrack == 0 ? 1 : m_currentTrack) + 1;
        if (next > ListCount()) {
            m_currentTrack = static_cast<std::int16_t>(ListCount());
            MarkWithSelectedText(m_currentTrack);
        } else {
            m_currentTrack = static_cast<std::int16_t>(next);
            Start(m_currentTrack, Origin::Player);
        }
    });
}

void PlayQueue::cmdLast_Click() {
    Run([this] {
        if (ListCount() == 0) {
            return;
        }
        m_statusChanged = true;
        RemoveMarker(m_currentTrack);
        const std::int32_t last = m_currentTrack - 1;
        if (last >= 1) {
            m_currentTrack = static_cast<std::int16_t>(last);
            Start(m_currentTrack, Origin::Player);
        } else {
            m_currentTrack = 1;
            MarkWithSelectedText(m_currentTrack);
        }
    });
}

// The entry gets the text of the selected one, which is mostly itself. Without a selection nothing happens.
void PlayQueue::MarkWithSelectedText(std::int32_t entry) {
    if (ListIndex() != QueueEntries::None) {
        m_entries.SetText(entry - 1, std::string(PlayingMark) + Text(ListIndex()));
    }
}

void PlayQueue::lstFiles_DblClick() {
    Run([this] {
        RemoveMarker(m_currentTrack);
        m_currentTrack = static_cast<std::int16_t>(ListIndex() + 1);
        Start(m_currentTrack, Origin::Player);
    });
}

// The number becomes the current one even if the entry could not be started; the marker of the entry before
// stays.
void PlayQueue::StartSelected() {
    const auto number = static_cast<std::int16_t>(ListIndex() + 1);
    if (Start(number, Origin::Player) == Started::Failed) {
        m_currentTrack = number;
    }
}

bool PlayQueue::lstFiles_KeyDown(int keyCode) {
    switch (keyCode) {
    case Keys::Enter:
        Run([this] { StartSelected(); });
        return true;
    case Keys::Left:
    case Keys::Up:
        Run([this] { MoveCurrentTrack(-1); });
        break;
    case Keys::Right:
    case Keys::Down:
        Run([this] { MoveCurrentTrack(1); });
        break;
    case Keys::Delete:
        cmdRem_Click();
        return true;
    case Keys::F1:
        ShowHelp("HTML\\player.html");
        return false;
    default:
        return true;
    }
    if (keyCode == Keys::Left || keyCode == Keys::Right) {
        Run([&] { MoveSelection(keyCode == Keys::Left ? -1 : 1); });
        return false;
    }
    return true;
}

// The arrow keys move what counts as current: the next end of a track goes on from there. From 0, where
// nothing has been chosen yet, the way back leads to 1 and the way on to 2.
void PlayQueue::MoveCurrentTrack(std::int32_t step) {
    m_statusChanged = true;
    if (step < 0) {
        m_currentTrack = static_cast<std::int16_t>(std::max(m_currentTrack + step, 1));
    } else {
        const std::int32_t track = m_currentTrack == 0 ? 1 : m_currentTrack;
        m_currentTrack = static_cast<std::int16_t>(std::min(track + step, ListCount()));
    }
}

void PlayQueue::MoveSelection(std::int32_t step) {
    if (ListCount() > 0) {
        m_entries.Select(std::clamp(ListIndex() + step, 0, ListCount() - 1));
    }
}

} // namespace quavernet
