// The internal player as the list and the tree see it: commands of frmPlayer, which implements this. It lies
// here so that list and tree reach the player without knowing it, and the player may know both of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quavernet {

class RowTexts;
class TreeModel;

class PlayerWindow {
public:
    /// Mode of FillPlaylistFromTree.
    static constexpr std::int16_t OneFile = 1;
    static constexpr std::int16_t WholeCategory = 2;

    virtual ~PlayerWindow() = default;

    /// Shows the window beside the main window; loads it if need be.
    virtual void Show() = 0;

    /// The same for a user who wants the window itself: it is restored, lies above the others and gets the
    /// keyboard.
    virtual void BringToFront() = 0;

    /// Puts the rows of mainModule.SelectedRows into the queue, which is emptied first unless files are
    /// always added.
    virtual void FillPlaylist() = 0;

    /// Puts the tree's selected file or category into the queue, emptied first by the same rule.
    virtual void FillPlaylistFromTree(std::int16_t mode, const TreeModel& tree) = 0;

    /// Replaces the queue by the file of a row of the charts.
    virtual void FillPlaylistFromCharts(const RowTexts& chartPaths, std::int32_t row) = 0;

    /// Appends the file of an id; an id without a file appends nothing.
    virtual void FillRandomPlaylist(const std::string& fileId, std::int32_t counter) = 0;

    /// Reads a playlist into the queue. `mode` 1 empties the list first; `checkExists` leaves out what is
    /// missing.
    virtual void fGetM3u(std::int16_t mode, const std::string& fileName, bool checkExists) = 0;

    virtual void ClearQueue() = 0;
    virtual void SelectFirst() = 0; ///< The list selects its first entry.
    virtual std::size_t QueueCount() const = 0;

    /// Start a queue entry, counted from 1. A fault shows in the entry's text, never as a failure.
    virtual void PlayFile(std::int16_t index) = 0;
    virtual void PlayFileFromTree(std::int16_t index) = 0;

    /// Sets the texts of an open window in the language of now.
    virtual void LoadStrings() = 0;
};

} // namespace quavernet
