#include "output/KonvertSettings.h"

#include "app/SettingFailure.h"
#include "support/LogicTest.h"

namespace quavernet::test {
namespace {

using KonvertSettingsTest = LogicTest;

TEST_F(KonvertSettingsTest, WithoutSettingsItIs128StereoAndNothingElse) {
    const KonvertOptions options = LoadKonvertOptions();
    EXPECT_EQ(options.cboBitrates, "128");
    EXPECT_EQ(options.txtTarget, "");
    EXPECT_TRUE(options.optStereo);
    EXPECT_FALSE(options.optMono);
    EXPECT_FALSE(options.chkCombine);
    EXPECT_FALSE(options.chkNoGap);
    EXPECT_FALSE(options.chkDelete);
    EXPECT_FALSE(options.chkShowKonvert) << "clear here, although the first conversion shows the dialog";
    EXPECT_TRUE(settings.values.empty()) << "a default is never stored";
}

TEST_F(KonvertSettingsTest, EachOptionIsStoredUnderItsNameAndReadsBack) {
    KonvertOptions stored;
    stored.txtTarget = "/a folder/";
    stored.cboBitrates = "320";
    stored.optMono = stored.chkCombine = stored.chkNoGap = stored.chkDelete = stored.chkShowKonvert = true;
    SaveKonvertOptions(stored);
    EXPECT_EQ(settings.values, (std::map<std::string, std::string>{{"KonvertBitrate", "320"},
                                                                   {"KonvertTarget", "/a folder/"},
                                                                   {"KonvertMonoStereo", "mono"},
                                                                   {"KonvertCombine", "1"},
                                                                   {"KonvertNoGap", "1"},
                                                                   {"KonvertDelete", "1"},
                                                                   {"ShowKonvert", "1"}}));
    const KonvertOptions options = LoadKonvertOptions();
    EXPECT_EQ(options.txtTarget, "/a folder/");
    EXPECT_EQ(options.cboBitrates, "320");
    EXPECT_TRUE(options.optMono && options.chkCombine && options.chkNoGap && options.chkDelete &&
                options.chkShowKonvert);
    EXPECT_FALSE(options.optStereo);
}

TEST_F(KonvertSettingsTest, ClearBoxesAreStoredAsZeroAndWhatIsNotMonoAsStereo) {
    KonvertOptions options;
    options.cboBitrates = "32";
    SaveKonvertOptions(options);
    EXPECT_EQ(settings.values, (std::map<std::string, std::string>{{"KonvertBitrate", "32"},
                                                                   {"KonvertTarget", ""},
                                                                   {"KonvertMonoStereo", "stereo"},
                                                                   {"KonvertCombine", "0"},
                                                                   {"KonvertNoGap", "0"},
                                                                   {"KonvertDelete", "0"},
                                                                   {"ShowKonvert", "0"}}));
}

TEST_F(KonvertSettingsTest, EachBoxHasItsOwnSetting) {
    const std::pair<const char*, bool KonvertOptions::*> boxes[] = {
        {"KonvertCombine", &KonvertOptions::chkCombine},
        {"KonvertNoGap", &KonvertOptions::chkNoGap},
        {"KonvertDelete", &KonvertOptions::chkDelete},
        {"ShowKonvert", &KonvertOptions::chkShowKonvert}};
    for (const auto& [name, box] : boxes) {
        settings.values = {{name, "1"}};
        const KonvertOptions options = LoadKonvertOptions();
        for (const auto& [other, otherBox] : boxes) {
            EXPECT_EQ(options.*otherBox, other == name) << name << " " << other;
        }
        KonvertOptions one;
        one.*box = true;
        SaveKonvertOptions(one);
        for (const auto& [other, otherBox] : boxes) {
            EXPECT_EQ(settings.values[other], other == name ? "1" : "0") << name << " " << other;
        }
    }
}

TEST_F(KonvertSettingsTest, AStoredSoundOfNoSenseIsNeitherOption) {
    settings.values["KonvertMonoStereo"] = "Mono";
    EXPECT_FALSE(LoadKonvertOptions().optMono);
    EXPECT_FALSE(LoadKonvertOptions().optStereo);
}

TEST_F(KonvertSettingsTest, ABoxIsReadAsAWholeNumberOf16Bits) {
    for (const auto& [text, checked] : {std::pair{"1", true},
                                        {" 1 ", true},
                                        {"01", true},
                                        {"1,4", true},
                                        {"0,5", false},
                                        {"1,5", false},
                                        {"0", false},
                                        {"2", false},
                                        {"-1", false},
                                        {"32767", false}}) {
        settings.values["KonvertDelete"] = text;
        EXPECT_EQ(CheckBoxSetting("KonvertDelete", "0"), checked) << text;
    }
    for (const auto& [text, number] :
         {std::pair{"", 13}, {"yes", 13}, {"1x", 13}, {"32768", 6}, {"99999999999", 6}}) {
        settings.values["KonvertDelete"] = text;
        try {
            LoadKonvertOptions();
            ADD_FAILURE() << text;
        } catch (const SettingError& error) {
            EXPECT_EQ(error.Number(), number) << text;
            EXPECT_EQ(error.Name(), "KonvertDelete");
        }
    }
}

TEST_F(KonvertSettingsTest, TheChosenFolderEndsInASeparator) {
    dialogs.folder = "/music/new";
    EXPECT_EQ(BrowseTarget(), "/music/new/");
    dialogs.folder = "/";
    EXPECT_EQ(BrowseTarget(), "/");
    dialogs.folder = "/music/new/";
    EXPECT_EQ(BrowseTarget(), "/music/new/");
    dialogs.folder = "";
    EXPECT_EQ(BrowseTarget(), std::nullopt);
    dialogs.folder.reset();
    EXPECT_EQ(BrowseTarget(), std::nullopt);
    EXPECT_EQ(dialogs.titles, std::vector<std::string>(5, "Wählen Sie einen Ordner"));
    settings.values["Language"] = "ENG";
    BrowseTarget();
    EXPECT_EQ(dialogs.titles.back(), "Choose a folder");
}

} // namespace
} // namespace quavernet::test
