// What the play queue shows of itself: the labels, the position and the list of the player's window.
// frmPlayer implements it.
#pragma once

#include <cstdint>
#include <string>

namespace quavernet {

/// Told of what has changed, and only then. None of these may call the queue's requests or let events run.
class PlayerView {
public:
    virtual ~PlayerView() = default;

    virtual bool IsMinimized() const = 0;
    virtual void SetCaption(const std::string& text) = 0;
    virtual void SetFile(const std::string& text, const std::string& toolTip) = 0; ///< lblFile
    virtual void SetQuality(const std::string& text) = 0;                          ///< lblQuality
    virtual void SetTime(const std::string& text) = 0;                             ///< lblTime
    virtual void SetLength(const std::string& text) = 0;                           ///< lblLength
    virtual void SetPercent(const std::string& text) = 0;                          ///< lblPercent
    virtual void SetPositionMax(std::int32_t seconds) = 0;   ///< Slider1.Max, 0 or more.
    virtual void SetPosition(std::int32_t seconds) = 0;      ///< Slider1.Value; may be above its Max.
    virtual void SetRepeat(bool repeat, bool repeatAll) = 0; ///< chkRepeat, chkRepeatAll

    // The list box, positions from 0. Told after the change; the texts are read from the queue.
    virtual void EntriesReset() = 0; ///< All are others, or none is left. Nothing is selected.
    virtual void EntriesAppended(std::int32_t first) = 0; ///< From this one to the last.
    virtual void EntryChanged(std::int32_t position) = 0; ///< Its text.
    virtual void EntryRemoved(std::int32_t position) = 0;
    virtual void SelectionMoved() = 0; ///< Also by SetListIndex.

    /// What a listener outside of the window may want to know has changed: the track, playing or paused, the
    /// position by a jump, or the order. Comes often: once for each file that is put in by itself.
    virtual void StatusChanged() = 0;
};

} // namespace quavernet
