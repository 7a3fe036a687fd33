// The letters and digits of ASCII, whatever the locale: keys, keywords, extensions. Called wherever such
// names are compared. All else of a text passes unchanged.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace quavernet {

/// The letter in upper case.
constexpr char UpperAscii(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// The letter in lower case.
constexpr char LowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// The text with its letters in upper case.
inline std::string UpperAscii(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](char c) { return UpperAscii(c); });
    return result;
}

/// The text with its letters in lower case.
inline std::string LowerAscii(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](char c) { return LowerAscii(c); });
    return result;
}

/// Whether the texts are the same but for the case of their letters.
constexpr bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return LowerAscii(x) == LowerAscii(y); });
}

} // namespace quavernet
