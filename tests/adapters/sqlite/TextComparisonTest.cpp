#include "adapters/sqlite/Collation.h"
#include "adapters/sqlite/LetterTables.h"
#include "adapters/sqlite/LikeOperator.h"

#include "platform/CodePage.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace quavernet::sqlite {
namespace {

bool Equal(std::string_view a, std::string_view b) {
    return CompareTexts(a, b) == 0;
}

TEST(CollationTest, CaseIsIgnoredInAllOfLatinScript) {
    EXPECT_TRUE(Equal("The BEATLES", "the beatles"));
    EXPECT_TRUE(Equal("ÄÖÜ", "äöü"));
    EXPECT_TRUE(Equal("ÉÈÇÑÅØÆÞÐ", "éèçñåøæþð"));
    EXPECT_TRUE(Equal("ŁŻŚŹĆĄĘŃ", "łżśźćąęń"));
    EXPECT_TRUE(Equal("ĞŞŸŽŐŰȘȚ", "ğşÿžőűșț"));
    EXPECT_TRUE(Equal("ẞ", "ß"));
    EXPECT_TRUE(Equal("ẤỆỮ", "ấệữ"));
    EXPECT_TRUE(Equal("Ǆ", "ǅ"));
    EXPECT_TRUE(Equal("Ａｂ", "ａＢ"));
}

TEST(CollationTest, CaseIsIgnoredInGreekAndCyrillicToo) {
    EXPECT_TRUE(Equal("ΑΒΓΏ", "αβγώ"));
    EXPECT_TRUE(Equal("КИНО Ё", "кино ё"));
}

TEST(CollationTest, AccentsAndSharpSCount) {
    EXPECT_FALSE(Equal("a", "ä"));
    EXPECT_FALSE(Equal("o", "ö"));
    EXPECT_FALSE(Equal("e", "é"));
    EXPECT_FALSE(Equal("ß", "ss"));
    EXPECT_FALSE(Equal("ß", "s"));
    EXPECT_FALSE(Equal("ae", "æ"));
    EXPECT_FALSE(Equal("i", "ı"));
}

TEST(CollationTest, PunctuationComesBeforeDigitsAndDigitsBeforeLetters) {
    const std::vector<std::string> ordered = {"",     " ",     "!x",       "...",   "[x]", "_x",
                                              "~",    "¡Hola", "“Heroes”", "0",     "10",  "9",
                                              "Abba", "Zappa", "Ωmega",    "Ленин", "日本"};
    for (std::size_t i = 0; i + 1 < ordered.size(); ++i) {
        EXPECT_LT(CompareTexts(ordered[i], ordered[i + 1]), 0) << ordered[i] << " / " << ordered[i + 1];
        EXPECT_GT(CompareTexts(ordered[i + 1], ordered[i]), 0) << ordered[i] << " / " << ordered[i + 1];
    }
}

TEST(CollationTest, AccentedLettersComeBesideTheirBaseLetters) {
    std::vector<std::string> names = {"Zorn",   "Äbte", "Abba",   "Ärzte",   "Azur",   "Arzt",  "Oz",
                                      "Ölberg", "Opel", "Straße", "Strasse", "Strase", "Ärzte!"};
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return CompareTexts(a, b) < 0; });
    EXPECT_EQ(names, (std::vector<std::string>{"Abba", "Äbte", "Arzt", "Ärzte", "Ärzte!", "Azur", "Ölberg",
                                               "Opel", "Oz", "Strase", "Straße", "Strasse", "Zorn"}));
}

TEST(CollationTest, AccentsDecideOnlyBetweenTextsWithTheSameBaseLetters) {
    EXPECT_LT(CompareTexts("Arzte", "Ärzte"), 0);
    EXPECT_LT(CompareTexts("Ärzte A", "Arzte B"), 0);
}

TEST(CollationTest, BytesThatAreNoUtf8CompareByThemselves) {
    EXPECT_FALSE(Equal("\xE4", "ä"));
    EXPECT_FALSE(Equal("\xE4", "\xC4"));
    EXPECT_TRUE(Equal("a\xFF", "A\xFF"));
    EXPECT_FALSE(Equal("\xC0\x80", std::string_view("\0", 1)));
    EXPECT_FALSE(Equal("\xED\xA0\x80", "\xED\xA0\x81"));
    EXPECT_FALSE(Equal("\xF0\x9F\x8E", "\xF0\x9F\x8E\xB5"));
}

TEST(LetterTablesTest, EveryLowerCaseFormFoldsToItself) {
    for (char32_t c = 0; c < InvalidByte; ++c) {
        ASSERT_EQ(FoldCase(FoldCase(c)), FoldCase(c)) << std::hex << static_cast<unsigned>(c);
        ASSERT_EQ(PrimaryWeight(FoldCase(c)), PrimaryWeight(c)) << std::hex << static_cast<unsigned>(c);
    }
}

