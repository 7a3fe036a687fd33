#include "adapters/posix/AheadSleep.h"

#include <gtest/gtest.h>

namespace quavernet::test {
namespace {

using posix::AheadSleep;

class AheadSleepTest : public ::testing::Test {
protected:
    /// Asks for so many files as a plan's user does, and counts the looks at what the disk has given.
    int LooksAt(int files) {
        int looks = 0;
        for (int i = 0; i < files; ++i) {
            if (!sleep.SleepsOn()) {
                sleep.Wakes([&] { return ++looks, blocks; }, false);
            }
        }
        return looks;
    }
    /// Asks until it is awake, while the disk gives something for each file.
    void Wake() {
        while (sleep.IsAsleep()) {
            if (!sleep.SleepsOn()) {
                sleep.Wakes([&] { return ++blocks; }, false);
            }
        }
    }
    /// How many things from memory it takes until it sleeps.
    int ThingsUntilSleep() {
        int things = 1;
        while (!sleep.FallsAsleep(0)) {
            ++things;
        }
        return things;
    }

    AheadSleep sleep{true};
    std::uint64_t blocks = 100;
};

TEST_F(AheadSleepTest, ItSleepsAsLongAsTheDiskGivesNothing) {
    LooksAt(1000);
    EXPECT_TRUE(sleep.IsAsleep());
    ++blocks;
    LooksAt(8);
    EXPECT_FALSE(sleep.IsAsleep());
}

TEST_F(AheadSleepTest, WhatMayNotSleepIsAwakeForEver) {
    AheadSleep awake(false);
    EXPECT_FALSE(awake.SleepsOn());
    for (int i = 0; i < 1000; ++i) {
        EXPECT_FALSE(awake.FallsAsleep(0));
    }
    EXPECT_FALSE(awake.IsAsleep());
}

TEST_F(AheadSleepTest, OnlyThingsFromMemoryInARowLetItSleep) {
    Wake();
    for (int i = 0; i < 63; ++i) {
        EXPECT_FALSE(sleep.FallsAsleep(0));
    }
    EXPECT_FALSE(sleep.FallsAsleep(8));
    EXPECT_EQ(ThingsUntilSleep(), 64);
    EXPECT_TRUE(sleep.IsAsleep());
}

TEST_F(AheadSleepTest, AFolderCountsAsSeveralFiles) {
    LooksAt(1);
    ++blocks;
    EXPECT_FALSE(sleep.Wakes([&] { return blocks; }, false));
    EXPECT_TRUE(sleep.Wakes([&] { return blocks; }, true));
}

TEST_F(AheadSleepTest, AfterANeedlessWakingItLooksLessOften) {
    EXPECT_EQ(LooksAt(8 * 16), 16);
    Wake();
    ThingsUntilSleep();
    LooksAt(16);
    EXPECT_EQ(LooksAt(8 * 16), 8);
    Wake();
    sleep.FallsAsleep(1); // A reader has met the disk.
    ThingsUntilSleep();
    LooksAt(16);
    EXPECT_EQ(LooksAt(8 * 16), 16);
}

TEST_F(AheadSleepTest, ASleepBeginsWithALookHoweverRareTheLooksOfTheLastOneWere) {
    for (int needless = 0; needless < 10; ++needless) {
        Wake();
        ThingsUntilSleep();
    }
    Wake();
    sleep.FallsAsleep(1); // The disk is met.
    ThingsUntilSleep();
    EXPECT_EQ(LooksAt(1), 1);
    ++blocks;
    LooksAt(8);
    EXPECT_FALSE(sleep.IsAsleep());
}

} // namespace
} // namespace quavernet::test
