// The text comparison of the library file: the collation that its text columns are declared with, and the
// like operator of the same case rule. Registered on every connection.
//
// It is our own and not a library's (ICU, the C library's locales): every index of a library file is sorted
// by it. Theirs changes between versions and machines, and an index in another order finds nothing, silently.
#pragma once

#include <string_view>

struct sqlite3;

namespace quavernet::sqlite {

/// Name of the collation in the schema.
inline constexpr const char* CollationName = "QUAVERNET";

/// Below, above or equal to 0. Equal means the same but for case; accents count (ä is Ä, but not a). The
/// order is punctuation, digits, letters, with accented letters beside their base letters: texts are compared
/// by base letters first, and only where these are all alike by their accents.
int CompareTexts(std::string_view left, std::string_view right);

/// Registers the collation and the like operator. Throws RuntimeError if the engine refuses.
void RegisterTextComparison(sqlite3* database);

} // namespace quavernet::sqlite
