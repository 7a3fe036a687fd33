#include "platform/Ascii.h"

#include <gtest/gtest.h>

namespace quavernet::test {

TEST(AsciiTest, OnlyTheLettersOfAsciiHaveACase) {
    EXPECT_EQ(UpperAscii("azAZ@[`{ä1"), "AZAZ@[`{ä1");
    EXPECT_EQ(LowerAscii("azAZ@[`{Ä1"), "azaz@[`{Ä1");
}

TEST(AsciiTest, TextsAreEqualButForTheCaseOfTheirLetters) {
    EXPECT_TRUE(EqualsIgnoringCase("Title", "TITLE"));
    EXPECT_TRUE(EqualsIgnoringCase("", ""));
    EXPECT_FALSE(EqualsIgnoringCase("Title", "Titles"));
    EXPECT_FALSE(EqualsIgnoringCase("ä", "Ä"));
    EXPECT_FALSE(EqualsIgnoringCase("@", "`")) << "32 apart, but no letters";
}

} // namespace quavernet::test
