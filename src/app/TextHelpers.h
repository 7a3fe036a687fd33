// Small text routines that several subsystems share. Texts are UTF-8 (file names: any bytes); a character is
// a code point, and an invalid byte counts as one character. Trimming means U+0020 alone.
#pragma once

#include "platform/Ascii.h"
#include "platform/Paths.h"
#include "platform/Utf8.h"

#include <string>
#include <string_view>

namespace quavernet {

std::string_view TrimLeft(std::string_view text);
std::string_view TrimRight(std::string_view text);
std::string_view Trim(std::string_view text);

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
