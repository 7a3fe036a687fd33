// Sort weights of code points: the table under the collation of the library file. The indexes of every
// library rest on it: a change here needs a new version of the schema.
#pragma once

#include "platform/CaseFold.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quavernet::sqlite {

/// A byte that is no part of valid UTF-8 counts as a code point of its own, after all real ones.
inline constexpr char32_t InvalidByte = 0x110000;

/// The code point at `position`, which moves past it. Strict: overlong forms, surrogates and cut sequences
/// give their first byte as InvalidByte + its value. `position` must lie inside the text.
char32_t NextCodePoint(std::string_view text, std::size_t& position);

/// Primary weight: punctuation, then digits, then Latin letters by their base letter, then everything else by
/// code point. Letters that differ only in case or accent share one.
std::uint32_t PrimaryWeight(char32_t codePoint);

} // namespace quavernet::sqlite
