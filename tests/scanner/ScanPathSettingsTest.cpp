#include "scanner/ScanPathSettings.h"

#include "adapters/posix/PosixFileSystem.h"
#include "support/LogicTest.h"
#include "support/OrderedSettings.h"
#include "support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace quavernet::test {

namespace {

class ScanPathSettingsTest : public LogicTest {
protected:
    ScanPathSettingsTest() { services.fileSystem = fileSystem.get(); }

    void ExpectRejected(const std::string& path) {
        msgBox.shown.clear();
        EXPECT_FALSE(SaveScanPathSettings({true, path})) << path;
        EXPECT_THAT(msgBox.shown, ElementsAre(ShownBox{"Der Pfad existiert nicht!\nSpeichern nicht möglich.",
                                                       "Speichern abgebrochen", MsgBox::Icon::Exclamation,
                                                       MsgBox::Buttons::Ok}));
        EXPECT_THAT(settings.values, IsEmpty());
    }

    TemporaryFolder folder;
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
};

} // namespace

TEST_F(ScanPathSettingsTest, NothingIsSetAtFirst) {
    const ScanPathSettings scanPath = LoadScanPathSettings();
    EXPECT_FALSE(scanPath.ScanpathValue);
    EXPECT_EQ(scanPath.Scanpath, "");
    EXPECT_THAT(settings.values, IsEmpty());
}

TEST_F(ScanPathSettingsTest, TheValueIsComparedAsANumberWithOne) {
    for (const auto& [text, expected] : {std::pair{"1", true},
                                         {" 1", true},
                                         {"1.0", true},
                                         {"0", false},
                                         {"", false},
                                         {"2", false},
                                         {"-1", false},
                                         {"yes", false}}) {
        settings.values["ScanpathValue"] = text;
        EXPECT_EQ(LoadScanPathSettings().ScanpathValue, expected) << text;
    }
}

TEST_F(ScanPathSettingsTest, BrowsingHasItsGermanTitleInEveryLanguage) {
    settings.values["Language"] = "ENG";
    dialogs.folder = "/music";
    (void)BrowseScanPath();
    EXPECT_THAT(dialogs.titles, ElementsAre("Wählen Sie einen Ordner"));
}

TEST_F(ScanPathSettingsTest, AChosenPathEndsInOneSeparatorAndBeforeItsNul) {
    const std::pair<std::string, std::string> cases[] = {{"/music", "/music/"},
                                                         {"/music/", "/music/"},
                                                         {"/", "/"},
                                                         {std::string("/mus\0ic", 7), "/mus/"},
                                                         {"/m\xFCsic", "/m\xFCsic/"},
                                                         {"/a\\", "/a\\/"}};
    for (const auto& [chosen, expected] : cases) {
        dialogs.folder = chosen;
        EXPECT_EQ(BrowseScanPath(), expected);
    }
}

TEST_F(ScanPathSettingsTest, ACancelledDialogGivesNoPath) {
    dialogs.folder.reset();
    EXPECT_EQ(BrowseScanPath(), std::nullopt);
    dialogs.folder = "";
    EXPECT_EQ(BrowseScanPath(), std::nullopt);
}

TEST_F(ScanPathSettingsTest, AnExistingFolderIsStoredAsItStands) {
    for (const std::string& path : {folder.Path(), folder.Path() + "/"}) {
        EXPECT_TRUE(SaveScanPathSettings({true, path}));
        EXPECT_EQ(settings.values["Scanpath"], path);
        EXPECT_EQ(settings.values["ScanpathValue"], "1");
    }
    EXPECT_TRUE(SaveScanPathSettings({false, folder.Path()}));
    EXPECT_EQ(settings.values["ScanpathValue"], "0");
    EXPECT_THAT(msgBox.shown, IsEmpty());
    const ScanPathSettings scanPath = LoadScanPathSettings();
    EXPECT_FALSE(scanPath.ScanpathValue);
    EXPECT_EQ(scanPath.Scanpath, folder.Path());
}

TEST_F(ScanPathSettingsTest, ThePathIsWrittenBeforeItsCheckBox) {
    OrderedSettings ordered;
    services.settings = &ordered;
    EXPECT_TRUE(SaveScanPathSettings({true, folder.Path()}));
    EXPECT_THAT(ordered.writes, ElementsAre(StartsWith("Scanpath="), StartsWith("ScanpathValue=")));
}

TEST_F(ScanPathSettingsTest, UmlautsBlanksAndForeignBytesAreFolderNamesToo) {
    for (const char* name : {"Müsik & mehr", "m\xFCsic", ".hidden", "It's"}) {
        std::filesystem::create_directory(folder / name);
        EXPECT_TRUE(SaveScanPathSettings({true, folder / name}));
        EXPECT_EQ(settings.values["Scanpath"], folder / name);
    }
}

TEST_F(ScanPathSettingsTest, AFolderThatDoesNotExistIsRejectedWithABox) {
    ExpectRejected(folder / "gone");
    ExpectRejected(folder.Path() + "/gone/");
    ExpectRejected(" ");
    ExpectRejected(folder.Path() + std::string("\0x", 2));
}

TEST_F(ScanPathSettingsTest, AFileIsNoFolder) {
    std::ofstream(folder / "song.mp3") << "x";
    ExpectRejected(folder / "song.mp3");
}

TEST_F(ScanPathSettingsTest, AnEmptyPathIsRejectedAlsoWithTheBoxCleared) {
    ExpectRejected("");
    EXPECT_FALSE(SaveScanPathSettings({false, ""}));
    EXPECT_THAT(settings.values, IsEmpty());
}

TEST_F(ScanPathSettingsTest, ARejectedPathLeavesTheStoredOne) {
    settings.values = {{"Scanpath", "/music/"}, {"ScanpathValue", "1"}};
    EXPECT_FALSE(SaveScanPathSettings({false, folder / "gone"}));
    EXPECT_EQ(settings.values["Scanpath"], "/music/");
    EXPECT_EQ(settings.values["ScanpathValue"], "1");
}

} // namespace quavernet::test
