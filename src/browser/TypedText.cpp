#include "browser/TypedText.h"

#include "platform/CaseFold.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <vector>

namespace quavernet {

namespace {

std::vector<char32_t> FoldedCharacters(std::string_view text) {
    std::vector<char32_t> characters;
    while (!text.empty()) {
        const DecodedCharacter character = DecodeUtf8(text);
        characters.push_back(FoldCase(character.codePoint));
        text.remove_prefix(character.length);
    }
    return characters;
}

bool BeginsWith(std::string_view text, const std::vector<char32_t>& folded) {
    for (const char32_t wanted : folded) {
        if (text.empty()) {
            return false;
        }
        const DecodedCharacter character = DecodeUtf8(text);
        if (FoldCase(character.codePoint) != wanted) {
            return false;
        }
        text.remove_prefix(character.length);
    }
    return true;
}

bool IsOneCharacterRepeated(const std::vector<char32_t>& folded) {
    return std::all_of(folded.begin(), folded.end(), [&](char32_t c) { return c == folded.front(); });
}

} // namespace

bool TypedText::Type(std::string_view key, std::int64_t nowMs) {
    const bool begins = m_typed.empty() || nowMs - m_lastMs >= PauseMs;
    if (begins && key == " ") {
        return false;
    }
    m_typed = begins ? std::string(key) : m_typed + std::string(key);
    m_lastMs = nowMs;
    m_fromNext = IsOneCharacterRepeated(FoldedCharacters(m_typed));
    m_text = m_fromNext ? std::string(key) : m_typed;
    return true;
}

std::int32_t RowStartingWith(const ListRows& rows, ListColumn column, std::string_view text,
                             std::int32_t from) {
    const auto count = static_cast<std::int32_t>(rows.Count());
    const std::vector<char32_t> folded = FoldedCharacters(text);
    for (std::int32_t step = 0; step < count; ++step) {
        const std::int32_t row = (std::max(from, 1) - 1 + step) % count + 1;
        if (BeginsWith(rows.Text(static_cast<std::size_t>(row), column), folded)) {
            return row;
        }
    }
    return 0;
}

} // namespace quavernet