TEST(LetterTablesTest, DecodesWhatTheEncoderWritesAndNothingElse) {
    for (char32_t c = 1; c < InvalidByte; c += 7) {
        if (c >= 0xD800 && c <= 0xDFFF) {
            continue;
        }
        const std::string text = EncodeUtf8(c);
        std::size_t position = 0;
        ASSERT_EQ(NextCodePoint(text, position), c);
        ASSERT_EQ(position, text.size());
        position = 0;
        const std::string cut = text.substr(0, text.size() - 1);
        if (!cut.empty()) {
            ASSERT_EQ(NextCodePoint(cut, position), InvalidByte + static_cast<unsigned char>(cut[0]));
            ASSERT_EQ(position, 1u);
        }
    }
}

// Texts of few different pieces, so that equal ones and common beginnings are frequent.
std::string RandomText(std::mt19937& random) {
    static const std::vector<std::string> pieces = {"a",    "A",    "ä",  "Ä", "b", "s", "ß",
                                                    "ss",   "1",    "!",  "é", "É", "ж", "Ж",
                                                    "\xE4", "\xC3", "日", "🎵", "z", " ", "\xF0\x9F"};
    std::string text;
    for (auto i = random() % 5; i > 0; --i) {
        text += random() % 8 == 0 ? EncodeUtf8(static_cast<char32_t>(1 + random() % 0xD7FE))
                                  : pieces[random() % pieces.size()];
    }
    return text;
}

int Sign(int value) {
    return (value > 0) - (value < 0);
}

TEST(CollationTest, TheOrderIsTotalAndTransitiveOverRandomTexts) {
    std::mt19937 random(20261120);
    for (int round = 0; round < 200000; ++round) {
        const std::string a = RandomText(random), b = RandomText(random), c = RandomText(random);
        ASSERT_EQ(CompareTexts(a, a), 0);
        ASSERT_EQ(Sign(CompareTexts(a, b)), -Sign(CompareTexts(b, a))) << a << " / " << b;
        if (CompareTexts(a, b) <= 0 && CompareTexts(b, c) <= 0) {
            ASSERT_LE(CompareTexts(a, c), 0) << a << " / " << b << " / " << c;
        }
        if (Equal(a, b)) {
            ASSERT_EQ(Sign(CompareTexts(a, c)), Sign(CompareTexts(b, c))) << a << " / " << b << " / " << c;
        }
    }
}

TEST(CollationTest, EqualMeansTheSameCodePointsButForCase) {
    std::mt19937 random(5);
    const auto folded = [](const std::string& text) {
        std::u32string result;
        for (std::size_t i = 0; i < text.size();) {
            result += FoldCase(NextCodePoint(text, i));
        }
        return result;
    };
    int equal = 0;
    for (int round = 0; round < 100000; ++round) {
        const std::string a = RandomText(random), b = RandomText(random);
        ASSERT_EQ(Equal(a, b), folded(a) == folded(b)) << a << " / " << b;
        equal += a != b && Equal(a, b);
    }
    EXPECT_GT(equal, 30);
}

bool Like(std::string_view text, std::string_view pattern) {
    return LikePattern(pattern).Matches(text);
}

TEST(LikeTest, PercentTakesAnyRunAndUnderscoreOneCharacter) {
    EXPECT_TRUE(Like("", ""));
    EXPECT_TRUE(Like("", "%"));
    EXPECT_FALSE(Like("", "_"));
    EXPECT_TRUE(Like("Hotel California", "%cal%"));
    EXPECT_TRUE(Like("Hotel California", "%"));
    EXPECT_TRUE(Like("Hotel California", "hotel%"));
    EXPECT_TRUE(Like("Hotel California", "%CALIFORNIA"));
    EXPECT_FALSE(Like("Hotel California", "%calx%"));
    EXPECT_FALSE(Like("Hotel California", "cal"));
    EXPECT_TRUE(Like("Höhe", "h_he"));
    EXPECT_FALSE(Like("Höhe", "h__he"));
    EXPECT_TRUE(Like("abcabd", "%abd"));
    EXPECT_TRUE(Like("aXbXc", "a%x%c"));
    EXPECT_TRUE(Like("aab", "%ab"));
    EXPECT_TRUE(Like("aaab", "a%_b"));
    EXPECT_FALSE(Like("ab", "a%_b"));
    EXPECT_TRUE(Like("abc", "abc%%"));
}

