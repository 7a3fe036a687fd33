// Characters of UTF-8 texts: decoded, counted, cut. Called wherever texts are taken apart. Names of files may
// be any bytes: an invalid byte counts as one character, so that nothing is lost or split.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quavernet {

/// The first character of a text.
struct DecodedCharacter {
    char32_t codePoint;  ///< An invalid byte gives its own value.
    std::uint8_t length; ///< Bytes: of a valid sequence, or 1 for an invalid byte.
    bool valid;          ///< No overlong form, no surrogate, not cut, nothing above U+10FFFF.
};

/// Takes the first character apart. The text is not empty.
DecodedCharacter DecodeUtf8(std::string_view text);

/// Bytes of the first character of a text that is not empty: a valid UTF-8 sequence, or 1 for an invalid
/// byte.
std::size_t CharacterLength(std::string_view text);

/// Code point of the first character of a text that is not empty; an invalid byte gives its own value.
char32_t CodePoint(std::string_view text);

/// The code point in UTF-8.
std::string EncodeUtf8(char32_t codePoint);

/// Whether the whole text is UTF-8: no overlong form, no surrogate, nothing above U+10FFFF. An empty text is.
bool IsValidUtf8(std::string_view text);

/// Number of characters, and the first or last of them as text.
std::size_t CharacterCount(std::string_view text);
std::string_view LeftCharacters(std::string_view text, std::size_t count);
std::string_view RightCharacters(std::string_view text, std::size_t count);

/// The text without its last characters. Throws RuntimeError 5 if it has fewer than `count`.
std::string_view DropRightCharacters(std::string_view text, std::size_t count);

} // namespace quavernet
