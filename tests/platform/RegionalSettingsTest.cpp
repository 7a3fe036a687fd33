#include "platform/RegionalSettings.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quavernet::test {

namespace {

RegionalSettings German() {
    return {};
}

RegionalSettings American() {
    return {".", ",", "/", "M/d/yyyy", true};
}

/// As the C locale has it: no thousands separator.
RegionalSettings Plain() {
    return {".", "", "/", "MM/dd/yy", false};
}

RegionalSettings French() {
    return {",", "\u202f", "/", "dd/MM/yyyy", false};
}

const DateTime Afternoon{2026, 11, 5, 14, 3, 22};
const DateTime Thursday{2026, 11, 5};

} // namespace

TEST(FormatNumberTest, UsesTheSystemsSeparators) {
    EXPECT_EQ(FormatNumber(1234567.891, 2, German()), "1.234.567,89");
    EXPECT_EQ(FormatNumber(1234567.891, 2, American()), "1,234,567.89");
    EXPECT_EQ(FormatNumber(1234567.891, 2, Plain()), "1234567.89");
    EXPECT_EQ(FormatNumber(1234567.891, 2, French()), "1\u202f234\u202f567,89");
}

TEST(FormatNumberTest, GroupsFromTheFourthDigitOn) {
    EXPECT_EQ(FormatNumber(999, 2, German()), "999,00");
    EXPECT_EQ(FormatNumber(1000, 2, German()), "1.000,00");
    EXPECT_EQ(FormatNumber(-1000, 2, German()), "-1.000,00");
}

TEST(FormatNumberTest, RoundsHalfAwayFromZeroByTheDecimalForm) {
    EXPECT_EQ(FormatNumber(1.005, 2, German()), "1,01");
    EXPECT_EQ(FormatNumber(0.125, 2, German()), "0,13");
    EXPECT_EQ(FormatNumber(-0.125, 2, German()), "-0,13");
    EXPECT_EQ(FormatNumber(2.5, 0, German()), "3");
    EXPECT_EQ(FormatNumber(0.5, 0, German()), "1");
    EXPECT_EQ(FormatNumber(0.004999, 2, German()), "0,00");
    EXPECT_EQ(FormatNumber(0.005, 2, German()), "0,01");
    EXPECT_EQ(FormatNumber(0.0005, 2, German()), "0,00");
}

TEST(FormatNumberTest, CarriesThroughNines) {
    EXPECT_EQ(FormatNumber(9.999, 2, German()), "10,00");
    EXPECT_EQ(FormatNumber(999.996, 2, German()), "1.000,00");
    EXPECT_EQ(FormatNumber(0.996, 2, German()), "1,00");
}

TEST(FormatNumberTest, WhatIsNoNumberShowsAsZero) {
    EXPECT_EQ(FormatNumber(std::nan(""), 2, German()), "0");
    EXPECT_EQ(FormatNumber(-INFINITY, 2, German()), "0");
}

TEST(FormatNumberTest, CountsFifteenDigits) {
    EXPECT_EQ(FormatNumber(123456789012345678.0, 2, German()), "123.456.789.012.346.000,00");
    EXPECT_EQ(FormatNumber(1234567890123.456, 2, American()), "1,234,567,890,123.46");
}

TEST(FormatNumberTest, ZeroHasNoSign) {
    EXPECT_EQ(FormatNumber(0, 2, German()), "0,00");
    EXPECT_EQ(FormatNumber(-0.001, 2, German()), "0,00");
}

TEST(FormatFixedTest, FillsUpWithZerosAndNeverGroups) {
    EXPECT_EQ(FormatFixed(7, 2, 0, German()), "07");
    EXPECT_EQ(FormatFixed(1234, 2, 0, German()), "1234");
    EXPECT_EQ(FormatFixed(-5, 2, 0, German()), "-05");
    EXPECT_EQ(FormatFixed(0.5, 1, 2, American()), "0.50");
    EXPECT_EQ(FormatFixed(1234.5, 1, 2, German()), "1234,50");
}

