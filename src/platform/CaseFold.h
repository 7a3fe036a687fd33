// The case of letters, of ASCII and of other scripts, whatever the locale. The comparison of the library's
// texts rests on it, and the logic asks here when it compares names as the library does.
#pragma once

#include <string>
#include <string_view>

namespace quavernet {

/// The lower-case form by simple folding for Latin, Greek, Cyrillic and Armenian letters, full-width Latin
/// included; every other code point is its own. The indexes of every library rest on it: a change here needs
/// a new version of the schema.
char32_t FoldCase(char32_t codePoint);

/// The text with all its letters in that form; bytes that are not UTF-8 stay. Two texts are the same to the
/// library if they are the same in this form.
std::string FoldCase(std::string_view text);

} // namespace quavernet
