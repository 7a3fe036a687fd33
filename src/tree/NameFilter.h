// The characters that the field for a category's name takes. The names go into statements as they are, so
// that this filter holds for typing, pasting, dropping and input methods alike. NameField applies it.
#pragma once

namespace quavernet {

/// Blank, ASCII digits and letters, and everything above 255: no apostrophe, and none of the letters with
/// accents of Western Europe.
constexpr bool IsNameCharacter(char32_t character) {
    return character == U' ' || (character >= U'0' && character <= U'9') ||
           (character >= U'A' && character <= U'Z') || (character >= U'a' && character <= U'z') ||
           character > 255;
}

} // namespace quavernet
