// Texts on their way into a statement and back. Every text of a user or a file passes through SqlQuote before
// it is put between quotes, through SqlPlain where it goes there as it is, and through SqlNumber where it is
// a bare number.
#pragma once

#include <string>
#include <string_view>

namespace quavernet {

/// Each apostrophe doubled.
std::string SqlQuote(std::string_view text);

/// Each doubled apostrophe turned back into one, from left to right.
std::string SqlUnquote(std::string_view text);

/// The text itself, for a place between quotes where the statement takes it unquoted. Throws RuntimeError 1
/// if it holds an apostrophe: such a statement always fails, also where two in a row would make it whole
/// again.
std::string_view SqlPlain(std::string_view text);

/// The text itself if it is a number in digits, with a sign and a decimal point where it has them, or empty.
/// Throws RuntimeError 13 otherwise: nothing that a file says may become a part of a statement.
std::string_view SqlNumber(std::string_view text);

} // namespace quavernet
