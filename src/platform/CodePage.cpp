#include "platform/CodePage.h"

#include <algorithm>
#include <array>

namespace quavernet {

namespace {

// Code points of the codes 0x80 to 0x9F; the others are those of Latin-1.
constexpr std::array<char32_t, 32> HighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

} // namespace

int Windows1252Code(std::string_view character) {
    const char32_t codePoint = CodePoint(character);
    const bool isByte = CharacterLength(character) == 1; // ASCII or invalid
    if (isByte || (codePoint >= 0xA0 && codePoint <= 0xFF)) {
        return static_cast<int>(codePoint);
    }
    const auto found = std::find(HighControls.begin(), HighControls.end(), codePoint);
    return found == HighControls.end() ? -1 : 0x80 + static_cast<int>(found - HighControls.begin());
}

std::string FromWindows1252(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        text += EncodeUtf8(byte >= 0x80 && byte < 0xA0 ? HighControls[byte - 0x80u] : byte);
    }
    return text;
}

std::string ToWindows1252(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        const int code = Windows1252Code(text);
        bytes += code < 0 ? '?' : static_cast<char>(code);
        text.remove_prefix(CharacterLength(text));
    }
    return bytes;
}

} // namespace quavernet
