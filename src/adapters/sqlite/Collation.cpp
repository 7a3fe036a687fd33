#include "adapters/sqlite/Collation.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include <sqlite3.h>

#include "adapters/sqlite/LetterTables.h"
#include "adapters/sqlite/LikeOperator.h"
#include "adapters/sqlite/SqliteError.h"

namespace quavernet::sqlite {

namespace {

// Ranks of the ASCII characters in the order of their primary weights. Two of them share a rank only if they
// are one letter in both cases, so that no second level is needed among them.
const std::array<unsigned char, 128>& AsciiRanks() {
    static const std::array<unsigned char, 128> ranks = [] {
        std::array<unsigned char, 128> result{};
        for (char32_t c = 0; c < 128; ++c) {
            unsigned char rank = 0;
            for (char32_t other = 0; other < 128; ++other) {
                const bool counted = other == FoldCase(other); // Capitals share their letter's rank.
                rank =
                    static_cast<unsigned char>(rank + (counted && PrimaryWeight(other) < PrimaryWeight(c)));
            }
            result[c] = rank;
        }
        return result;
    }();
    return ranks;
}

// Where the comparison may begin: most paths that a lookup meets begin with the same folders. Bytes that are
// the same in both texts make the same characters, but for the last one if it goes on after them. An ASCII
// character never does.
std::size_t EqualStart(std::string_view left, std::string_view right, std::size_t common) {
    std::size_t count = 0;
    std::uint64_t a = 0, b = 0;
    while (count + sizeof a <= common) {
        std::memcpy(&a, left.data() + count, sizeof a);
        std::memcpy(&b, right.data() + count, sizeof b);
        if (a != b) {
            break;
        }
        count += sizeof a;
    }
    while (count < common && left[count] == right[count]) {
        ++count;
    }
    while (count > 0 && static_cast<unsigned char>(left[count - 1]) >= 0x80) {
        --count;
    }
    return count;
}

int CompareFrom(std::string_view left, std::string_view right, std::size_t start) {
    std::size_t i = start, j = start;
    int accents = 0;
    while (i < left.size() && j < right.size()) {
        if (left[i] == right[j] && static_cast<unsigned char>(left[i]) < 0x80) {
            ++i;
            ++j;
            continue;
        }
        const char32_t a = NextCodePoint(left, i);
        const char32_t b = NextCodePoint(right, j);
        if (a == b) {
            continue;
        }
        const std::uint32_t weightA = PrimaryWeight(a), weightB = PrimaryWeight(b);
        if (weightA != weightB) {
            return weightA < weightB ? -1 : 1;
        }
        if (accents == 0) {
            const char32_t foldedA = FoldCase(a), foldedB = FoldCase(b);
            accents = foldedA == foldedB ? 0 : foldedA < foldedB ? -1 : 1;
        }
    }
    if (i < left.size() || j < right.size()) {
        return i < left.size() ? 1 : -1;
    }
    return accents;
}

int Collate(void*, int leftSize, const void* left, int rightSize, const void* right) {
    return CompareTexts({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
                        {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

} // namespace

int CompareTexts(std::string_view left, std::string_view right) {
    static const std::array<unsigned char, 128>& ranks = AsciiRanks();
    const std::size_t common = left.size() < right.size() ? left.size() : right.size();
    for (std::size_t i = EqualStart(left, right, common); i < common; ++i) {
        const auto a = static_cast<unsigned char>(left[i]);
        const auto b = static_cast<unsigned char>(right[i]);
        if ((a | b) >= 0x80) {
            return CompareFrom(left, right, i);
        }
        if (ranks[a] != ranks[b]) {
            return ranks[a] < ranks[b] ? -1 : 1;
        }
    }
    return left.size() == right.size() ? 0 : left.size() < right.size() ? -1 : 1;
}

void RegisterTextComparison(sqlite3* database) {
    Check(database,
          sqlite3_create_collation_v2(database, CollationName, SQLITE_UTF8, nullptr, Collate, nullptr));
    RegisterLikeOperator(database);
}

} // namespace quavernet::sqlite
