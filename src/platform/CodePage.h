// Characters: UTF-8 and the single-byte code page Windows-1252, in which version 1 tags are written and by
// which the letter filter goes. Called wherever texts are taken apart. Ours and not iconv's, which refuses
// the five unassigned codes (0x81 "illegal input sequence"): real tags hold them, and a saved tag has to keep
// its bytes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quavernet {

/// Bytes of the first character of a text that is not empty: a valid UTF-8 sequence, or 1 for an invalid
/// byte.
std::size_t CharacterLength(std::string_view text);

/// Code point of the first character of a text that is not empty; an invalid byte gives its own value.
char32_t CodePoint(std::string_view text);

/// The code point in UTF-8.
std::string EncodeUtf8(char32_t codePoint);

/// Whether the whole text is UTF-8: no overlong form, no surrogate, nothing above U+10FFFF. An empty text is.
bool IsValidUtf8(std::string_view text);

/// Code of one character in Windows-1252, 0 to 255; -1 if the page does not hold it. An invalid byte is its
/// own code.
int Windows1252Code(std::string_view character);

/// Bytes in Windows-1252 to UTF-8; the five unassigned codes map to the control characters of the same
/// number.
std::string FromWindows1252(std::string_view bytes);

/// UTF-8 to Windows-1252; a character that the page does not hold becomes "?".
std::string ToWindows1252(std::string_view text);

} // namespace quavernet
