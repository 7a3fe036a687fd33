#include "scanner/Volumes.h"

#include "scanner/FileFields.h"
#include "support/FailureNumber.h"
#include "support/LogicTest.h"
#include "support/ScanDoubles.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;

class VolumesTest : public LogicTest {
protected:
    VolumesTest() {
        services.fileSystem = &volumes;
        volumes.drives = {"/", "/media/disc", "/mnt/music", "/mnt/mail"};
        volumes.networkRoots = {{"/mnt/music", "//server/music"}, {"/mnt/mail", "//server/mail"}};
    }

    ChosenVolumes volumes;
    CurrentFile file;
};

TEST_F(VolumesTest, LogicalDrivesAreThoseOfTheSystem) {
    EXPECT_THAT(LogicalDrives(), ElementsAre("/", "/media/disc", "/mnt/music", "/mnt/mail"));
}

TEST_F(VolumesTest, UNCPathGivesTheNetworkRootWithAFinalSeparator) {
    EXPECT_EQ(UNCPath("/mnt/music", true), "//server/music/");
    EXPECT_EQ(UNCPath("/mnt/music/", false), "//server/music/");
}

TEST_F(VolumesTest, UNCPathCutsTheRootAtItsFirstNul) {
    volumes.networkRoots["/mnt/music"] = std::string("//server/music\0rest", 19);
    EXPECT_EQ(UNCPath("/mnt/music", true), "//server/music/");
}

TEST_F(VolumesTest, UNCPathGivesALocalDriveBackOrRaisesError5) {
    EXPECT_EQ(UNCPath("/", true), "/");
    EXPECT_EQ(UNCPath("/media/disc", true), "/media/disc/");
    EXPECT_EQ(UNCPath("/media/disc/", true), "/media/disc/");
    EXPECT_EQ(UNCPath("", true), "/");
    EXPECT_EQ(NumberOf([] { UNCPath("/media/disc", false); }), 5);
    EXPECT_EQ(NumberOf([] { UNCPath("/", false); }), 5);
}

TEST_F(VolumesTest, DrivePathTurnsANetworkPathIntoALocalOne) {
    EXPECT_EQ(DrivePath("//server/mail/a/b.mp3", false), "/mnt/mail/a/b.mp3");
    EXPECT_EQ(DrivePath("//SERVER/Music/x.mp3", true), "/mnt/music/x.mp3") << "text comparison";
    EXPECT_EQ(DrivePath("//server/music/", true), "/mnt/music/");
}

TEST_F(VolumesTest, DrivePathWithoutAMatchGivesThePathBackOrRaisesError5) {
    EXPECT_EQ(DrivePath("//server/musical/x.mp3", true), "//server/musical/x.mp3");
    EXPECT_EQ(DrivePath("home/x.mp3", true), "home/x.mp3");
    EXPECT_EQ(NumberOf([] { DrivePath("//other/x.mp3", false); }), 5);
    EXPECT_EQ(NumberOf([] { DrivePath("home/x.mp3", false); }), 5);
}

TEST_F(VolumesTest, DrivePathFindsALocalPathOnItsDriveAndLeavesIt) {
    EXPECT_EQ(DrivePath("/home/x.mp3", false), "/home/x.mp3");
    volumes.drives = {"/media/disc"};
    EXPECT_EQ(DrivePath("/media/disc/x.mp3", false), "/media/disc/x.mp3");
    EXPECT_EQ(NumberOf([] { DrivePath("/media/disco/x.mp3", false); }), 5);
}

FileFacts Facts(const std::string& path, const std::string& drive) {
    FileFacts facts;
    facts.path = path;
    facts.name = path.substr(path.rfind('/') + 1);
    facts.size = 5000000000;
    facts.dateCreated = {2024, 2, 29, 13, 4, 5};
    facts.drivePath = drive;
    return facts;
}

TEST_F(VolumesTest, TheFileFieldsOfALocalFileKeepItsPath) {
    FillFileFields(Facts("/media/disc/Pop/it's.mp3", "/media/disc"), file);

    EXPECT_EQ(file.CurrentPath, "/media/disc/Pop/it's.mp3");
    EXPECT_EQ(file.CurrentFileName, "it's.mp3");
    EXPECT_EQ(file.FileName, "it's.mp3");
    EXPECT_EQ(file.FilePath, "/media/disc/Pop/it's.mp3");
    EXPECT_EQ(file.FileDrive, "/media/disc/");
    EXPECT_EQ(file.FileSize, "5000000000");
    EXPECT_EQ(file.FileDate, "29.02.2024 13:04:05");
}

TEST_F(VolumesTest, TheFileFieldsOfARootFileHaveTheRootAsDrive) {
    FillFileFields(Facts("/a.mp3", "/"), file);

    EXPECT_EQ(file.FileDrive, "/");
    EXPECT_EQ(file.FilePath, "/a.mp3");
}

TEST_F(VolumesTest, ANetworkFileIsStoredByItsNetworkNameWhereverTheDriveIsInThePath) {
    FillFileFields(Facts("/mnt/music/x/mnt/music/a.mp3", "/mnt/music"), file);

    EXPECT_EQ(file.CurrentPath, "/mnt/music/x/mnt/music/a.mp3");
    EXPECT_EQ(file.FileDrive, "//server/music/");
    EXPECT_EQ(file.FilePath, "//server/music/x//server/music/a.mp3");
}

TEST_F(VolumesTest, AFileWithoutADateIsDatedToTheFirstDayOf1900) {
    FileFacts facts = Facts("/a.mp3", "/");
    facts.dateCreated = DateTime();
    file.FileDate = "17.05.2020"; // Of the file before.
    FillFileFields(facts, file);

    EXPECT_EQ(file.FileDate, "01.01.1900 00:00:00");
}

} // namespace
} // namespace quavernet::test
