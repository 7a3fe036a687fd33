// What a double click in the list does: sorting by a column, or playing a row in the system's program. The
// list pane calls it and reloads or shows the result.
#pragma once

#include <cstdint>

namespace quavernet {

/// Turns the sort direction over, also for a column that was not the sort column before, and makes the column
/// (0 to 5) the only sort column. The list must be loaded anew.
void SortByColumn(int column);

/// Opens a listed row with the program that the system has for it, tells of a failure in a box, and counts
/// the play in either case. Failures of the count or of a stale row are passed over in silence.
void PlayRowExternally(std::int32_t row, std::int64_t fileId);

/// A click on chkInterpret or chkTitle. At least one of the two stays checked: returns the state that the
/// clicked box must show, and stores it under `setting`.
bool SearchBoxClicked(const char* setting, bool nowChecked, bool otherChecked);

} // namespace quavernet
