#include "app/TextHelpers.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

namespace quavernet::test {

using namespace std::string_view_literals;

TEST(TextHelpersTest, TrimmingTakesBlanksAlone) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("\t a\u00a0"), "\t a\u00a0");
    EXPECT_EQ(TrimLeft("  a "), "a ");
    EXPECT_EQ(TrimRight(" a  "), " a");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim(""), "");
}

TEST(TextHelpersTest, ACharacterIsACodePoint) {
    EXPECT_EQ(CharacterCount("Ä日a"), 3u);
    EXPECT_EQ(LeftCharacters("Ä日a", 2), "Ä日");
    EXPECT_EQ(LeftCharacters("Ä", 5), "Ä");
    EXPECT_EQ(RightCharacters("Ä日a", 2), "日a");
    EXPECT_EQ(RightCharacters("Ä", 5), "Ä");
}

TEST(TextHelpersTest, AnInvalidByteIsACharacterOfItsOwn) {
    EXPECT_EQ(CharacterCount("\xFF\xC3"), 2u);
    EXPECT_EQ(LeftCharacters("\xFFz", 1), "\xFF");
}

TEST(TextHelpersTest, DroppingMoreCharactersThanThereAreFails) {
    EXPECT_EQ(DropRightCharacters("12,34", 3), "12");
    EXPECT_EQ(DropRightCharacters("abc", 3), "");
    try {
        DropRightCharacters("ab", 3);
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::InvalidProcedureCall);
    }
}

TEST(TextHelpersTest, CaseIsChangedInAsciiOnly) {
    EXPECT_EQ(UpperAscii("aäZ"), "AäZ");
    EXPECT_EQ(LowerAscii("AÄz"), "aÄz");
    EXPECT_TRUE(ContainsIgnoringCase("Song.MP3", ".mp3"));
    EXPECT_FALSE(ContainsIgnoringCase("Song.MP", ".mp3"));
    EXPECT_TRUE(ContainsIgnoringCase("", ""));
    EXPECT_FALSE(ContainsIgnoringCase("", "a"));
}

TEST(TextHelpersTest, NulsAreCutAtOrTakenOut) {
    EXPECT_EQ(StripAtNull("ab\0cd"sv), "ab");
    EXPECT_EQ(StripAtNull("abcd"), "abcd");
    EXPECT_EQ(StripNulls(" a\0b \0 "sv), "ab");
    EXPECT_EQ(StripNulls("\0\0"sv), "");
}

TEST(TextHelpersTest, AFileNameIsWhatFollowsTheLastSlash) {
    EXPECT_EQ(FileNameFromPath("/music/a.mp3"), "a.mp3");
    EXPECT_EQ(FileNameFromPath("a.mp3"), "a.mp3");
    EXPECT_EQ(FileNameFromPath("/music/"), "");
}

TEST(TextHelpersTest, ReplacingGoesFromLeftToRightOnce) {
    EXPECT_EQ(ReplaceAll("a'b''c", "'", "''"), "a''b''''c");
    EXPECT_EQ(ReplaceAll("'''", "''", "'"), "''");
    EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(ReplaceAll("abc", "b", ""), "ac");
}

TEST(TextHelpersTest, TheFirstCharactersCodeFailsOnAnEmptyText) {
    EXPECT_EQ(FirstCharacterCode("Abba"), 65);
    EXPECT_EQ(FirstCharacterCode("Ärzte"), 196);
    EXPECT_EQ(FirstCharacterCode("日"), -1);
    EXPECT_EQ(FirstCharacterCode("\xFF"), 255);
    try {
        FirstCharacterCode("");
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::InvalidProcedureCall);
    }
}

} // namespace quavernet::test
