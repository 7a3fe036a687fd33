// The play queue and the rules by which the engine goes through it, without a screen: requests, the end of a
// track, ticks and editing come in; texts, labels and calls of the engine go out. frmPlayer owns it.
#pragma once

#include "app/Collections.h"
#include "platform/MediaPlayer.h"
#include "playback/QueueEntries.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quavernet {

class PlayerView;
class PlaylistWriter;
class TreeModel;

/// No request throws RuntimeError: a failure ends it silently, and one that arises while an entry is started
/// shows in a text of the list. While the window is not loaded, requests do nothing.
///
/// Members that let events run say so. Any other one may run inside them: the queue emptied, another entry
/// started, the window closed. What goes on afterwards sees to it that the screen shows what the engine
/// plays. The object itself outlives them: a window that closes calls Form_Unload.
///
/// After every request the engine is told with which file it is to go on at the end of its own, so that no
/// gap is heard; EndOfStream then finds it playing.
class PlayQueue : public MediaPlayerEvents {
public:
    static constexpr std::int32_t MostEntries = QueueEntries::MostEntries;
    static constexpr std::int32_t LoudestPosition = 2500; ///< Slider3.Max: the engine's full volume.

    PlayQueue(MediaPlayer& player, PlayerView& view) : m_player(player), m_view(view), m_entries(view) {}
    ~PlayQueue() override;
    PlayQueue(const PlayQueue&) = delete;
    PlayQueue& operator=(const PlayQueue&) = delete;

    void Form_Load();   ///< An empty queue and window, full volume; listens to the engine from now on.
    void Form_Unload(); ///< Stops the engine and drops the queue.
    void Form_Resize(); ///< The caption follows the window's state.

    // The two stores. Entries count from 1, list positions from 0.
    std::int32_t ListCount() const { return m_entries.ListCount(); }
    const std::string& Text(std::int32_t position) const { return m_entries.Text(position); } ///< lstFiles
    std::int32_t ListIndex() const { return m_entries.ListIndex(); } ///< Selected position, -1 for none.
    void SetListIndex(std::int32_t position);                        ///< As a click on the entry; -1: none.
    std::size_t PathCount() const { return static_cast<std::size_t>(m_entries.PathCount()); }
    const std::string& Path(std::int32_t entry) const { return m_entries.Path(entry); } ///< PlayerPaths

    /// Number of the entry that counts as current, 0 before the first one was chosen. There need not be such
    /// an entry, and keys move the number while another one plays.
    std::int16_t CurrentTrack() const { return m_currentTrack; }
    bool Paused() const { return m_paused; }   ///< cmdPause has paused the engine. Still true after a stop.
    bool Stopped() const { return m_stopped; } ///< cmdStop has stopped it, and nothing has played since.

    // Fills. None starts anything. A failure ends a fill silently; entries already made stay.
    void Clear();        ///< lstFiles and PlayerPaths.
    void FillPlaylist(); ///< The rows of the list. Lets events run.
    void FillPlaylistFromTree(std::int16_t mode, const TreeModel& tree); ///< 1 a file, 2 a category.
    void FillPlaylistFromCharts(const RowTexts& chartPaths, std::int32_t row);
    /// Appends a file by its id. The counter of the caller's loop has no meaning here.
    void FillRandomPlaylist(const std::string& fileId, std::int32_t counter);
    void AddPlaylist(const std::string& path); ///< Appends a file by its path.
    /// Reads a playlist; 1 empties the list box first. `checkExists` leaves out what is missing. Lets events
    /// run if the playlist has thousands of lines.
    void fGetM3u(std::int16_t mode, const std::string& fileName, bool checkExists);

    // Starting an entry. A fault shows in a text of the list.
    void PlayFile(std::int16_t index);         ///< Lets events run.
    void PlayFileFromTree(std::int16_t index); ///< Lets events run only if there is a fault.

    // The transport and the list's keys. What starts an entry lets events run.
    void cmdPlay_Click();  ///< The selected entry.
    void cmdPause_Click(); ///< Pauses, or goes on.
    void cmdStop_Click();
    void cmdNext_Click();
    void cmdLast_Click(); ///< The entry before the current one.
    void lstFiles_DblClick();
    /// Whether the list box is to handle the key too: its own moves come afterwards. Left and right move the
    /// selection here, as up and down do in the list.
    bool lstFiles_KeyDown(int keyCode);

    // Editing. All but cmdRemAll_Click and DropOnList let events run.
    void cmdRem_Click(); ///< Removes the selected entry.
    void cmdRemAll_Click();
    void cmdRandomize_Click(); ///< Shuffles the queue and starts it.
    void mnuAddFile_Click();
    void mnuAddFolder_Click();
    void cmdLoadPlaylist_Click();
    void cmdCreatePlaylist_Click();
    void DropOnWindow(const std::vector<std::string>& paths);
    void DropOnList(const std::vector<std::string>& paths);
    /// Writes the queue, up to the first entry that the library can't tell of. Throws RuntimeError if the
    /// file can't be written; the old one is then still there.
    void WritePlayerPlaylist(const std::string& path) const;

