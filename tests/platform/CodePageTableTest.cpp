#include "platform/CodePage.h"

#include <gtest/gtest.h>

#include <random>

namespace quavernet::test {

TEST(CodePageTableTest, EveryByteOfThePageSurvivesTheRoundTrip) {
    for (int i = 0; i < 256; ++i) {
        const std::string byte(1, static_cast<char>(i));
        const std::string text = FromWindows1252(byte);
        EXPECT_TRUE(IsValidUtf8(text)) << i;
        EXPECT_EQ(CharacterLength(text), text.size()) << i;
        EXPECT_EQ(ToWindows1252(text), byte) << i;
        EXPECT_EQ(Windows1252Code(text), i);
    }
}

TEST(CodePageTableTest, KnowsTheSignsBetween80And9F) {
    EXPECT_EQ(FromWindows1252("\x80\x8A\x96\x99\x9F"), "€Š–™Ÿ");
    EXPECT_EQ(FromWindows1252("\x81"), "\xC2\x81") << "unassigned: the control character of the same number";
    EXPECT_EQ(FromWindows1252("\xE4\xF6\xFC\xDF"), "äöüß");
}

TEST(CodePageTableTest, WhatThePageDoesNotHoldBecomesAQuestionMark) {
    EXPECT_EQ(ToWindows1252("日本"), "??");
    EXPECT_EQ(ToWindows1252("a😀b"), "a?b");
    EXPECT_EQ(Windows1252Code("Ā"), -1);
    EXPECT_EQ(ToWindows1252("\xE4"), "\xE4") << "an invalid byte is its own code";
}

TEST(CodePageTableTest, DecodesCharactersOfOneToFourBytes) {
    EXPECT_EQ(CodePoint("a"), U'a');
    EXPECT_EQ(CodePoint("ä"), U'ä');
    EXPECT_EQ(CodePoint("€"), U'€');
    EXPECT_EQ(CodePoint("😀"), U'😀');
    EXPECT_EQ(CharacterLength("😀x"), 4u);
    for (const char32_t c :
         {U'\0', U'\x7F', U'\x80', U'\x7FF', U'\x800', U'\xFFFF', U'\x10000', U'\x10FFFF'}) {
        EXPECT_EQ(CodePoint(EncodeUtf8(c)), c);
        EXPECT_TRUE(IsValidUtf8(EncodeUtf8(c)));
    }
}

TEST(CodePageTableTest, InvalidSequencesAreSingleBytes) {
    for (const char* text :
         {"\x80", "\xBF", "\xC0\xAF", "\xC1\xBF", "\xE0\x80\x80", "\xED\xA0\x80", "\xF0\x80\x80\x80",
          "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFE", "\xFF", "\xE4", "\xE4\xB8", "\xC3"}) {
        EXPECT_FALSE(IsValidUtf8(text)) << text;
        EXPECT_EQ(CharacterLength(text), 1u) << text;
        EXPECT_EQ(CodePoint(text), static_cast<unsigned char>(text[0])) << text;
    }
    EXPECT_TRUE(IsValidUtf8(""));
}

TEST(CodePageTableTest, WalksOverAnyBytesToTheirEnd) {
    std::mt19937 random(3);
    for (int i = 0; i < 2000; ++i) {
        std::string text(random() % 20, '\0');
        for (char& c : text) {
            c = static_cast<char>(random());
        }
        std::size_t at = 0;
        while (at < text.size()) {
            at += CharacterLength(std::string_view(text).substr(at));
        }
        EXPECT_EQ(at, text.size());
    }
}

} // namespace quavernet::test
