#include "browser/ListQuery.h"
#include "browser/ListRecord.h"

#include "app/MainModule.h"
#include "platform/RuntimeError.h"
#include "support/LogicTest.h"

namespace quavernet::test {

namespace {

const RegionalSettings German;
const RegionalSettings American{".", ",", "/", "M/d/yyyy", true};
const RegionalSettings Plain{".", "", "/", "MM/dd/yy", false};

std::string Length(double seconds) {
    return LengthText(ADODB::Field(seconds), German);
}

std::string Length(std::int64_t seconds) {
    return LengthText(ADODB::Field(seconds), German);
}

template <typename Action> int ErrorOf(Action&& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

using ListTextsTest = LogicTest;

} // namespace

TEST_F(ListTextsTest, OneFileIsSingularAndNoneIsNot) {
    EXPECT_EQ(FileCountText(0, 0), "0 Dateien / (0,00 MB)");
    EXPECT_EQ(FileCountText(1, 4.5), "1 Datei / (4,50 MB)");
    EXPECT_EQ(FileCountText(2, 1234.567), "2 Dateien / (1.234,57 MB)");
    EXPECT_EQ(FileCountText(123456, 0.004), "123456 Dateien / (0,00 MB)");
}

TEST_F(ListTextsTest, TheFileCountFollowsTheSystemsNumbersAndTheProgramsLanguage) {
    services.regional = American;
    EXPECT_EQ(FileCountText(2, 1234.567), "2 Dateien / (1,234.57 MB)");
    services.regional = Plain;
    settings.values["Language"] = "ENG";
    EXPECT_EQ(FileCountText(2, 1234.567), "2 files / (1234.57 MB)");
    EXPECT_EQ(FileCountText(1, 1), "1 file / (1.00 MB)");
}

TEST_F(ListTextsTest, PerformersAndAlbumsAreSingularAtExactlyOne) {
    EXPECT_EQ(InterpretCountText("0"), "0 Interpreten");
    EXPECT_EQ(InterpretCountText("1"), "1 Interpret");
    EXPECT_EQ(InterpretCountText("2"), "2 Interpreten");
    EXPECT_EQ(InterpretCountText("11"), "11 Interpreten");
    EXPECT_EQ(InterpretCountText("01"), "01 Interpret"); // The value decides, not the spelling.
    EXPECT_EQ(AlbumCountText("0"), "0 Alben");
    EXPECT_EQ(AlbumCountText("1"), "1 Album");
    EXPECT_EQ(AlbumCountText("2"), "2 Alben");
}

TEST_F(ListTextsTest, BeforeTheFirstLoadTheCountersAreNought) {
    const ListTotals totals;
    EXPECT_EQ(InterpretCountText(totals.InterpretCount), "0 Interpreten");
    EXPECT_EQ(TitleCountText(totals.TitleCount), "0 Titel");
    EXPECT_EQ(AlbumCountText(totals.AlbumCount), "0 Alben");
}

TEST_F(ListTextsTest, TitlesHaveOneFormOnly) {
    EXPECT_EQ(TitleCountText("0"), "0 Titel");
    EXPECT_EQ(TitleCountText("1"), "1 Titel");
    EXPECT_EQ(TitleCountText("2"), "2 Titel");
    settings.values["Language"] = "ENG";
    EXPECT_EQ(TitleCountText("0"), "0 title(s)");
    EXPECT_EQ(TitleCountText("1"), "1 title(s)");
    EXPECT_EQ(TitleCountText("2"), "2 title(s)");
}

TEST(ListRecordTest, ALengthReadsAsMinutesAndSeconds) {
    EXPECT_EQ(Length(std::int64_t{0}), "00:00 min");
    EXPECT_EQ(Length(std::int64_t{1}), "00:01 min");
    EXPECT_EQ(Length(std::int64_t{59}), "00:59 min");
    EXPECT_EQ(Length(std::int64_t{60}), "01:00 min");
    EXPECT_EQ(Length(std::int64_t{215}), "03:35 min");
    EXPECT_EQ(Length(std::int64_t{599}), "09:59 min");
    EXPECT_EQ(Length(std::int64_t{3600}), "60:00 min");
    EXPECT_EQ(Length(std::int64_t{6000}), "100:00 min");
    EXPECT_EQ(Length(std::int64_t{360059}), "6000:59 min");
}

TEST(ListRecordTest, EveryWholeLengthOfTwoHoursIsRight) {
    for (std::int64_t seconds = 0; seconds < 7200; ++seconds) {
        char expected[32];
        std::snprintf(expected, sizeof expected, "%02d:%02d min", static_cast<int>(seconds / 60),
                      static_cast<int>(seconds % 60));
        ASSERT_EQ(Length(seconds), expected);
    }
}

TEST(ListRecordTest, FractionsRoundTheSecondsButNotTheMinutes) {
    EXPECT_EQ(Length(59.4), "00:59 min");
    EXPECT_EQ(Length(59.6), "00:00 min"); // Neither follows the other.
    EXPECT_EQ(Length(59.8), "01:00 min"); // 0.9966 minutes show as 1.00.
    EXPECT_EQ(Length(10.5), "00:10 min"); // Half to even.
    EXPECT_EQ(Length(11.5), "00:12 min");
    EXPECT_EQ(Length(119.8), "02:00 min");
}

TEST(ListRecordTest, TheLengthDoesNotDependOnTheSystemsSigns) {
    const ADODB::Field length(std::int64_t{75000});
    EXPECT_EQ(LengthText(length, German), "1250:00 min");
    EXPECT_EQ(LengthText(length, American), "1250:00 min");
    EXPECT_EQ(LengthText(length, Plain), "1250:00 min");
    RegionalSettings wide;
    wide.decimalSeparator = "\u066b"; // Two bytes, one character.
    EXPECT_EQ(LengthText(length, wide), "1250:00 min");
}

TEST(ListRecordTest, ALengthThatIsMissingOrTooLargeFails) {
    EXPECT_EQ(ErrorOf([] { LengthText(ADODB::Field(), German); }), ErrorNumber::InvalidUseOfNull);
    EXPECT_EQ(ErrorOf([] { Length(std::int64_t{3000000000}); }), ErrorNumber::Overflow);
    EXPECT_EQ(ErrorOf([] { CheckLength(ADODB::Field()); }), ErrorNumber::InvalidUseOfNull);
    EXPECT_EQ(ErrorOf([] { CheckLength(ADODB::Field(std::int64_t{3000000000})); }), ErrorNumber::Overflow);
    EXPECT_EQ(ErrorOf([] { CheckLength(ADODB::Field(std::int64_t{2147483647})); }), 0);
}

TEST(ListRecordTest, ASizeIsShownInMegabytesOf1024By1024) {
    const auto size = [](std::int64_t bytes, const RegionalSettings& regional) {
        return SizeText(ADODB::Field(bytes), regional);
    };
    EXPECT_EQ(size(0, German), "0,00");
    EXPECT_EQ(size(1048576, German), "1,00");
    EXPECT_EQ(size(5242, German), "0,00");
    EXPECT_EQ(size(5243, German), "0,01");
    EXPECT_EQ(size(1310720000000, German), "1.250.000,00");
    EXPECT_EQ(size(1310720000000, American), "1,250,000.00");
    EXPECT_EQ(size(1310720000000, Plain), "1250000.00");
    EXPECT_EQ(ErrorOf([] { SizeText(ADODB::Field(), German); }), ErrorNumber::InvalidUseOfNull);
}

TEST(MegabyteSumTest, AddsWhatIsShownAndNotWhatIsThere) {
    MegabyteSum sum(German);
    for (int i = 0; i < 100; ++i) {
        sum.Add(ADODB::Field(std::int64_t{5242})); // Just below a hundredth's half.
    }
    EXPECT_EQ(sum.Total(), 0);
    for (int i = 0; i < 100; ++i) {
        sum.Add(ADODB::Field(std::int64_t{5243}));
    }
    EXPECT_NEAR(sum.Total(), 1.0, 1e-9);
}

TEST(MegabyteSumTest, EqualsTheTextReadBackForEverySize) {
    std::uint64_t random = 12345;
    for (const RegionalSettings& regional : {German, American, Plain}) {
        for (int i = 0; i < 20000; ++i) {
            random = random * 6364136223846793005ull + 1442695040888963407ull;
            const auto bytes = static_cast<std::int64_t>((random >> 24) >> (random >> 59));
            MegabyteSum sum(regional);
            sum.Add(ADODB::Field(bytes));
            ASSERT_EQ(sum.Total(), ParseNumber(SizeText(ADODB::Field(bytes), regional), regional)) << bytes;
        }
        for (std::int64_t bytes = 0; bytes < 30000; ++bytes) {
            MegabyteSum sum(regional);
            sum.Add(ADODB::Field(bytes));
            ASSERT_EQ(sum.Total(), ParseNumber(SizeText(ADODB::Field(bytes), regional), regional)) << bytes;
        }
    }
}

TEST(MegabyteSumTest, HalvesGoAwayFromZero) {
    // 131072 bytes are exactly 0.125 megabytes.
    MegabyteSum sum(German);
    sum.Add(ADODB::Field(std::int64_t{131072}));
    EXPECT_EQ(sum.Total(), 0.13);
}

TEST(MegabyteSumTest, TakesFractionsAndNegativeSizesByTheirText) {
    MegabyteSum sum(German);
    sum.Add(ADODB::Field(1572864.5));
    EXPECT_EQ(sum.Total(), 1.5);
    sum.Add(ADODB::Field(std::int64_t{-1048576}));
    EXPECT_EQ(sum.Total(), 0.5);
}

TEST(MegabyteSumTest, FailsOnANullAndOnSettingsThatSpellUnreadableNumbers) {
    MegabyteSum sum(German);
    EXPECT_EQ(ErrorOf([&] { sum.Add(ADODB::Field()); }), ErrorNumber::InvalidUseOfNull);
    RegionalSettings odd;
    odd.decimalSeparator = "x.";
    odd.groupSeparator = "x";
    MegabyteSum unreadable(odd);
    EXPECT_EQ(ErrorOf([&] { unreadable.Add(ADODB::Field(std::int64_t{5000000000})); }), 0);
    odd.decimalSeparator = ".";
    odd.groupSeparator = ".";
    MegabyteSum twice(odd);
    EXPECT_EQ(ErrorOf([&] { twice.Add(ADODB::Field(std::int64_t{5000000000})); }), ErrorNumber::TypeMismatch);
}

} // namespace quavernet::test
