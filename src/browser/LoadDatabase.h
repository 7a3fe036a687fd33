// The one procedure that fills the main list: composes the statement from the filter, reads the rows, filters
// them by letter and format, and counts. The list's controller calls it and shows the result.
#pragma once

#include "app/LongWork.h"
#include "browser/ListQuery.h"

#include <cstdint>
#include <functional>
#include <string>

namespace quavernet {

/// Files of the whole library. Throws RuntimeError if the statement fails.
std::int64_t CountFiles();

/// Loads the list; fills mainModule.FilePaths and FileNames and empties SelectedRows. `list` holds File_ids
/// separated by commas and is used in the modes ShowInGridMode and ShowChartMode alone. Throws RuntimeError
/// if a statement fails, or a row has no size or length to show that had one at the start; the status panel
/// then keeps its text. `clearList` leaves the grid its header only.
/// Lets events run before it touches anything.
ListResult LoadDatabase(const ListFilter& filter, const std::string& list, LongWork& work,
                        const std::function<void()>& clearList);

/// As above, for a caller with live controls: events run at the beginning of a load, and the filter is read
/// after them, so that a change made by one of those events is not lost.
ListResult LoadDatabase(const std::function<ListFilter()>& readFilter, const std::string& list,
                        LongWork& work, const std::function<void()>& clearList);

} // namespace quavernet
