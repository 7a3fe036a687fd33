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
}

TEST_F(LoadResStringTest, AMissingIdIsNamedWithItsLeadingBlank) {
    EXPECT_EQ(LoadResString(999), "Not found: 999");
}

} // namespace quavernet::test
