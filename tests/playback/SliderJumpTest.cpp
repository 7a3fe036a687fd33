#include "playback/SliderJump.h"

#include <gtest/gtest.h>

#include <limits>

namespace quavernet::test {

namespace {

constexpr std::int32_t PositionMargin = 30;
constexpr std::int32_t VolumeMargin = 200;

} // namespace

TEST(SliderJumpTest, ASpotBeyondTheMarginIsLedTo) {
    EXPECT_EQ(SliderJump(150, 300, 200, 0, PositionMargin), 100);
    EXPECT_EQ(SliderJump(0, 300, 200, 100, PositionMargin), 0);
    EXPECT_EQ(SliderJump(150, 300, 2500, 2500, VolumeMargin), 1250);
}

TEST(SliderJumpTest, ASpotWithinTheMarginIsTheControlsOwnBusiness) {
    for (const double x : {70.0, 100.0, 129.0, 130.0}) {
        EXPECT_EQ(SliderJump(x, 200, 200, 100, PositionMargin), std::nullopt) << x;
    }
    EXPECT_EQ(SliderJump(131, 200, 200, 100, PositionMargin), 131);
    EXPECT_EQ(SliderJump(69, 200, 200, 100, PositionMargin), 69);
    EXPECT_EQ(SliderJump(230, 250, 2500, 2500, VolumeMargin), std::nullopt);
    EXPECT_EQ(SliderJump(229, 250, 2500, 2500, VolumeMargin), 2290);
}

TEST(SliderJumpTest, TheSpotIsComparedBeforeItIsRounded) {
    EXPECT_EQ(SliderJump(130.4, 200, 200, 100, PositionMargin), 130);
}

TEST(SliderJumpTest, HalvesGoToTheEvenNumber) {
    EXPECT_EQ(SliderJump(1, 2, 101, 0, PositionMargin), 50);
    EXPECT_EQ(SliderJump(1, 2, 103, 0, PositionMargin), 52);
}

TEST(SliderJumpTest, WithoutAFileThereIsNoSpot) {
    EXPECT_EQ(SliderJump(150, 300, 0, 0, PositionMargin), std::nullopt);
}

TEST(SliderJumpTest, AControlWithoutWidthHasNoSpot) {
    EXPECT_EQ(SliderJump(0, 0, 200, 100, PositionMargin), std::nullopt);
}

TEST(SliderJumpTest, TheLargestNumbersDoNotOverflow) {
    constexpr std::int32_t Most = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(SliderJump(300, 300, Most, 0, PositionMargin), Most);
    EXPECT_EQ(SliderJump(300, 300, Most, Most, PositionMargin), std::nullopt);
}

} // namespace quavernet::test
