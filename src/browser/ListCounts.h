// How many performers, titles and albums the counters of the status bar tell. Called at the end of a list
// load.
#pragma once

#include "browser/ListQuery.h"

#include <cstdint>
#include <string>

namespace quavernet {

/// Sets the three counts. `listed` is what the list statement gave, before the letter and format filters;
/// `allFiles` is the number of rows in Files.
/// The three count statements select the very rows of the list statement, except for a request of the charts;
/// only then are they sent. Otherwise the keys in Files give the same numbers at a tenth of the time.
void CountLookups(const ADODB::RowBlock& listed, std::int64_t allFiles, const ListFilter& filter,
                  const std::string& list, ListTotals& totals);

} // namespace quavernet
