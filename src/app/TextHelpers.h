// Small text routines that several subsystems share. Texts are UTF-8 (file names: any bytes); a character is
// a code point, and an invalid byte counts as one character. Trimming means U+0020 alone.
#pragma once

#include "platform/Ascii.h"
#include "platform/Paths.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace quavernet {

std::string_view TrimLeft(std::string_view text);
std::string_view TrimRight(std::string_view text);
std::string_view Trim(std::string_view text);

/// Number of characters, and the first or last of them as text.
std::size_t CharacterCount(std::string_view text);
std::string_view LeftCharacters(std::string_view text, std::size_t count);
std::string_view RightCharacters(std::string_view text, std::size_t count);

/// The text without its last characters. Throws RuntimeError 5 if it has fewer than `count`.
std::string_view DropRightCharacters(std::string_view text, std::size_t count);

/// Whether `text` holds `part`, ASCII letters compared without regard to case.
bool ContainsIgnoringCase(std::string_view text, std::string_view part);

/// The text up to its first NUL.
std::string StripAtNull(std::string_view text);

/// The text without its NULs, trimmed on both sides.
std::string StripNulls(std::string_view text);

/// The text with every `part` replaced by `by`. An empty part replaces nothing.
std::string ReplaceAll(std::string_view text, std::string_view part, std::string_view by);

/// Code of the text's first character in Windows-1252, or -1 if that page does not hold it (an invalid byte
/// is its own code). The text must not be empty: throws RuntimeError 5.
int FirstCharacterCode(std::string_view text);

} // namespace quavernet
