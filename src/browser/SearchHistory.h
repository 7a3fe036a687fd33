// The last searches, which the search box offers again. They are kept in the settings.
#pragma once

#include <string>
#include <vector>

namespace quavernet {

/// At most this many are kept.
inline constexpr std::size_t MostSearches = 10;

/// The newest first; none twice, whatever the case of its letters.
std::vector<std::string> LastSearches();

/// Puts the text at the front. An empty one and one with a line break are not kept.
void RememberSearch(const std::string& text);

} // namespace quavernet
