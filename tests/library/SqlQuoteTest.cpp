#include "library/SqlQuote.h"

#include "platform/RuntimeError.h"

#include <random>

#include <gtest/gtest.h>

namespace quavernet {
namespace {

TEST(SqlQuoteTest, EachApostropheIsDoubled) {
    EXPECT_EQ(SqlQuote(""), "");
    EXPECT_EQ(SqlQuote("Abba"), "Abba");
    EXPECT_EQ(SqlQuote("Don't"), "Don''t");
    EXPECT_EQ(SqlQuote("'''"), "''''''");
    EXPECT_EQ(SqlQuote("\"´`%_"), "\"´`%_");
}

TEST(SqlQuoteTest, ATextThatGoesUnquotedHoldsNoApostrophe) {
    EXPECT_EQ(SqlPlain("Jazz & Blues"), "Jazz & Blues");
    EXPECT_EQ(SqlPlain(""), "");
    EXPECT_THROW(SqlPlain("it's"), RuntimeError);
    EXPECT_THROW(SqlPlain("it''s"), RuntimeError) << "two in a row would be one";
}

TEST(SqlQuoteTest, EachDoubledApostropheBecomesOneFromLeftToRight) {
    EXPECT_EQ(SqlUnquote(""), "");
    EXPECT_EQ(SqlUnquote("Don''t"), "Don't");
    EXPECT_EQ(SqlUnquote("Don't"), "Don't");
    EXPECT_EQ(SqlUnquote("'''"), "''");
    EXPECT_EQ(SqlUnquote("''''"), "''");
}

TEST(SqlQuoteTest, TheRoundTripGivesTheTextBack) {
    std::mt19937 random(11);
    for (int round = 0; round < 10000; ++round) {
        std::string text;
        for (auto i = random() % 12; i > 0; --i) {
            text += "'a\xC3"[random() % 3];
        }
        ASSERT_EQ(SqlUnquote(SqlQuote(text)), text);
    }
}

TEST(SqlQuoteTest, ATextThatWasNeverQuotedLosesOneOfTwoApostrophes) {
    EXPECT_EQ(SqlUnquote("Rock ''n'' Roll"), "Rock 'n' Roll");
}

} // namespace
} // namespace quavernet
