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

unsigned char Byte(std::string_view text, std::size_t i) {
    return static_cast<unsigned char>(text[i]);
}

bool IsContinuation(std::string_view text, std::size_t i) {
    return i < text.size() && (Byte(text, i) & 0xC0) == 0x80;
}

struct Decoded {
    char32_t codePoint;
    std::size_t length;
    bool valid;
};

Decoded Decode(std::string_view text) {
    const unsigned char first = Byte(text, 0);
    const Decoded invalid{first, 1, false};
    if (first < 0x80) {
        return {first, 1, true};
    }
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4) {
        return invalid;
    }
    char32_t codePoint = first & (0xFFu >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(text, i)) {
            return invalid;
        }
        codePoint = (codePoint << 6) | (Byte(text, i) & 0x3Fu);
    }
    const bool overlong = (length == 3 && codePoint < 0x800) || (length == 4 && codePoint < 0x10000);
    const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (overlong || surrogate || codePoint > 0x10FFFF) {
        return invalid;
    }
    return {codePoint, length, true};
}

} // namespace

std::size_t CharacterLength(std::string_view text) {
    return Decode(text).length;
}

char32_t CodePoint(std::string_view text) {
    return Decode(text).codePoint;
}

std::string EncodeUtf8(char32_t codePoint) {
    const auto tail = [codePoint](int shift) {
        return static_cast<char>(0x80u | ((static_cast<unsigned>(codePoint) >> shift) & 0x3Fu));
    };
    if (codePoint < 0x80) {
        return {static_cast<char>(codePoint)};
    }
    if (codePoint < 0x800) {
        return {static_cast<char>(0xC0u | (codePoint >> 6)), tail(0)};
    }
    if (codePoint < 0x10000) {
        return {static_cast<char>(0xE0u | (codePoint >> 12)), tail(6), tail(0)};
    }
    return {static_cast<char>(0xF0u | (codePoint >> 18)), tail(12), tail(6), tail(0)};
}

bool IsValidUtf8(std::string_view text) {
    while (!text.empty()) {
        const Decoded character = Decode(text);
        if (!character.valid) {
            return false;
        }
        text.remove_prefix(character.length);
    }
    return true;
}

int Windows1252Code(std::string_view character) {
    const Decoded decoded = Decode(character);
    if (!decoded.valid || decoded.codePoint < 0x80 ||
        (decoded.codePoint >= 0xA0 && decoded.codePoint <= 0xFF)) {
        return static_cast<int>(decoded.codePoint);
    }
    const auto found = std::find(HighControls.begin(), HighControls.end(), decoded.codePoint);
    return found == HighControls.end() ? -1 : 0x80 + static_cast<int>(found - HighControls.begin());
}

std::string FromWindows1252(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const unsigned char byte = Byte(bytes, i);
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
