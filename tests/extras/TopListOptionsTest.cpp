#include "extras/TopListOptions.h"

#include "support/TestLibrary.h"

#include <gmock/gmock.h>

#include <limits>
#include <utility>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TopListOptionsTest : public LibraryTest {
protected:
    TopListOptionsTest() {
        Execute({"Insert into Files (Name, Hits) values ('a', 3)", "Insert into Files (Name) values ('b')"});
        connection.statements.clear();
    }

    RecordingConnection& connection = Record();
};

TEST_F(TopListOptionsTest, WithoutASettingTheLengthIsTenAndNothingIsStored) {
    EXPECT_EQ(FileCountTopList(), "10");
    EXPECT_EQ(ChartLimitSetting(), 10);
    EXPECT_THAT(settings.values, IsEmpty());
}

TEST_F(TopListOptionsTest, TheLengthIsTheNumberAtTheTextsBeginning) {
    constexpr auto Most = std::numeric_limits<std::int32_t>::max();
    constexpr auto Least = std::numeric_limits<std::int32_t>::min();
    for (const auto& [text, limit] :
         std::vector<std::pair<const char*, std::int32_t>>{{"25", 25},
                                                           {"0", 0},
                                                           {"-5", -5},
                                                           {"abc", 0},
                                                           {"", 0},
                                                           {" ", 0},
                                                           {" 7 ", 7},
                                                           {"+7", 7},
                                                           {"12 Dateien", 12},
                                                           {"1e3", 1000},
                                                           {"2.5", 2},
                                                           {"3.5", 4},
                                                           {"2,9", 2},
                                                           {"0x10", 0},
                                                           {"inf", 0},
                                                           {"nan", 0},
                                                           {"٣", 0},
                                                           {"2147483647", Most},
                                                           {"2147483648", Most},
                                                           {"99999999999", Most},
                                                           {"-99999999999", Least},
                                                           {"1e999", 0}}) {
        settings.values["FileCountTopList"] = text;
        EXPECT_EQ(ChartLimitSetting(), limit) << text;
        EXPECT_EQ(FileCountTopList(), text);
    }
}

TEST_F(TopListOptionsTest, ATextIsStoredAsItIs) {
    for (const char* text : {"25", "-5", "abc", "99999999999", " ", "7 ", "ü'\""}) {
        EXPECT_TRUE(SaveTopListOptions(text, false)) << text;
        EXPECT_EQ(settings.values["FileCountTopList"], text);
    }
    EXPECT_THAT(connection.statements, IsEmpty());
}

TEST_F(TopListOptionsTest, AResetTakesAllCountsAwayWithoutAQuestion) {
    EXPECT_TRUE(SaveTopListOptions("25", true));
    EXPECT_THAT(connection.statements, ElementsAre("Update Files Set Hits = 0"));
    EXPECT_THAT(Rows("Select Hits from Files"), ElementsAre("0", "0"));
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(TopListOptionsTest, WithAnEmptyTextNothingHappens) {
    EXPECT_FALSE(SaveTopListOptions("", true));
    EXPECT_THAT(settings.values, IsEmpty());
    EXPECT_THAT(connection.statements, IsEmpty());
}

TEST_F(TopListOptionsTest, TheTextIsStoredBeforeAResetThatFails) {
    connection.failOn = "Update";
    EXPECT_THROW(SaveTopListOptions("25", true), RuntimeError);
    EXPECT_EQ(settings.values["FileCountTopList"], "25");
}

} // namespace
} // namespace quavernet::test
