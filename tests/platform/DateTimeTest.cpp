#include "platform/DateTime.h"

#include <gtest/gtest.h>

namespace quavernet::test {

namespace {
constexpr DateTime Day(int year, int month, int day) {
    return {year, month, day, 0, 0, 0};
}
} // namespace

TEST(DateTimeTest, OnlyDaysOfTheCalendarAndTimesOfTheClockAreValid) {
    EXPECT_TRUE(IsValidDate({2024, 2, 29}));
    EXPECT_TRUE(IsValidDate({100, 1, 1}));
    EXPECT_TRUE(IsValidDate({9999, 12, 31, 23, 59, 59}));
    for (const DateTime& date :
         {DateTime{}, DateTime{99, 1, 1}, DateTime{10000, 1, 1}, DateTime{2026, 0, 1}, DateTime{2026, 13, 1},
          DateTime{2026, 1, 0}, DateTime{2026, 1, 32}, DateTime{2025, 2, 29}, DateTime{2026, 4, 31},
          DateTime{2026, -1, 1}, DateTime{2026, 1, -1}, DateTime{2026, 1, 1, 24, 0, 0},
          DateTime{2026, 1, 1, 0, 60, 0}, DateTime{2026, 1, 1, 0, 0, 60}, DateTime{2026, 1, 1, -1, 0, 0},
          DateTime{2026, 1, 1, 0, -1, 0}, DateTime{2026, 1, 1, 0, 0, -1}}) {
        EXPECT_FALSE(IsValidDate(date)) << date.year << " " << date.month << " " << date.day;
    }
}

TEST(DateTimeTest, SecondsRunOverMidnightTheYearAndTheLeapDay) {
    EXPECT_EQ(CivilSeconds({1970, 1, 1}), 0);
    EXPECT_EQ(CivilSeconds({1970, 1, 2, 1, 1, 1}), 90061);
    EXPECT_EQ(SecondsBetween({2026, 12, 31, 23, 59, 50}, {2027, 1, 1, 0, 0, 1}), 11);
    EXPECT_EQ(SecondsBetween({2024, 2, 28}, {2024, 3, 1}), 2 * 86400);
    EXPECT_EQ(SecondsBetween({2026, 1, 1, 0, 0, 5}, {2026, 1, 1}), -5);
}

TEST(DateTimeTest, ADateIsSetFromItsYearOn) {
    EXPECT_FALSE(DateTime().IsSet());
    EXPECT_TRUE((DateTime{1900, 1, 1}).IsSet());
    EXPECT_LT((DateTime{2026, 1, 31, 23, 0, 0}), (DateTime{2026, 2, 1}));
}

TEST(DateTimeTest, AMonthOrDayFarBeyondTheCalendarIsNoDate) {
    EXPECT_FALSE(IsValidDate(Day(2000, 1290, 3))); // 1290 is 10 in its lowest eight bits.
    EXPECT_FALSE(IsValidDate(Day(2000, 257, 3)));
    EXPECT_FALSE(IsValidDate(Day(2000, 1, 257)));
    EXPECT_FALSE(IsValidDate(Day(2000, 13, 1)));
    EXPECT_FALSE(IsValidDate(Day(2000, 1, 32)));
}

TEST(DateTimeTest, DaysRunOverMonthsYearsAndLeapDays) {
    EXPECT_EQ(AddDays(Day(2026, 11, 20), 1), Day(2026, 11, 21));
    EXPECT_EQ(AddDays(Day(2026, 11, 30), 1), Day(2026, 12, 1));
    EXPECT_EQ(AddDays(Day(2026, 12, 31), 1), Day(2027, 1, 1));
    EXPECT_EQ(AddDays(Day(2028, 2, 28), 1), Day(2028, 2, 29));
    EXPECT_EQ(AddDays(Day(2027, 2, 28), 1), Day(2027, 3, 1));
    EXPECT_EQ(AddDays(Day(2026, 12, 28), 7), Day(2027, 1, 4));
    EXPECT_EQ(AddDays(Day(2027, 1, 1), -1), Day(2026, 12, 31));
}

TEST(DateTimeTest, AMonthKeepsTheDayWhereTheMonthHasIt) {
    EXPECT_EQ(AddMonths(Day(2026, 11, 20), 1), Day(2026, 12, 20));
    EXPECT_EQ(AddMonths(Day(2026, 12, 31), 1), Day(2027, 1, 31));
    EXPECT_EQ(AddMonths(Day(2027, 2, 28), 1), Day(2027, 3, 28));
    EXPECT_EQ(AddMonths(Day(2026, 3, 15), -3), Day(2025, 12, 15));
}

TEST(DateTimeTest, AMonthEndsOnTheLastDayOfAShorterMonth) {
    EXPECT_EQ(AddMonths(Day(2027, 1, 31), 1), Day(2027, 2, 28));
    EXPECT_EQ(AddMonths(Day(2027, 1, 29), 1), Day(2027, 2, 28));
    EXPECT_EQ(AddMonths(Day(2028, 1, 31), 1), Day(2028, 2, 29));
    EXPECT_EQ(AddMonths(Day(2026, 3, 31), 1), Day(2026, 4, 30));
}

TEST(DateTimeTest, AYearFromALeapDayEndsInFebruary) {
    EXPECT_EQ(AddMonths(Day(2028, 2, 29), 12), Day(2029, 2, 28));
    EXPECT_EQ(AddMonths(Day(2024, 2, 29), 48), Day(2028, 2, 29));
}

TEST(DateTimeTest, TheTimeOfDayStays) {
    const DateTime time{2027, 1, 31, 23, 59, 58};
    EXPECT_EQ(AddMonths(time, 1), (DateTime{2027, 2, 28, 23, 59, 58}));
    EXPECT_EQ(AddDays(time, 1), (DateTime{2027, 2, 1, 23, 59, 58}));
}

} // namespace quavernet::test
