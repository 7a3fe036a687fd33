// The single-byte code page Windows-1252, in which version 1 tags are written and by which the letter filter
// goes. Called by the readers and writers of tags and by the list. Ours and not iconv's, which refuses the
// five unassigned codes (0x81: "illegal input sequence"): real tags hold them, and a saved tag has to keep
// its bytes.
#pragma once

#include "platform/Utf8.h"

#include <string>
#include <string_view>

namespace quavernet {

/// Code of one character in Windows-1252, 0 to 255; -1 if the page does not hold it. An invalid byte is its
/// own code.
int Windows1252Code(std::string_view character);

/// Bytes in Windows-1252 to UTF-8; the five unassigned codes map to the control characters of the same
/// number.
std::string FromWindows1252(std::string_view bytes);

/// UTF-8 to Windows-1252; a character that the page does not hold becomes "?".
std::string ToWindows1252(std::string_view text);

} // namespace quavernet
