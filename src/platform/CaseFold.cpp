#include "platform/CaseFold.h"

#include "platform/Ascii.h"
#include "platform/Utf8.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace quavernet {

namespace {

// Capitals from `first` to `last`, every `step`-th, lie `delta` before their lower-case letters.
struct FoldRun {
    char32_t first, last;
    std::int32_t step, delta;
};

constexpr FoldRun foldRuns[] = {
    {0x41, 0x5A, 1, 32},
    // Latin-1 and Latin Extended-A; U+0130 (I with dot) has no single lower-case form and stays itself.
    {0xC0, 0xD6, 1, 32},
    {0xD8, 0xDE, 1, 32},
    {0x100, 0x12E, 2, 1},
    {0x132, 0x136, 2, 1},
    {0x139, 0x147, 2, 1},
    {0x14A, 0x176, 2, 1},
    {0x178, 0x178, 1, -121},
    {0x179, 0x17D, 2, 1},
    {0x17F, 0x17F, 1, -268},
    // Latin Extended-B
    {0x181, 0x181, 1, 210},
    {0x182, 0x184, 2, 1},
    {0x186, 0x186, 1, 206},
    {0x187, 0x187, 1, 1},
    {0x189, 0x18A, 1, 205},
    {0x18B, 0x18B, 1, 1},
    {0x18E, 0x18E, 1, 79},
    {0x18F, 0x18F, 1, 202},
    {0x190, 0x190, 1, 203},
    {0x191, 0x191, 1, 1},
    {0x193, 0x193, 1, 205},
    {0x194, 0x194, 1, 207},
    {0x196, 0x196, 1, 211},
    {0x197, 0x197, 1, 209},
    {0x198, 0x198, 1, 1},
    {0x19C, 0x19C, 1, 211},
    {0x19D, 0x19D, 1, 213},
    {0x19F, 0x19F, 1, 214},
    {0x1A0, 0x1A4, 2, 1},
    {0x1A6, 0x1A6, 1, 218},
    {0x1A7, 0x1A7, 1, 1},
    {0x1A9, 0x1A9, 1, 218},
    {0x1AC, 0x1AC, 1, 1},
    {0x1AE, 0x1AE, 1, 218},
    {0x1AF, 0x1AF, 1, 1},
    {0x1B1, 0x1B2, 1, 217},
    {0x1B3, 0x1B5, 2, 1},
    {0x1B7, 0x1B7, 1, 219},
    {0x1B8, 0x1B8, 1, 1},
    {0x1BC, 0x1BC, 1, 1},
    {0x1C4, 0x1CA, 3, 2},
    {0x1C5, 0x1CB, 3, 1},
    {0x1CD, 0x1DB, 2, 1},
    {0x1DE, 0x1EE, 2, 1},
    {0x1F1, 0x1F1, 1, 2},
    {0x1F2, 0x1F4, 2, 1},
    {0x1F6, 0x1F6, 1, -97},
    {0x1F7, 0x1F7, 1, -56},
    {0x1F8, 0x21E, 2, 1},
    {0x220, 0x220, 1, -130},
    {0x222, 0x232, 2, 1},
    {0x23A, 0x23A, 1, 10795},
    {0x23B, 0x23B, 1, 1},
    {0x23D, 0x23D, 1, -163},
    {0x23E, 0x23E, 1, 10792},
    {0x241, 0x241, 1, 1},
    {0x243, 0x243, 1, -195},
    {0x244, 0x244, 1, 69},
    {0x245, 0x245, 1, 71},
    {0x246, 0x24E, 2, 1},
    // Latin Extended Additional
    {0x1E00, 0x1E94, 2, 1},
    {0x1E9E, 0x1E9E, 1, -7615},
    {0x1EA0, 0x1EFE, 2, 1},
    // Latin Extended-C and -D
    {0x2C60, 0x2C60, 1, 1},
    {0x2C62, 0x2C62, 1, -10743},
    {0x2C63, 0x2C63, 1, -3814},
    {0x2C64, 0x2C64, 1, -10727},
    {0x2C67, 0x2C6B, 2, 1},
    {0x2C6D, 0x2C6D, 1, -10780},
    {0x2C6E, 0x2C6E, 1, -10749},
    {0x2C6F, 0x2C6F, 1, -10783},
    {0x2C70, 0x2C70, 1, -10782},
    {0x2C72, 0x2C72, 1, 1},
    {0x2C75, 0x2C75, 1, 1},
    {0x2C7E, 0x2C7F, 1, -10815},
    {0xA722, 0xA72E, 2, 1},
    {0xA732, 0xA76E, 2, 1},
    {0xA779, 0xA77B, 2, 1},
    {0xA77D, 0xA77D, 1, -35332},
    {0xA77E, 0xA786, 2, 1},
    {0xA78B, 0xA78B, 1, 1},
    {0xA78D, 0xA78D, 1, -42280},
    {0xA790, 0xA792, 2, 1},
    {0xA796, 0xA7A8, 2, 1},
    {0xA7AA, 0xA7AA, 1, -42308},
    {0xA7AB, 0xA7AB, 1, -42319},
    {0xA7AC, 0xA7AC, 1, -42315},
    {0xA7AD, 0xA7AD, 1, -42305},
    {0xA7AE, 0xA7AE, 1, -42308},
    {0xA7B0, 0xA7B0, 1, -42258},
    {0xA7B1, 0xA7B1, 1, -42282},
    {0xA7B2, 0xA7B2, 1, -42261},
    {0xA7B3, 0xA7B3, 1, 928},
    {0xA7B4, 0xA7C2, 2, 1},
    {0xA7C4, 0xA7C4, 1, -48},
    {0xA7C5, 0xA7C5, 1, -42307},
    {0xA7C6, 0xA7C6, 1, -35384},
    {0xA7C7, 0xA7C9, 2, 1},
    {0xA7D0, 0xA7D0, 1, 1},
    {0xA7D6, 0xA7D8, 2, 1},
    {0xA7F5, 0xA7F5, 1, 1},
    // Greek; the final sigma is a form of the small one.
    {0x370, 0x372, 2, 1},
    {0x376, 0x376, 1, 1},
    {0x37F, 0x37F, 1, 116},
    {0x386, 0x386, 1, 38},
    {0x388, 0x38A, 1, 37},
    {0x38C, 0x38C, 1, 64},
    {0x38E, 0x38F, 1, 63},
    {0x391, 0x3A1, 1, 32},
    {0x3A3, 0x3AB, 1, 32},
    {0x3C2, 0x3C2, 1, 1},
    {0x3D8, 0x3EE, 2, 1},
    // Cyrillic and Armenian
    {0x400, 0x40F, 1, 80},
    {0x410, 0x42F, 1, 32},
    {0x460, 0x480, 2, 1},
    {0x48A, 0x4BE, 2, 1},
    {0x4C0, 0x4C0, 1, 15},
    {0x4C1, 0x4CD, 2, 1},
    {0x4D0, 0x52E, 2, 1},
    {0x531, 0x556, 1, 48},
    // Full-width Latin
    {0xFF21, 0xFF3A, 1, 32},
};

// Pages of 256 code points that hold capitals; every other page folds to itself.
constexpr std::array<std::uint8_t, 9> pages = {0x00, 0x01, 0x02, 0x03, 0x04, 0x05, 0x1E, 0x2C, 0xA7};
constexpr std::uint8_t fullWidthPage = 0xFF;
constexpr std::size_t pageCount = pages.size() + 1;

constexpr std::size_t SlotOf(std::size_t page) {
    for (std::size_t slot = 0; slot < pages.size(); ++slot) {
        if (pages[slot] == page) {
            return slot;
        }
    }
    return page == fullWidthPage ? pages.size() : pageCount;
}

struct Tables {
    std::array<std::uint8_t, 256> slots{};
    std::array<std::array<std::uint16_t, 256>, pageCount> folds{};
};

constexpr Tables MakeTables() {
    Tables made;
    for (std::size_t page = 0; page < 256; ++page) {
        const std::size_t slot = SlotOf(page);
        made.slots[page] = static_cast<std::uint8_t>(slot);
        for (std::size_t low = 0; low < 256 && slot < pageCount; ++low) {
            made.folds[slot][low] = static_cast<std::uint16_t>(page << 8 | low);
        }
    }
    for (const FoldRun& run : foldRuns) {
        for (char32_t c = run.first; c <= run.last; c += static_cast<char32_t>(run.step)) {
            made.folds[SlotOf(c >> 8)][c & 0xFF] =
                static_cast<std::uint16_t>(static_cast<std::int32_t>(c) + run.delta);
        }
    }
    return made;
}

constexpr Tables tables = MakeTables();

} // namespace

char32_t FoldCase(char32_t codePoint) {
    if (codePoint > 0xFFFF) {
        return codePoint;
    }
    const std::size_t slot = tables.slots[codePoint >> 8];
    return slot < pageCount ? tables.folds[slot][codePoint & 0xFF] : codePoint;
}

std::string FoldCase(std::string_view text) {
    std::string folded;
    folded.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        if (static_cast<unsigned char>(text[i]) < 0x80) {
            folded += LowerAscii(text[i++]);
            continue;
        }
        const DecodedCharacter character = DecodeUtf8(text.substr(i));
        folded += character.valid ? EncodeUtf8(FoldCase(character.codePoint)) : std::string(1, text[i]);
        i += character.length;
    }
    return folded;
}

} // namespace quavernet
