#include "platform/Utf8.h"

#include "platform/RuntimeError.h"

#include <algorithm>

namespace quavernet {

namespace {

unsigned char Byte(std::string_view text, std::size_t i) {
    return static_cast<unsigned char>(text[i]);
}

bool IsContinuation(std::string_view text, std::size_t i) {
    return i < text.size() && (Byte(text, i) & 0xC0) == 0x80;
}

} // namespace

DecodedCharacter DecodeUtf8(std::string_view text) {
    const unsigned char first = Byte(text, 0);
    const DecodedCharacter invalid{first, 1, false};
    if (first < 0x80) {
        return {first, 1, true};
    }
    const std::uint8_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4) {
        return invalid;
    }
    char32_t codePoint = first & (0xFFu >> (length + 1));
    for (std::uint8_t i = 1; i < length; ++i) {
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

std::size_t CharacterLength(std::string_view text) {
    return DecodeUtf8(text).length;
}

char32_t CodePoint(std::string_view text) {
    return DecodeUtf8(text).codePoint;
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
        const DecodedCharacter character = DecodeUtf8(text);
        if (!character.valid) {
            return false;
        }
        text.remove_prefix(character.length);
    }
    return true;
}

std::size_t CharacterCount(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size(); i += CharacterLength(text.substr(i))) {
        ++count;
    }
    return count;
}

std::string_view LeftCharacters(std::string_view text, std::size_t count) {
    std::size_t end = 0;
    while (count > 0 && end < text.size()) {
        end += CharacterLength(text.substr(end));
        --count;
    }
    return text.substr(0, end);
}

std::string_view RightCharacters(std::string_view text, std::size_t count) {
    // The ends that are asked for are nearly always ASCII; then there is no need to count from the front.
    const std::string_view end = text.substr(text.size() - std::min(count, text.size()));
    if (std::all_of(end.begin(), end.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
        return end;
    }
    const std::size_t total = CharacterCount(text);
    return total <= count ? text : text.substr(LeftCharacters(text, total - count).size());
}

std::string_view DropRightCharacters(std::string_view text, std::size_t count) {
    const std::size_t total = CharacterCount(text);
    if (total < count) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall, "Invalid procedure call or argument");
    }
    return LeftCharacters(text, total - count);
}

} // namespace quavernet