TEST(LikeTest, CaseGoesByTheCollationsRule) {
    EXPECT_TRUE(Like("DIE ÄRZTE", "%ärzte%"));
    EXPECT_FALSE(Like("Die Arzte", "%ärzte%"));
    EXPECT_FALSE(Like("Strasse", "%ß%"));
}

TEST(LikeTest, NoOtherCharacterIsSpecial) {
    for (const char* text : {"*", "?", "[a-z]", "#", "\\", "^", "(", ".*"}) {
        EXPECT_TRUE(Like(std::string("x") + text + "y", std::string("%") + text + "%")) << text;
        EXPECT_FALSE(Like("xabcy", std::string("%") + text + "%")) << text;
    }
    EXPECT_TRUE(Like("50%", "50%"));
}

TEST(LikeTest, InvalidBytesAreCharacters) {
    EXPECT_TRUE(Like("a\xFF"
                     "b",
                     "a_b"));
    EXPECT_TRUE(Like("a\xFF"
                     "b",
                     "%\xFF%"));
    EXPECT_FALSE(Like("a\xFE"
                      "b",
                      "%\xFF%"));
}

TEST(LikeTest, AnEscapedWildcardStandsForItself) {
    EXPECT_TRUE(LikePattern("100!%", U'!').Matches("100%"));
    EXPECT_FALSE(LikePattern("100!%", U'!').Matches("100x"));
}

// The definition, character by character.
bool SlowLike(std::string_view text, std::string_view pattern) {
    if (pattern.empty()) {
        return text.empty();
    }
    if (pattern[0] == '%') {
        return SlowLike(text, pattern.substr(1)) || (!text.empty() && SlowLike(text.substr(1), pattern));
    }
    return !text.empty() && (pattern[0] == '_' || pattern[0] == text[0]) &&
           SlowLike(text.substr(1), pattern.substr(1));
}

TEST(LikeTest, AgreesWithItsDefinitionOnRandomPatterns) {
    std::mt19937 random(7);
    int matches = 0;
    for (int round = 0; round < 100000; ++round) {
        std::string text, pattern;
        for (auto i = random() % 9; i > 0; --i) {
            text += "ab"[random() % 2];
        }
        for (auto i = random() % 7; i > 0; --i) {
            pattern += "ab%_%"[random() % 5];
        }
        ASSERT_EQ(Like(text, pattern), SlowLike(text, pattern)) << text << " like " << pattern;
        matches += SlowLike(text, pattern);
    }
    EXPECT_GT(matches, 1000);
}

// Character by character from the beginning, as the rule is told.
int SlowCompare(std::string_view left, std::string_view right) {
    int accents = 0;
    std::size_t i = 0, j = 0;
    while (i < left.size() && j < right.size()) {
        const char32_t a = NextCodePoint(left, i), b = NextCodePoint(right, j);
        if (PrimaryWeight(a) != PrimaryWeight(b)) {
            return PrimaryWeight(a) < PrimaryWeight(b) ? -1 : 1;
        }
        if (accents == 0 && FoldCase(a) != FoldCase(b)) {
            accents = FoldCase(a) < FoldCase(b) ? -1 : 1;
        }
    }
    return i < left.size() ? 1 : j < right.size() ? -1 : accents;
}

TEST(CollationTest, ACommonBeginningIsPassedOverWithoutBreakingACharacter) {
    EXPECT_EQ(CompareTexts("/Musik/Die \xC3\x84rzte/1.mp3", "/Musik/Die \xC3\xA4rzte/1.mp3"), 0);
    EXPECT_EQ(CompareTexts("12345678\xC3", "12345678\xC3\xA4"), 1); // A lone byte sorts after all letters.
    const std::vector<std::string> pieces{"a",
                                          "A",
                                          "b",
                                          "/",
                                          "Folder name ",
                                          "\xC3\x84",
                                          "\xC3\xA4",
                                          "\xC3\xB6",
                                          "\xE2\x82\xAC",
                                          "\xC3",
                                          "\xE2\x82",
                                          "\xA4",
                                          "\xF0\x9F\x8E\xB5"};
    std::mt19937 random(1984);
    const auto text = [&](unsigned count) {
        std::string result;
        for (; count > 0; --count) {
            result += pieces[random() % pieces.size()];
        }
        return result;
    };
    int equal = 0;
    for (int round = 0; round < 50000; ++round) {
        const std::string beginning = text(random() % 8);
        const std::string left = beginning + text(random() % 4), right = beginning + text(random() % 4);
        ASSERT_EQ(CompareTexts(left, right), SlowCompare(left, right)) << left << " and " << right;
        equal += left != right && CompareTexts(left, right) == 0 ? 1 : 0;
    }
    EXPECT_GT(equal, 50);
}

} // namespace
} // namespace quavernet::sqlite
