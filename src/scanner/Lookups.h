// The reads that the steps of a scan have in common. Called by the two stores, the search, the Ogg pass and
// the drop.
#pragma once

#include <optional>
#include <string>

namespace quavernet {

/// Field 0 of the first row that the statement finds, as text; nothing without a row.
std::optional<std::string> FirstValue(const std::string& select);

/// Whether the statement finds a row.
bool FindsRow(const std::string& select);

/// Whether the library holds a file of this path.
bool IsKnownPath(const std::string& path);

} // namespace quavernet