    // Order, position, volume and display.
    bool Repeat() const { return m_repeat; }       ///< chkRepeat
    bool RepeatAll() const { return m_repeatAll; } ///< chkRepeatAll
    void chkRepeat_Click(bool checked);            ///< A check takes the other one's away.
    void chkRepeatAll_Click(bool checked);
    void Timer1_Timer();                       ///< Shows the engine's position.
    void Slider1_Scroll(std::int32_t seconds); ///< The user has moved the position.
    void Slider3_Scroll(std::int32_t value);   ///< The user has moved the volume, 0 to LoudestPosition.
    void lblTime_DblClick();                   ///< From elapsed to remaining time and back.

    void EndOfStream() override; ///< Lets events run.
    void LoadedLate() override;
    void RefusedLate() override; ///< Lets events run.
    void PlayingChanged() override;

private:
    enum class Origin { Player, Tree };

    /// How far a start came.
    enum class Started {
        Overtaken, ///< Another start, or the window's end, came in between: what follows it is void as well.
        Failed,    ///< Before its entry was selected.
        Selected,  ///< Its entry was. What the user has chosen since then is newer.
    };

    /// What the library tells of a file that is started.
    struct LibraryFacts {
        std::string Quality;
        std::int16_t Length; ///< Seconds.
    };

    // PlayQueue.cpp
    void ShowEmptyWindow();
    void Run(const std::function<void()>& handler);
    void Outside(const std::function<void()>& work);
    void LetEventsRun();
    void Settle();
    void TellNextFile();
    std::string NextFile() const;
    void EmptyQueue();
    void RemoveMarker(std::int32_t entry);
    void MarkFileError(std::int32_t position);
    void Tick();
    void ShowTime(const std::string& text);

    // QueueStart.cpp
    void ShowCaption();
    Started Start(std::int16_t index, Origin origin);
    void StartFile(std::int16_t index, Origin origin, unsigned& start);
    void FollowEntry();
    void RequireAccepted() const;
    void BeginFile(const std::string& path, std::int16_t index, unsigned& start);
    void RequirePlayable(const std::string& path);
    LibraryFacts ReadFacts(const std::string& path, Origin origin) const;
    std::string QualityText(const std::string& path, const std::string& quality, Origin origin);
    void ShowLength(std::int16_t length);
    void ShowPositionMax(std::int16_t length);
    void MoveMarkerHere();
    void Advance();
    void AdvanceAll();

    // QueueFill.cpp
    void EmptyUnlessAdding();
    void AddByPath(const std::string& path);
    void AddById(const std::string& condition);
    void AddCategory(const std::string& category);
    void AddFile(const std::string& path);
    void ReadM3u(std::int16_t mode, const std::string& fileName, bool checkExists);

    // QueueTransport.cpp
    void MarkWithSelectedText(std::int32_t entry);
    void StartSelected();
    void MoveSelection(std::int32_t step);
    void MoveCurrentTrack(std::int32_t step);

    // QueueEdit.cpp
    void RemoveSelected();
    bool BeginAdding();
    bool AddFolder(const std::string& folder); // Lets events run.
    void SavePlaylist(const std::string& path);
    void WriteEntries(PlaylistWriter& playlist) const;

    MediaPlayer& m_player;
    PlayerView& m_view;
    QueueEntries m_entries;
    bool m_loaded = false;
    int m_depth = 0; ///< Handlers that run inside each other since events ran last.
    bool m_statusChanged = false;
    bool m_waitsForFolder = false; ///< To be listed. No other one is added meanwhile.

    std::int16_t m_currentTrack = 0;
    bool m_paused = false;
    bool m_stopped = false;
    std::int16_t m_positionSeconds = 0; ///< Of the engine, at the last tick.
    bool m_showElapsed = true;          ///< lblTime shows the elapsed time, else the remaining one.
    bool m_repeat = false;
    bool m_repeatAll = false;

    // What the window shows.
    bool m_hasFileLabel = false;
    std::int32_t m_positionMax = 0;
    std::int32_t m_shownPosition = 0;
    std::string m_shownTime;

    // The file that was given to the engine last.
    unsigned m_starts = 0;           ///< How many there were. Another number: a start has been overtaken.
    std::int32_t m_startedEntry = 0; ///< Its entry; 0 if that is gone.
    bool m_starting = false;         ///< Its start has not come to an end yet.
    bool m_selected = false;         ///< It has selected its entry.
    bool m_refused = false;          ///< It has turned out meanwhile that it can't be played.
    bool m_hasFile = false;          ///< It was not refused.
    bool m_waitsForLength = false;   ///< Its Duration was not known when it was shown,
    bool m_lengthIsUnknown = false;  ///< nor is the library's length.
    std::optional<std::string> m_promised; ///< With what the engine was told to go on; nothing: not told yet.
};

} // namespace quavernet
