#include "playback/RandomPlaySettings.h"

#include "app/SettingFailure.h"
#include "support/FailureNumber.h"
#include "support/TestLibrary.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RandomPlaySettingsTest : public LibraryTest {
protected:
    void Store(const std::string& option, const std::string& count) {
        settings.values = {{"CheckedRandomOpt", option}, {"FileCountRandomPlay", count}};
    }
    void AddFiles(int count) {
        for (int i = 0; i < count; ++i) {
            Execute("Insert into Files (Name, Path) values ('a.mp3', '/" + std::to_string(i) + "')");
        }
    }
    std::int32_t CountOf(const std::string& option, const std::string& count) {
        Store(option, count);
        SetRandomCount();
        return mainModule.RandomCount;
    }
};

TEST_F(RandomPlaySettingsTest, WithoutSettingsAllFilesAreChosenAndTheCountIs200) {
    const RandomPlaySettings shown = LoadRandomPlaySettings();
    EXPECT_TRUE(shown.optAllFiles);
    EXPECT_FALSE(shown.optFileCount);
    EXPECT_EQ(shown.txtFileCount, "200");
    EXPECT_THAT(settings.values, IsEmpty());
}

TEST_F(RandomPlaySettingsTest, TheStoredChoiceIsShown) {
    Store("FileCount", "abc");
    const RandomPlaySettings shown = LoadRandomPlaySettings();
    EXPECT_FALSE(shown.optAllFiles);
    EXPECT_TRUE(shown.optFileCount);
    EXPECT_EQ(shown.txtFileCount, "abc");
    Store("anything", "5");
    EXPECT_FALSE(LoadRandomPlaySettings().optAllFiles || LoadRandomPlaySettings().optFileCount);
}

TEST_F(RandomPlaySettingsTest, TheChoiceAndTheTextAreStoredAsTheyAre) {
    SaveRandomPlaySettings(true, " 12 x");
    EXPECT_EQ(settings.values.at("CheckedRandomOpt"), "FileCount");
    EXPECT_EQ(settings.values.at("FileCountRandomPlay"), " 12 x");
    SaveRandomPlaySettings(false, "");
    EXPECT_EQ(settings.values.at("CheckedRandomOpt"), "AllFiles");
    EXPECT_EQ(settings.values.at("FileCountRandomPlay"), "");
    EXPECT_THAT(msgBox.shown, IsEmpty());
}

TEST_F(RandomPlaySettingsTest, ACountAboveThePlayersLimitIsWarnedOfAndStored) {
    SaveRandomPlaySettings(true, "32767");
    SaveRandomPlaySettings(false, "40000");
    EXPECT_THAT(msgBox.shown, IsEmpty());
    for (const char* count : {"32768", " 40000 files", "1e6"}) {
        msgBox.shown.clear();
        SaveRandomPlaySettings(true, count);
        EXPECT_THAT(msgBox.shown,
                    ElementsAre(ShownBox{"Der interne Player unterstützt zurzeit nur eine Anzahl von 32767 "
                                         "abzuspielenden Dateien",
                                         "Achtung", MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok}))
            << count;
        EXPECT_EQ(settings.values.at("FileCountRandomPlay"), count);
    }
}

TEST_F(RandomPlaySettingsTest, TheCountIsThatOfTheLibraryOrTheStoredOne) {
    AddFiles(3);
    settings.values.clear();
    SetRandomCount();
    EXPECT_EQ(mainModule.RandomCount, 3);
    EXPECT_EQ(CountOf("AllFiles", "x"), 3) << "the other setting is not looked at";
    EXPECT_EQ(CountOf("FileCount", "1000"), 1000);
    EXPECT_EQ(CountOf("FileCount", "0"), 0);
    EXPECT_EQ(CountOf("FileCount", "40000"), 40000);
    EXPECT_EQ(CountOf("FileCount", "2,5"), 2) << "half to even";
    settings.values = {{"CheckedRandomOpt", "FileCount"}};
    SetRandomCount();
    EXPECT_EQ(mainModule.RandomCount, 200);
}

TEST_F(RandomPlaySettingsTest, AnyOtherStoredChoiceLeavesTheCountAsItWas) {
    mainModule.RandomCount = 7;
    EXPECT_EQ(CountOf("", "5"), 7);
    EXPECT_EQ(CountOf("filecount", "5"), 7);
}

TEST_F(RandomPlaySettingsTest, ATextThatIsNoNumberFailsAndNamesTheSetting) {
    for (const char* count : {"", "abc", "12 x"}) {
        Store("FileCount", count);
        try {
            SetRandomCount();
            ADD_FAILURE() << count;
        } catch (const SettingError& error) {
            EXPECT_EQ(error.Number(), 13) << count;
            EXPECT_EQ(error.Name(), "FileCountRandomPlay");
            EXPECT_EQ(SettingFailureText(error).find("So startet das Programm"), std::string::npos);
        }
    }
    Store("FileCount", "3000000000");
    try {
        SetRandomCount();
        ADD_FAILURE();
    } catch (const SettingError& error) {
        EXPECT_EQ(error.Number(), 6);
        EXPECT_NE(SettingFailureText(error).find("Geben Sie unter"), std::string::npos);
    }
}

} // namespace
} // namespace quavernet::test
