// Apostrophes of texts on their way into a statement and back. Every text of a user or a file passes through
// SqlQuote before it stands between quotes.
#pragma once

#include <string>
#include <string_view>

namespace quavernet {

/// Each apostrophe doubled.
std::string SqlQuote(std::string_view text);

/// Each doubled apostrophe turned back into one, from left to right.
std::string SqlUnquote(std::string_view text);

} // namespace quavernet
