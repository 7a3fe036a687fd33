#include "inspect/InspectTest.h"

#include "support/RealAudio.h"

namespace quavernet::test {

class RealAudioInspectionTest : public InspectTest {
protected:
    const CurrentFile& InspectReal(const std::string& path) {
        file.CurrentPath = path;
        file.CurrentFileName = "Wer - Was.mp3";
        InspectFile(path, file);
        return file;
    }
};

const std::vector<std::string> Tags = {"--tt", "Lied für O'Hara", "--ta", "Künstler",
                                       "--tl", "Größe",           "--ty", "2003",
                                       "--tc", "Bemerkung",       "--tg", "17"};

std::vector<std::string> With(std::vector<std::string> switches, const std::vector<std::string>& more) {
    switches.insert(switches.end(), more.begin(), more.end());
    return switches;
}

TEST_F(RealAudioInspectionTest, AConstantRateStereoFileWithoutTags) {
    InspectReal(RealMp3({"-b", "128", "--cbr", "-m", "s", "-t"}, RealWave(10)));
    EXPECT_EQ(file.FileQuality, "128");
    EXPECT_EQ(file.AudioInfo.Frequency, 44100);
    EXPECT_EQ(file.AudioInfo.Mode, "Stereo");
    EXPECT_EQ(file.AudioInfo.Version, 1);
    EXPECT_EQ(file.AudioInfo.Layer, 3);
    EXPECT_EQ(file.AudioInfo.OriginalFlag, "Ja");
    EXPECT_NEAR(file.AudioInfo.Length, 10, 1);
    EXPECT_FALSE(file.IsVbr);
    EXPECT_EQ(file.FileArtist, "Wer");
    EXPECT_EQ(file.FileTitle, "Was");
}

TEST_F(RealAudioInspectionTest, AVariableRateStereoFileHasItsXingMark) {
    InspectReal(RealMp3({"-V", "4"}, RealWave(10)));
    EXPECT_TRUE(file.IsVbr);
    EXPECT_NEAR(file.VbrFrames, 384, 3) << "10 s of 1152 samples each";
    EXPECT_NEAR(file.AudioInfo.Length, 10, 1);
    EXPECT_GT(file.AudioInfo.BitRate, 16);
}

TEST_F(RealAudioInspectionTest, AVariableRateMonoFileIsReadByItsFirstFrame) {
    InspectReal(RealMp3({"-V", "4"}, RealWave(10, 44100, 1)));
    EXPECT_FALSE(file.IsVbr) << "its mark is 21 bytes after the frame, where nobody looks";
    EXPECT_EQ(file.AudioInfo.Mode, "Ein-Kanal");
}

TEST_F(RealAudioInspectionTest, ACrcMakesTheFileProtected) {
    InspectReal(RealMp3({"-b", "128", "-p", "-t"}));
    EXPECT_EQ(file.AudioInfo.ProtectedFlag, "Ja");
    InspectReal(RealMp3({"-b", "128", "-t"}));
    EXPECT_EQ(file.AudioInfo.ProtectedFlag, "Nein");
}

TEST_F(RealAudioInspectionTest, AVersion1Tag) {
    InspectReal(RealMp3(With({"-b", "128", "--id3v1-only"}, Tags)));
    EXPECT_TRUE(file.HasTagV1);
    EXPECT_EQ(file.FileTitle, "Lied für O'Hara");
    EXPECT_EQ(file.FileArtist, "Künstler");
    EXPECT_EQ(file.FileAlbum, "Größe");
    EXPECT_EQ(file.FileGenre, "17");
    EXPECT_EQ(file.FileQuality, "128");
}

TEST_F(RealAudioInspectionTest, AVersion2TagInBothEncodings) {
    for (const char* encoding : {"--id3v2-latin1", "--id3v2-utf16"}) {
        InspectReal(RealMp3(With({"-b", "128", "--id3v2-only", encoding}, Tags)));
        EXPECT_TRUE(file.HasTagV2);
        EXPECT_EQ(file.FileTitle, "Lied für O'Hara");
        EXPECT_EQ(file.FileArtist, "Künstler");
        EXPECT_EQ(file.FileAlbum, "");
        EXPECT_EQ(file.FileGenre, "255");
        EXPECT_EQ(file.FileQuality, "128");
        EXPECT_EQ(mainModule.TagComponent->TagField(TagComponent::Album), "Größe");
        EXPECT_EQ(mainModule.TagComponent->TagField(TagComponent::Year), "2003");
        EXPECT_EQ(mainModule.TagComponent->TagField(TagComponent::Comment), "Bemerkung");
    }
}

TEST_F(RealAudioInspectionTest, BothTags) {
    InspectReal(RealMp3(With({"-b", "128", "--add-id3v2", "--id3v2-latin1"}, Tags)));
    EXPECT_TRUE(file.HasTagV2 && !file.HasTagV1);
    EXPECT_EQ(file.FileTitle, "Lied für O'Hara");
    EXPECT_EQ(file.FileGenre, "255");
}

TEST_F(RealAudioInspectionTest, AnOggFilePassesThrough) {
    const std::string path = RealOgg({"-t", "Titel"});
    file.CurrentFileName = "Wer - Was.ogg";
    InspectFile(path, file);
    EXPECT_EQ(file.FileQuality, "0");
    EXPECT_EQ(file.AudioInfo.Length, 0);
    EXPECT_EQ(file.FileTitle, "Was");
}

} // namespace quavernet::test