TEST(FormatFixedSingleTest, CountsSevenDigitsOnly) {
    // The float nearest to 2.675 lies above, the double below it.
    EXPECT_EQ(FormatFixedSingle(2.675f, 1, 2, German()), "2,68");
    EXPECT_EQ(FormatFixedSingle(9.983334f, 1, 2, German()), "9,98");
    EXPECT_EQ(FormatFixedSingle(123456.789f, 1, 2, German()), "123456,80");
}

TEST(ParseNumberTest, ReadsWhatFormatNumberWrites) {
    for (const auto& regional : {German(), American(), Plain(), French()}) {
        for (const double value : {0.0, 0.01, 1.5, -3.25, 1234.56, 1234567.89}) {
            EXPECT_EQ(ParseNumber(FormatNumber(value, 2, regional), regional), value);
        }
    }
}

TEST(ParseNumberTest, TakesBlanksAroundAndASign) {
    EXPECT_EQ(ParseNumber("  12,5 ", German()), 12.5);
    EXPECT_EQ(ParseNumber("+12", German()), 12);
    EXPECT_EQ(ParseNumber("-12", German()), -12);
    EXPECT_EQ(ParseNumber(",5", German()), 0.5);
}

TEST(ParseNumberTest, PassesOverThousandsSeparatorsBeforeTheDecimalSignOnly) {
    EXPECT_EQ(ParseNumber("1.234.567", German()), 1234567);
    EXPECT_EQ(ParseNumber("12.5", German()), 125);
    EXPECT_EQ(ParseNumber("1,234.5", German()), std::nullopt);
}

TEST(ParseNumberTest, RefusesWhatIsNoNumber) {
    for (const char* text : {"", " ", "abc", "12a", "a12", "--1", "+-1", "-+1", "1,2,3", ",", "-", "+", "inf",
                             "nan", "infinity", "1e999", "0x10", "1 2"}) {
        EXPECT_EQ(ParseNumber(text, German()), std::nullopt) << text;
    }
}

TEST(ParseNumberTest, APointIsNoSignWhereTheSystemHasAnother) {
    EXPECT_EQ(ParseNumber("12.5", French()), std::nullopt);
    EXPECT_EQ(ParseNumber("12.5", Plain()), 12.5);
}

TEST(ValTest, ReadsTheBeginningWithAPointWhateverTheSystemSays) {
    EXPECT_EQ(Val("12.5abc"), 12.5);
    EXPECT_EQ(Val(" 1 2 "), 12);
    EXPECT_EQ(Val("+7"), 7);
    EXPECT_EQ(Val("-7"), -7);
    EXPECT_EQ(Val("3,5"), 3);
    EXPECT_EQ(Val("1.234,5"), 1.234);
}

TEST(ValTest, IsZeroWhereNoNumberBegins) {
    for (const char* text : {"", "abc", "-", "+-7", "inf", "nan", "."}) {
        EXPECT_EQ(Val(text), 0) << text;
    }
}

TEST(DateTextTest, FollowsTheShortPattern) {
    EXPECT_EQ(ShortDateText(Afternoon, German()), "05.11.2026");
    EXPECT_EQ(ShortDateText(Afternoon, American()), "11/5/2026");
    EXPECT_EQ(ShortDateText(Afternoon, Plain()), "11/05/26");
}

TEST(DateTextTest, AQuotedLiteralLosesItsQuotes) {
    RegionalSettings quoted;
    quoted.shortDatePattern = "d.MM.yy 'd. y.'";
    EXPECT_EQ(ShortDateText(Thursday, quoted), "5.11.26 d. y.");
    quoted.shortDatePattern = "d.MM.yy 'open";
    EXPECT_EQ(ShortDateText(Thursday, quoted), "5.11.26 open");
}

TEST(DateTextTest, TheGeneralFormLeavesMidnightOut) {
    EXPECT_EQ(GeneralDateText(Thursday, German()), "05.11.2026");
    EXPECT_EQ(GeneralDateText(Afternoon, German()), "05.11.2026 14:03:22");
    EXPECT_EQ(GeneralDateText(Afternoon, American()), "11/5/2026 2:03:22 PM");
    EXPECT_EQ(GeneralDateText({2026, 11, 5, 0, 0, 1}, American()), "11/5/2026 12:00:01 AM");
    EXPECT_EQ(GeneralDateText({2026, 11, 5, 12, 0, 0}, American()), "11/5/2026 12:00:00 PM");
}

