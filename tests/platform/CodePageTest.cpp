#include "platform/CodePage.h"

#include <gtest/gtest.h>

namespace quavernet::test {

TEST(CodePageTest, AsciiAndLatin1KeepTheirNumbers) {
    EXPECT_EQ(Windows1252Code("A"), 65);
    EXPECT_EQ(Windows1252Code("Ä"), 196);
    EXPECT_EQ(Windows1252Code("ö"), 246);
    EXPECT_EQ(Windows1252Code("ÿ"), 255);
}

TEST(CodePageTest, TheUpperControlsAreSignsOfTheirOwn) {
    EXPECT_EQ(Windows1252Code("€"), 0x80);
    EXPECT_EQ(Windows1252Code("Š"), 0x8A);
    EXPECT_EQ(Windows1252Code("Ÿ"), 0x9F);
    EXPECT_EQ(FromWindows1252("\x80\x9f"), "€Ÿ");
}

TEST(CodePageTest, ACharacterOutsideThePageHasNoCode) {
    EXPECT_EQ(Windows1252Code("Ω"), -1);
    EXPECT_EQ(Windows1252Code("日"), -1);
    EXPECT_EQ(Windows1252Code("\U0001F3B5"), -1);
    EXPECT_EQ(ToWindows1252("aΩb"), "a?b");
}

TEST(CodePageTest, EveryByteSurvivesTheRoundTrip) {
    for (int code = 0; code < 256; ++code) {
        const std::string byte(1, static_cast<char>(code));
        EXPECT_EQ(ToWindows1252(FromWindows1252(byte)), byte) << code;
    }
}

TEST(CodePageTest, AnInvalidByteIsOneCharacterWithItsOwnCode) {
    for (const char* text : {"\xFFz", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xE2\x82", "\xF5\x80\x80\x80"}) {
        EXPECT_EQ(CharacterLength(text), 1u);
        EXPECT_EQ(Windows1252Code(text), static_cast<unsigned char>(text[0]));
        EXPECT_FALSE(IsValidUtf8(text));
    }
    EXPECT_TRUE(IsValidUtf8("a Ä 日 \U0001F3B5"));
}

TEST(CodePageTest, CodePointsAreWrittenInUtf8) {
    EXPECT_EQ(EncodeUtf8(0x41), "A");
    EXPECT_EQ(EncodeUtf8(0xC4), "Ä");
    EXPECT_EQ(EncodeUtf8(0x65E5), "日");
    EXPECT_EQ(EncodeUtf8(0x1F3B5), "\U0001F3B5");
    EXPECT_EQ(CodePoint("日"), char32_t{0x65E5});
}

} // namespace quavernet::test
