#include "adapters/sqlite/SortKeys.h"

#include "adapters/sqlite/LetterTables.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <numeric>

namespace quavernet::sqlite {

namespace {

// One byte for each character that sorts as the character does: the ASCII ones, and every letter on its base
// letter's.
class CharacterBytes {
public:
    CharacterBytes() {
        // 0 is after the end: a text comes before its longer forms.
        constexpr std::uint8_t FirstByte = 1;
        std::vector<char32_t> characters(128);
        std::iota(characters.begin(), characters.end(), U'\0');
        std::sort(characters.begin(), characters.end(),
                  [](char32_t a, char32_t b) { return PrimaryWeight(a) < PrimaryWeight(b); });
        std::uint8_t byte = FirstByte;
        bool beforeDigits = true;
        for (std::size_t i = 0; i < characters.size(); ++i) {
            const char32_t c = characters[i];
            if (beforeDigits && PrimaryWeight(c) >= PrimaryWeight(U'0')) {
                m_punctuation = ++byte;
                ++byte;
                beforeDigits = false;
            } else if (i > 0 && PrimaryWeight(c) != PrimaryWeight(characters[i - 1])) {
                ++byte;
            }
            m_bytes[c] = byte;
        }
        m_other = static_cast<std::uint8_t>(byte + 1);
    }

    /// The byte of the character at `position`, which moves past it; `shared` if others have it too that
    /// the order tells apart.
    std::uint8_t Next(std::string_view text, std::size_t& position, bool& shared) const {
        const auto lead = static_cast<unsigned char>(text[position]);
        if (lead < 0x80) {
            ++position;
            return m_bytes[lead];
        }
        return ByteOf(NextCodePoint(text, position), shared);
    }

private:
    std::uint8_t ByteOf(char32_t c, bool& shared) const {
        const std::uint32_t weight = PrimaryWeight(c);
        if (weight >= PrimaryWeight(U'a') && weight <= PrimaryWeight(U'z')) {
            return m_bytes[U'a' + (weight - PrimaryWeight(U'a'))];
        }
        shared = true;
        return weight < PrimaryWeight(U'0') ? m_punctuation : m_other;
    }

    std::uint8_t m_bytes[128] = {};
    std::uint8_t m_punctuation = 0; ///< Every sign outside of ASCII.
    std::uint8_t m_other = 0;       ///< Every letter that has no Latin base.
};

constexpr int BitsOfDigit = 11;
constexpr int Digits = 6; ///< Of 64 bits.
constexpr std::size_t DigitValues = std::size_t{1} << BitsOfDigit;

std::size_t DigitOf(const SortKey& key, int digit) {
    return (key.first >> (digit * BitsOfDigit)) & (DigitValues - 1);
}

using DigitCounts = std::array<std::array<std::uint32_t, DigitValues>, Digits>;

void CountDigits(const std::vector<SortKey>& keys, DigitCounts& counts) {
    for (const SortKey& key : keys) {
        for (int digit = 0; digit < Digits; ++digit) {
            ++counts[static_cast<std::size_t>(digit)][DigitOf(key, digit)];
        }
    }
}

} // namespace

SortKey TextKey(std::string_view text, std::uint32_t item) {
    static const CharacterBytes bytes;
    std::uint64_t parts[2] = {0, 0};
    bool shared = false;
    std::size_t at = 0;
    for (std::size_t place = 0; place < 2 * sizeof(std::uint64_t) && at < text.size() && !shared; ++place) {
        const std::size_t shift = 56 - place % 8 * 8;
        parts[place / 8] |= std::uint64_t{bytes.Next(text, at, shared)} << shift;
    }
    return {parts[0], parts[1], item};
}

// By counting, the lowest digit first. A digit that is the same everywhere is passed over.
void SortByFirst(std::vector<SortKey>& keys) {
    if (keys.empty()) {
        return;
    }
    const auto counts = std::make_unique<DigitCounts>();
    CountDigits(keys, *counts);
    std::vector<SortKey> sorted(keys.size());
    for (int digit = 0; digit < Digits; ++digit) {
        auto& places = (*counts)[static_cast<std::size_t>(digit)];
        if (places[DigitOf(keys.front(), digit)] == keys.size()) {
            continue;
        }
        std::exclusive_scan(places.begin(), places.end(), places.begin(), std::uint32_t{0});
        for (const SortKey& key : keys) {
            sorted[places[DigitOf(key, digit)]++] = key;
        }
        keys.swap(sorted);
    }
}

void SortByKeys(std::vector<SortKey>& keys,
                const std::function<bool(std::uint32_t left, std::uint32_t right)>& isLess) {
    SortByFirst(keys);
    const auto isBefore = [&](const SortKey& left, const SortKey& right) {
        return left.second != right.second ? left.second < right.second : isLess(left.item, right.item);
    };
    for (auto begin = keys.begin(); begin != keys.end();) {
        const auto end =
            std::find_if(begin, keys.end(), [&](const SortKey& key) { return key.first != begin->first; });
        if (end - begin > 1) {
            std::sort(begin, end, isBefore);
        }
        begin = end;
    }
}

} // namespace quavernet::sqlite
