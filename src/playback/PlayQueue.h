// The play queue and the rules by which the engine goes through it, without a screen: requests, the end of a
// track, ticks and editing come in; texts, labels and calls of the engine go out. frmPlayer owns it.
#pragma once

#include "app/Collections.h"
#include "platform/MediaPlayer.h"
#include "playback/PlayerView.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quavernet {

class TreeModel;

class PlayQueue : public MediaPlayerEvents {
public:
    static constexpr std::int32_t MostEntries = 32767;

    PlayQueue(MediaPlayer& player, PlayerView& view);
    ~PlayQueue() override;

    // The two stores, which every operation keeps in step. Entries count from 1, list positions from 0.
    std::int32_t ListCount() const;
    const std::string& Text(std::int32_t position) const; ///< lstFiles
    std::int32_t ListIndex() const;                       ///< Selected position, -1 for none.
    void SetListIndex(std::int32_t position);             ///< As a click on the entry.
    std::size_t PathCount() const;
    const std::string& Path(std::int32_t entry) const; ///< PlayerPaths
    std::int16_t CurrentTrack() const;
    bool Paused() const;

    // Fills. None starts anything. A failure ends a fill silently; entries already made stay.
    void Clear();        ///< lstFiles and PlayerPaths.
    void FillPlaylist(); ///< The rows of the list. Lets events run.
    void FillPlaylistFromTree(std::int16_t mode, const TreeModel& tree); ///< 1 a file, 2 a category.
    void FillPlaylistFromCharts(const RowTexts& chartPaths, std::int32_t row);
    void FillRandomPlaylist(const std::string& fileId, std::int32_t counter);
    void AddPlaylist(const std::string& path);
    void fGetM3u(std::int16_t mode, const std::string& fileName, bool checkExists);

    // Starting. A fault shows in the entry's text.
    void PlayFile(std::int16_t index); ///< Lets events run.
    void PlayFileFromTree(std::int16_t index);

    // The transport and the list's keys.
    void cmdPlay_Click();
    void cmdPause_Click();
    void cmdStop_Click();
    void cmdNext_Click();
    void cmdLast_Click();
    void lstFiles_DblClick();
    /// Whether the list box is to handle the key too.
    bool lstFiles_KeyDown(int keyCode);

    // Editing.
    void cmdRem_Click(); ///< Lets events run.
    void cmdRemAll_Click();
    void cmdRandomize_Click(); ///< Shuffles the queue.
    void mnuAddFile_Click();
    void mnuAddFolder_Click();
    void DropOnWindow(const std::vector<std::string>& paths);
    void DropOnList(const std::vector<std::string>& paths);

    // Position, volume and display.
    void Timer1_Timer();
    void Slider1_Scroll(std::int32_t seconds);
    void Slider3_Scroll(std::int32_t value); ///< 0 to 2500.
    void lblTime_DblClick();
    void Form_Resize(); ///< The caption follows the window's state.

    bool Repeat = false;    ///< chkRepeat
    bool RepeatAll = false; ///< chkRepeatAll

    void EndOfStream() override;
    void LoadedLate() override;
    void RefusedLate() override;
    void PlayingChanged() override;
};

} // namespace quavernet
