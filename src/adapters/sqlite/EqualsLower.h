// Words of statements regardless of their case. Used where the adapter reads statements.
#pragma once

#include <algorithm>
#include <string_view>

namespace quavernet::sqlite {

/// True if `text` is the word `lower`, which is given in lower case; only the letters of ASCII have a case
/// here.
inline bool EqualsLower(std::string_view text, std::string_view lower) {
    return std::equal(text.begin(), text.end(), lower.begin(), lower.end(), [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? static_cast<char>(a + 32) : a) == b;
    });
}

} // namespace quavernet::sqlite
