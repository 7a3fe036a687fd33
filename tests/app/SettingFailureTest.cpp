#include "app/SettingFailure.h"

#include "support/LogicTest.h"

namespace quavernet::test {
namespace {

class PlacedSettings : public MapSettings {
public:
    std::string Place() const override { return place; }
    std::string place = "/home/anna/.config/Greyfinch Labs/Quavernet.conf";
};

class SettingFailureTest : public LogicTest {
protected:
    SettingFailureTest() { services.settings = &placed; }

    PlacedSettings placed;
    const SettingError error{"WindowWidth", ErrorNumber::Overflow, "Overflow"};
};

TEST_F(SettingFailureTest, TheSettingItsTextAndItsFileAreNamed) {
    placed.values["WindowWidth"] = "99999999999999";
    EXPECT_EQ(error.Number(), 6);
    EXPECT_EQ(error.Description(), "Overflow");
    EXPECT_EQ(
        SettingFailureText(error),
        "Diese Einstellung ist keine Zahl, mit der das Programm arbeiten kann: "
        "WindowWidth=99999999999999\n"
        "Datei der Einstellungen: /home/anna/.config/Greyfinch Labs/Quavernet.conf\n\n"
        "So startet das Programm wieder: Löschen Sie in dieser Datei die Zeile der Einstellung. Dann gilt "
        "ihr Anfangswert.");
    placed.values["Language"] = "ENG";
    EXPECT_EQ(
        SettingFailureText(error),
        "This setting is not a number that the program can work with: WindowWidth=99999999999999\n"
        "File of the settings: /home/anna/.config/Greyfinch Labs/Quavernet.conf\n\n"
        "To make the program start again: delete the line of the setting in this file. Its initial value "
        "holds then.");
}

TEST_F(SettingFailureTest, OfALongTextTheBeginningIsShown) {
    placed.values["WindowWidth"] = std::string(79, 'x') + "ä" + std::string(5000, 'y');
    EXPECT_NE(SettingFailureText(error).find("=" + std::string(79, 'x') + "ä\n"), std::string::npos);
}

TEST_F(SettingFailureTest, OfASettingThatTheStartDoesNotReadTheWayInTheProgramIsTold) {
    placed.values["FileCountRandomPlay"] = "many";
    EXPECT_EQ(SettingFailureText({"FileCountRandomPlay", ErrorNumber::TypeMismatch, "Type mismatch", 789}),
              "Diese Einstellung ist keine Zahl, mit der das Programm arbeiten kann: "
              "FileCountRandomPlay=many\n\n"
              "Random Play braucht eine Zahl. Geben Sie unter „Optionen“, „Random Play...“ eine ein.");
}

TEST_F(SettingFailureTest, AStoreWithoutAFileIsNotNamed) {
    placed.place.clear();
    placed.values["WindowWidth"] = "wide";
    EXPECT_EQ(SettingFailureText(error),
              "Diese Einstellung ist keine Zahl, mit der das Programm arbeiten kann: WindowWidth=wide");
}

} // namespace
} // namespace quavernet::test
