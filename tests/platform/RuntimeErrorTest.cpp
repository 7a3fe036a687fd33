#include "platform/RuntimeError.h"

#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace quavernet::test {

namespace {

template <typename Action> int ErrorOf(Action&& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

} // namespace

TEST(RuntimeErrorTest, CarriesItsNumberAndItsDescription) {
    const RuntimeError error(ErrorNumber::FileNotFound, "File not found: ä");
    EXPECT_EQ(error.Number(), 53);
    EXPECT_EQ(error.Description(), "File not found: ä");
    EXPECT_STREQ(error.what(), "File not found: ä");
}

TEST(NarrowTest, HalvesGoToTheEvenNumber) {
    for (const auto& [value, narrowed] : std::vector<std::pair<double, int>>{
             {0.5, 0}, {1.5, 2}, {2.5, 2}, {-0.5, 0}, {-1.5, -2}, {2.4999, 2}, {2.5001, 3}}) {
        EXPECT_EQ(Narrow16(value), narrowed) << value;
        EXPECT_EQ(Narrow32(value), narrowed) << value;
    }
}

TEST(NarrowTest, ThePlaceOfTheOverflowIsTheRoundedNumber) {
    EXPECT_EQ(Narrow16(32767.4), 32767);
    EXPECT_EQ(Narrow16(-32768.5), -32768);
    EXPECT_EQ(Narrow32(2147483647.4), 2147483647);
    EXPECT_EQ(Narrow32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
    for (const double value : {32767.5, 32768.0, -32769.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(ErrorOf([value] { Narrow16(value); }), ErrorNumber::Overflow) << value;
    }
    for (const double value : {2147483647.5, -2147483649.0, std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(ErrorOf([value] { Narrow32(value); }), ErrorNumber::Overflow) << value;
    }
}

TEST(SkipTest, OnlyAFailureOfTheProgramsOwnKindIsPassedOver) {
    bool behind = false;
    IgnoreFailure([&] {
        Narrow16(1e9);
        behind = true;
    });
    EXPECT_FALSE(behind);
    EXPECT_THROW(IgnoreFailure([] { throw 17; }), int);
}

} // namespace quavernet::test