TEST(DateTextTest, DayMonthAndYearKeepTheirOrderEverywhere) {
    EXPECT_EQ(DayMonthYearText(Afternoon, German()), "05.11.2026");
    EXPECT_EQ(DayMonthYearText(Afternoon, American()), "05/11/2026");
}

TEST(DateTextTest, TheStoredFormSorts) {
    EXPECT_EQ(IsoDateText(Thursday), "2026-11-05");
    EXPECT_EQ(IsoDateText(Afternoon), "2026-11-05 14:03:22");
}

TEST(ParseDateTest, ReadsEveryFormThatItWrites) {
    for (const auto& regional : {German(), American(), French(), Plain()}) {
        for (const auto& date :
             {Thursday, Afternoon, DateTime{2026, 11, 5, 0, 0, 1}, DateTime{2026, 12, 31, 12, 0, 0}}) {
            EXPECT_EQ(ParseDate(GeneralDateText(date, regional), regional), date);
            EXPECT_EQ(ParseDate(IsoDateText(date), regional), date);
        }
        EXPECT_EQ(ParseDate(ShortDateText(Thursday, regional), regional), Thursday);
    }
}

TEST(ParseDateTest, ATimeMayBeShort) {
    EXPECT_EQ(ParseDate("5.11.2026 14:03", German()), (DateTime{2026, 11, 5, 14, 3, 0}));
    EXPECT_EQ(ParseDate("11/5/2026 2 pm", American()), (DateTime{2026, 11, 5, 14, 0, 0}));
}

TEST(ParseDateTest, FollowsTheOrderOfTheSystem) {
    EXPECT_EQ(ParseDate("05.11.2026", German()), (DateTime{2026, 11, 5}));
    EXPECT_EQ(ParseDate("05/11/2026", American()), (DateTime{2026, 5, 11}));
}

TEST(ParseDateTest, TakesTheOtherOrderWhereItsOwnIsImpossible) {
    EXPECT_EQ(ParseDate("11/20/2026", German()), (DateTime{2026, 11, 20}));
    EXPECT_EQ(ParseDate("20/11/2026", American()), (DateTime{2026, 11, 20}));
}

TEST(ParseDateTest, ReadsTheScannersSubstituteDate) {
    EXPECT_EQ(ParseDate("01.01.1900 00:00:00", German()), (DateTime{1900, 1, 1}));
    EXPECT_EQ(ParseDate("01.01.1900 00:00:00", American()), (DateTime{1900, 1, 1}));
}

TEST(ParseDateTest, TwoDigitYearsBelowThirtyAreOfThisCentury) {
    EXPECT_EQ(ParseDate("05.11.29", German()), (DateTime{2029, 11, 5}));
    EXPECT_EQ(ParseDate("05.11.30", German()), (DateTime{1930, 11, 5}));
}

TEST(ParseDateTest, AnIsoTextIsReadWhereTheYearComesFirst) {
    RegionalSettings swedish;
    swedish.shortDatePattern = "yyyy-MM-dd";
    EXPECT_EQ(ParseDate("2026-11-05", swedish), Thursday);
    EXPECT_EQ(ParseDate("05.11.2026", swedish), Thursday);
}

TEST(ParseDateTest, RefusesWhatIsNoDate) {
    for (const char* text :
         {"", "-", "abc", "5.11", "32.1.2026", "29.02.2025", "31.04.2026", "5.11.2026 25:00:00",
          "5.11.2026 10:60:00", "1.2.3.4.5.6.7", "5x11x2026", "00.00.0000", "5M11M2026", "am 5.11.2026",
          "5.11.2026 PM", "5.11.2026 14", "1.1.20261231", "05.11.026"}) {
        EXPECT_EQ(ParseDate(text, German()), std::nullopt) << text;
    }
    EXPECT_EQ(ParseDate("29.02.2024", German()), (DateTime{2024, 2, 29}));
}

} // namespace quavernet::test
