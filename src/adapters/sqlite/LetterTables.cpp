#include "adapters/sqlite/LetterTables.h"

#include "platform/Utf8.h"

namespace quavernet::sqlite {

namespace {

// Base letters from U+00C0 and from U+1E00 on; a point where there is none.
constexpr std::string_view basesFromC0 =
    "aaaaaaaceeeeiiiidnooooo.ouuuuytsaaaaaaaceeeeiiiidnooooo.ouuuuytyaaaaaaccccccccddddeeeeeeeeeegggggggg"
    "hhhhiiiiiiiiiiiijjkkqllllllllllnnnnnnnnnoooooooorrrrrrssssssssttttttuuuuuuuuuuuuwwyyyzzzzzzsbbbb..oc"
    "cdddd.e.effg...ikkl.mnnooo..pp.....ttttuu.vyyzz.............dddlllnnnaaiioouuuuuuuuuueaaaaaaggggkkoo"
    "oo..jdddgg..nnaaaaooaaaaeeeeiiiioooorrrruuuusstt..hhnd..zzaaeeooooooooyylntj..accltsz..buveejjqqrryy";
constexpr std::string_view basesFrom1E00 =
    "aabbbbbbccddddddddddeeeeeeeeeeffgghhhhhhhhhhiiiikkkkkkllllllllmmmmmmnnnnnnnnoooooooopppprrrrrrrrssss"
    "ssssssttttttttuuuuuuuuuuvvvvwwwwwwwwwwxxxxyyzzzzzzhtwyassss.aaaaaaaaaaaaaaaaaaaaaaaaeeeeeeeeeeeeeeee"
    "iiiioooooooooooooooooooooooouuuuuuuuuuuuuuyyyyyyyy....yy";
static_assert(basesFromC0.size() == 0x250 - 0xC0 && basesFrom1E00.size() == 0x100);

constexpr std::uint32_t digitClass = 1u << 24, letterClass = 2u << 24, otherClass = 3u << 24;

char BaseLetter(char32_t folded) {
    if (folded >= 'a' && folded <= 'z') {
        return static_cast<char>(folded);
    }
    if (folded >= 0xC0 && folded < 0xC0 + basesFromC0.size()) {
        return basesFromC0[folded - 0xC0];
    }
    if (folded >= 0x1E00 && folded < 0x1E00 + basesFrom1E00.size()) {
        return basesFrom1E00[folded - 0x1E00];
    }
    return '.';
}

bool IsPunctuation(char32_t c) {
    return c < 0xC0 || c == 0xD7 || c == 0xF7 || (c >= 0x2000 && c < 0x2C00) || (c >= 0x3000 && c < 0x3040);
}

} // namespace

char32_t NextCodePoint(std::string_view text, std::size_t& position) {
    const auto lead = static_cast<unsigned char>(text[position]);
    if (lead < 0x80) {
        ++position;
        return lead;
    }
    const DecodedCharacter character = DecodeUtf8(text.substr(position));
    position += character.length;
    return character.valid ? character.codePoint : InvalidByte + character.codePoint;
}

std::uint32_t PrimaryWeight(char32_t codePoint) {
    const char32_t folded = FoldCase(codePoint);
    if (const char base = BaseLetter(folded); base != '.') {
        return letterClass + static_cast<std::uint32_t>(base);
    }
    if (folded >= '0' && folded <= '9') {
        return digitClass + folded;
    }
    return IsPunctuation(folded) ? folded : otherClass + folded;
}

} // namespace quavernet::sqlite
