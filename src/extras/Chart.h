// The charts without their window: which files they rank, in which lines, and what a double click and the
// button do. frmChart owns one and shows what it gives.
#pragma once

#include "app/Collections.h"
#include "app/LongWork.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quavernet {

class LibraryViews;
class PlayerWindow;

/// The three cells of a row of the grid.
using ChartLine = std::array<std::string, 3>;

/// What a fill shows.
struct ChartContent {
    std::string Title; ///< Of the window.
    ChartLine Headers;
    bool IsTopList = true; ///< The third column counts; else it holds dates.
    std::vector<ChartLine> Lines;
    std::int32_t CurrentRow = -1; ///< From 0; -1: none is set.
};

class Chart {
public:
    /// From this number of files on the window has a scroll bar instead of more rows.
    static constexpr std::int32_t FirstLimitWithScrollBar = 31;
    /// The most lines without a file after those that have one.
    static constexpr std::int32_t MostEmptyLines = 32767;

    ~Chart() { Form_Unload(); }

    /// The state of a window that opens: which list it shows is in mainModule.
    void Form_Load();
    void Form_Unload();
    bool IsLoaded() const { return m_loaded; }

    /// Reads the library again. Throws RuntimeError if that fails.
    ChartContent FillChart();

    /// Plays the file of a grid row, counts that and fills again; nothing to show if that failed, which a box
    /// has told, or if the window has closed meanwhile. `setPointer` shows the hourglass as long as it lasts.
    /// Throws RuntimeError if the fill fails. Lets events run.
    std::optional<ChartContent> grdChart_DblClick(std::int32_t row, PlayerWindow& player,
                                                  const std::function<void(MousePointer)>& setPointer);

    /// Shows the files of the last fill in the list; nothing happens without any. Lets events run.
    void cmdShowInList_Click(LibraryViews& views) const;

    std::int32_t ChartLimit() const { return m_chartLimit; } ///< How many lines are asked for.
    const std::string& ChartFileIds() const { return m_chartFileIds; }

private:
    void AddFiles(ChartContent& content);
    void AddEmptyLines(ChartContent& content) const;
    void Play(std::int32_t row, PlayerWindow& player);

    bool m_loaded = false;
    std::int32_t m_chartLimit = 0;
    std::string m_chartFileIds;  ///< Separated by ", ".
    RowTexts m_chartPaths;       ///< Counted from 1, grid rows from 0.
    std::int16_t m_chartRow = 0; ///< Grid row of the last double click.
};

} // namespace quavernet
