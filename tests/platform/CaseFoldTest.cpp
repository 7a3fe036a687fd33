#include "platform/CaseFold.h"

#include <gtest/gtest.h>

namespace quavernet::test {

TEST(CaseFoldTest, LettersOfManyScriptsLoseTheirCaseAndKeepTheirAccents) {
    EXPECT_EQ(FoldCase("MÄRCHEN, Ça ira"), "märchen, ça ira");
    EXPECT_EQ(FoldCase("ΣΙΣΥΦΟΣ"), "σισυφοσ");
    EXPECT_EQ(FoldCase("ЖУК Ａ"), "жук ａ");
    EXPECT_EQ(FoldCase("@[`{ 12 日本 \U0001F3B5"), "@[`{ 12 日本 \U0001F3B5");
    EXPECT_EQ(FoldCase(""), "");
}

TEST(CaseFoldTest, BytesThatAreNotUtf8Stay) {
    EXPECT_EQ(FoldCase("A\xC4\xFFZ\xE2\x82"), "a\xC4\xFFz\xE2\x82");
}

} // namespace quavernet::test
