// How PlayQueue starts an entry, and what the engine's events make of it.
#include "app/AudioKind.h"
#include "app/CurrentFile.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "app/TextNumbers.h"
#include "inspect/modMp3Info.h"
#include "library/SqlQuote.h"
#include "playback/PlayQueue.h"
#include "playback/PlayTime.h"
#include "playback/PlayerView.h"
#include "playback/QueueMarks.h"

namespace quavernet {

namespace {

RuntimeError NotPlayable() {
    return RuntimeError(ErrorNumber::InvalidProcedureCall, "The engine does not play this file");
}

} // namespace

void PlayQueue::Form_Resize() {
    Run([this] { ShowCaption(); });
}

void PlayQueue::PlayFile(std::int16_t index) {
    Run([&] { Start(index, Origin::Player); });
}

void PlayQueue::PlayFileFromTree(std::int16_t index) {
    Run([&] { Start(index, Origin::Tree); });
}

// A minimised window is named after its track, so that the task bar tells it. Two characters of the marker
// go, its blank stays. While an entry is started this is still the one before.
void PlayQueue::ShowCaption() {
    const bool named = m_view.IsMinimized() && PathCount() > 0 && m_entries.Has(m_currentTrack);
    m_view.SetCaption(named ? ReplaceAll(Text(m_currentTrack - 1), "|>", "") : LoadResString(Texts::Player));
}

// Whatever fails shows as the mark of the selected entry. That is the one before where the engine does not
// even take the file, since the selection has not come here yet.
PlayQueue::Started PlayQueue::Start(std::int16_t index, Origin origin) {
    ShowCaption();
    if (PathCount() == 0) {
        return Started::Failed;
    }
    const unsigned before = m_starts;
    unsigned start = before;
    try {
        m_statusChanged = true;
        StartFile(index, origin, start);
    } catch (const RuntimeError&) {
        const bool isGone = start != before && m_startedEntry == 0;
        if (start == m_starts && !isGone) {
            m_starting = false;
            MarkFileError(start != before && m_selected ? m_startedEntry - 1 : ListIndex());
        }
    }
    if (start != m_starts) {
        return Started::Overtaken;
    }
    m_starting = false;
    return start != before && m_selected ? Started::Selected : Started::Failed;
}

void PlayQueue::StartFile(std::int16_t index, Origin origin, unsigned& start) {
    const std::string path = Path(index);
    RequirePlayable(path);
    BeginFile(path, index, start);
    if (origin == Origin::Player) {
        LetEventsRun();
        if (start != m_starts) {
            return;
        }
    }
    RequireAccepted();
    m_currentTrack = index;
    FollowEntry();
    // A file that the library doesn't know fails here: it is marked although it is heard, and the labels go
    // on showing the file before.
    const LibraryFacts facts = ReadFacts(path, origin);
    m_paused = false;
    if (m_startedEntry != 0) {
        m_entries.Select(m_currentTrack - 1);
        m_selected = true;
    }
    m_hasFileLabel = true;
    m_view.SetFile(FileNameFromPath(path), path);
    const std::string quality = QualityText(path, facts.Quality, origin);
    if (start != m_starts) {
        return;
    }
    RequireAccepted();
    m_view.SetQuality(quality);
    ShowLength(facts.Length);
    MoveMarkerHere();
    ShowPositionMax(facts.Length);
}

// While events ran others may have been removed before the entry. If it is gone itself, its file is shown and
// no entry is touched.
void PlayQueue::FollowEntry() {
    if (m_startedEntry != 0) {
        m_currentTrack = static_cast<std::int16_t>(m_startedEntry);
    }
}

void PlayQueue::RequireAccepted() const {
    if (m_refused) {
        throw NotPlayable();
    }
}

// The engine is never given an Ogg file. The number of the entry is not taken over: the entry that was
// current before is selected and gets the error mark, and what plays goes on.
void PlayQueue::RequirePlayable(const std::string& path) {
    if (AudioKindOf(path) == AudioKind::Ogg) {
        if (m_currentTrack == 0) {
            m_currentTrack = 1;
        }
        m_entries.Select(m_currentTrack - 1);
        throw NotPlayable();
    }
}

void PlayQueue::BeginFile(const std::string& path, std::int16_t index, unsigned& start) {
    start = ++m_starts;
    m_startedEntry = index;
    m_starting = true;
    m_selected = m_refused = m_hasFile = m_waitsForLength = false;
    m_promised.reset();
    m_player.SetFileName(path);
    m_hasFile = true;
    m_stopped = false;
    m_player.Play();
}

PlayQueue::LibraryFacts PlayQueue::ReadFacts(const std::string& path, Origin origin) const {
    const std::string fields = origin == Origin::Tree
                                   ? "Select Quality, F.Length from Quality Q Inner Join Files F"
                                   : "Select Q.Quality, F.Length from Quality Q Inner Join Files F";
    ADODB::Recordset row;
    row.Open(fields + " on Q.Quality_id = F.Quality_id where F.Path = '" + SqlQuote(path) + "'",
             *mainModule.Connection);
    LibraryFacts facts{row.Fields(0).Text(), Narrow16(row.Fields(1).Number())};
    row.Close();
    return facts;
}

// Lets events run if the file has to be asked: one of the library without a stored quality. A play from the
// tree shows what is stored, be it nothing.
std::string PlayQueue::QualityText(const std::string& path, const std::string& quality, Origin origin) {
    if (!quality.empty() || origin == Origin::Tree) {
        return quality + " bit";
    }
    CurrentFile file;
    Outside([&] { ReadAudioInfo(path, file); });
    return std::to_string(file.AudioInfo.BitRate) + " bit";
}

// The time label shows the whole length until the next tick.
void PlayQueue::ShowLength(std::int16_t length) {
    m_lengthIsUnknown = length == 0;
    const std::string time = PlayTimeText(length == 0 ? Narrow16(m_player.Duration()) : length);
    ShowTime(time);
    m_view.SetLength(LoadResString(Texts::PlayingTime) + time + " min");
}

// The entry that plays gets it. It is the current one, unless the user has moved the number while the file
// was inspected.
void PlayQueue::MoveMarkerHere() {
    if (m_entries.Has(m_startedEntry)) {
        RemoveMarker(m_startedEntry);
        m_entries.SetText(m_startedEntry - 1, std::string(PlayingMark) + Text(m_startedEntry - 1));
    }
}

// A file that loads slowly has the library's length until its own is known.
void PlayQueue::ShowPositionMax(std::int16_t length) {
    const double duration = m_player.Duration();
    m_waitsForLength = duration < 0;
    m_positionMax = m_waitsForLength ? length : Narrow32(duration);
    m_view.SetPositionMax(m_positionMax);
}

void PlayQueue::LoadedLate() {
    Run([this] {
        if (!m_waitsForLength || m_player.Duration() < 0) {
            return;
        }
        m_waitsForLength = false;
        m_statusChanged = true;
        ShowPositionMax(0);
        if (m_lengthIsUnknown) {
            m_view.SetLength(LoadResString(Texts::PlayingTime) + PlayTimeText(Narrow16(m_player.Duration())) +
                             " min");
        }
    });
}

// The start itself deals with a refusal that comes before its end. Later on the entry has to be found: the
// selection may be elsewhere by now.
void PlayQueue::RefusedLate() {
    Run([this] {
        m_hasFile = m_waitsForLength = false;
        m_refused = true;
        m_statusChanged = true;
        if (!m_starting) {
            MarkFileError(m_startedEntry - 1);
        }
    });
}

void PlayQueue::PlayingChanged() {
    Run([this] {
        m_statusChanged = true;
        Tick();
    });
}

void PlayQueue::EndOfStream() {
    Run([this] {
        m_statusChanged = true;
        RemoveMarker(m_currentTrack);
        if (m_repeat) {
            Start(m_currentTrack, Origin::Player);
        } else if (m_repeatAll) {
            AdvanceAll();
        } else {
            Advance();
        }
    });
}

// The end of the list is where its selection is on the last entry, wherever the current track is.
void PlayQueue::AdvanceAll() {
    if (ListIndex() == ListCount() - 1) {
        m_currentTrack = 1;
        if (Start(m_currentTrack, Origin::Player) == Started::Failed) {
            m_entries.Select(0);
        }
    } else {
        m_currentTrack = Narrow16(m_currentTrack + 1.0);
        Start(m_currentTrack, Origin::Player);
    }
}

// After the last entry its number stays the current one, without a marker.
void PlayQueue::Advance() {
    const std::int32_t next = m_currentTrack + 1;
    if (next <= ListCount()) {
        m_currentTrack = static_cast<std::int16_t>(next);
        if (Start(m_currentTrack, Origin::Player) != Started::Failed) {
            return;
        }
    }
    m_entries.Select(m_currentTrack - 1);
}

} // namespace quavernet
