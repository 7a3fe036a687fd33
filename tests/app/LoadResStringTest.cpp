#include "app/LoadResString.h"

#include "support/LogicTest.h"

namespace quavernet::test {

using LoadResStringTest = LogicTest;

TEST_F(LoadResStringTest, SpeaksGermanWithoutASetting) {
    EXPECT_EQ(LoadResString(432), "Bereit!");
    EXPECT_EQ(mainModule.Language, "GER");
    EXPECT_EQ(mainModule.HelpDocument, "Hilfe zum Quavernet.doc");
}

TEST_F(LoadResStringTest, AnUnknownLanguageMakesEveryTextUnreadable) {
    settings.values["Language"] = "FRA";
    EXPECT_EQ(LoadResString(432), "Error : No Local Data");
    EXPECT_EQ(mainModule.Language, "FRA");
    EXPECT_EQ(mainModule.HelpDocument, "");
    mainModule.HelpDocument = "Help for Quavernet.doc";
    LoadResString(432);
    EXPECT_EQ(mainModule.HelpDocument, "Help for Quavernet.doc");
}

TEST_F(LoadResStringTest, SeveralTextsComeInTheirOrderLikeEachOfThemAlone) {
    EXPECT_EQ(LoadResStrings({453, 999, 452}), (std::vector<std::string>{"Ja", "Not found: 999", "Nein"}));
    EXPECT_EQ(LoadResStrings({}), std::vector<std::string>{});
}

TEST_F(LoadResStringTest, AMissingIdIsNamedWithItsLeadingBlank) {
    EXPECT_EQ(LoadResString(999), "Not found: 999");
}

TEST_F(LoadResStringTest, ANegativeIdTakesTheBlanksPlaceWithItsSign) {
    EXPECT_EQ(LoadResString(-5), "Not found:-5");
}

TEST_F(LoadResStringTest, AChangeOfTheSettingTakesEffectAtTheNextLookup) {
    EXPECT_EQ(LoadResString(328), "Kein Album...");
    settings.values["Language"] = "ENG";
    EXPECT_EQ(LoadResString(328), "No album...");
    EXPECT_EQ(mainModule.Language, "ENG");
    EXPECT_EQ(mainModule.HelpDocument, "Help for Quavernet.doc");
    settings.values["Language"] = "GER";
    EXPECT_EQ(LoadResString(328), "Kein Album...");
}

TEST_F(LoadResStringTest, AnEmptyStoredLanguageIsNoLanguage) {
    settings.values["Language"] = "";
    EXPECT_EQ(LoadResString(101), "Error : No Local Data");
    EXPECT_EQ(mainModule.Language, "");
}

} // namespace quavernet::test
