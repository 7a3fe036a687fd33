#include "playback/RandomBetween.h"

#include "support/LogicTest.h"

#include <array>
#include <cmath>

namespace quavernet::test {
namespace {

class RandomBetweenTest : public LogicTest {};

TEST_F(RandomBetweenTest, TheEndsGetHalfTheWeightOfANumberBetweenThem) {
    std::array<int, 5> counts{};
    constexpr int Steps = 4000;
    for (int i = 0; i < Steps; ++i) {
        const float drawn = ScaledBetween(static_cast<double>(i) / Steps, 1, 5, true);
        ASSERT_EQ(drawn, std::floor(drawn));
        ++counts.at(static_cast<std::size_t>(drawn) - 1);
    }
    EXPECT_EQ(counts, (std::array<int, 5>{500, 1000, 1000, 1000, 500}));
}

TEST_F(RandomBetweenTest, UnroundedItIsTheScaledNumberInSinglePrecision) {
    EXPECT_EQ(ScaledBetween(0, -3, 7, false), -3.0F);
    EXPECT_EQ(ScaledBetween(0.1, 0, 1, false), 0.1F);
    EXPECT_EQ(ScaledBetween(0.25, 1, 2, false), 1.25F);
}

TEST_F(RandomBetweenTest, BeyondSixteenMillionNumbersAreMissed) {
    EXPECT_EQ(ScaledBetween(0, 16'777'216, 16'777'216, true), 16'777'216.0F);
    EXPECT_EQ(ScaledBetween(0, 16'777'217, 16'777'217, true), 16'777'216.0F);
    EXPECT_EQ(ScaledBetween(0, 16'777'219, 16'777'219, true), 16'777'220.0F);
}

TEST_F(RandomBetweenTest, TheWholeRangeOf32BitsCanBeAskedFor) {
    EXPECT_EQ(ScaledBetween(0, -2'147'483'647 - 1, 2'147'483'647, true), -2'147'483'648.0F);
    EXPECT_EQ(ScaledBetween(0.5, -2'147'483'647 - 1, 2'147'483'647, true), 0.0F);
}

TEST_F(RandomBetweenTest, ARangeOfOneNumberGivesIt) {
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(RandomBetween(7, 7, true, true), 7.0F);
    }
}

TEST_F(RandomBetweenTest, TheGeneratorIsSeededBeforeTheDrawIfThatIsAskedFor) {
    std::uint64_t seed = 0;
    mainModule.RandomNumbers = RandomNumbers([&] { return ++seed; });
    EXPECT_EQ(seed, 1U);
    (void)RandomBetween(1, 10, true, false);
    EXPECT_EQ(seed, 1U);
    const float drawn = RandomBetween(1, 1'000'000, true, true);
    EXPECT_EQ(seed, 2U);
    EXPECT_EQ(drawn, ScaledBetween(RandomNumbers([] { return 2; }).Rnd(), 1, 1'000'000, true));
}

TEST_F(RandomBetweenTest, DrawsThatAreSeededAfreshAreEvenlySpreadAndFollowNoPattern) {
    constexpr int Draws = 20'000;
    constexpr int Numbers = 10;
    std::array<int, Numbers> counts{};
    int ascents = 0;
    float before = 0;
    for (int i = 0; i < Draws; ++i) {
        const float drawn = RandomBetween(0, 1'000'000, false, true);
        ++counts.at(static_cast<std::size_t>(drawn * Numbers / 1'000'001));
        ascents += drawn > before ? 1 : 0;
        before = drawn;
    }
    // Eight standard deviations: chance alone never goes as far.
    for (const int count : counts) {
        EXPECT_NEAR(count, Draws / Numbers, 8 * std::sqrt(Draws * 0.1 * 0.9));
    }
    EXPECT_NEAR(ascents, Draws / 2, 8 * std::sqrt(Draws / 12.0));
}

} // namespace
} // namespace quavernet::test
