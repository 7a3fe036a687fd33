#include "inspect/InspectTest.h"

#include "inspect/MpegFallback.h"

#include <filesystem>

namespace quavernet::test {

using ReadAudioInfoTest = InspectTest;

TEST_F(ReadAudioInfoTest, ReadsAllFieldsOfAPlainFrame) {
    const AudioInfo& info = Read("a.mp3", Mpeg(160000));
    EXPECT_EQ(info.BitRate, 128);
    EXPECT_EQ(info.Frequency, 44100);
    EXPECT_EQ(info.Mode, "Stereo");
    EXPECT_EQ(info.Emphasis, "no");
    EXPECT_EQ(info.Version, 1);
    EXPECT_EQ(info.Layer, 3);
    EXPECT_EQ(info.PaddingFlag, "Nein");
    EXPECT_EQ(info.ProtectedFlag, "Nein");
    EXPECT_EQ(info.Length, 10);
    EXPECT_EQ(info.CopyFlag, "Nein");
    EXPECT_EQ(info.OriginalFlag, "Nein");
    EXPECT_EQ(info.PrivateFlag, "Nein");
}

TEST_F(ReadAudioInfoTest, EachFlagBitHasItsOwnField) {
    EXPECT_EQ(Read("a.mp3", Mpeg(300, 0, Frame(0x92))).PaddingFlag, "Ja");
    EXPECT_EQ(file.AudioInfo.PrivateFlag, "Nein");
    EXPECT_EQ(Read("a.mp3", Mpeg(300, 0, Frame(0x91))).PrivateFlag, "Ja");
    EXPECT_EQ(Read("a.mp3", Mpeg(300, 0, Frame(0x90, 0x08))).CopyFlag, "Ja");
    EXPECT_EQ(file.AudioInfo.OriginalFlag, "Nein");
    EXPECT_EQ(Read("a.mp3", Mpeg(300, 0, Frame(0x90, 0x04))).OriginalFlag, "Ja");
    EXPECT_EQ(Read("a.mp3", Mpeg(300, 0, Frame(0x90, 0, 0xFA))).ProtectedFlag, "Ja");
}

TEST_F(ReadAudioInfoTest, NamesTheFourModesAndEmphases) {
    const char* modes[] = {"Stereo", "Joint stereo", "Zwei-Kanal", "Ein-Kanal"};
    const char* emphases[] = {"no", "50/15", "reserviert", "CCITT J 17"};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(Read("a.mp3", Mpeg(300, 0, Frame(0x90, i << 6))).Mode, modes[i]);
        EXPECT_EQ(Read("a.mp3", Mpeg(300, 0, Frame(0x90, i))).Emphasis, emphases[i]);
    }
}

TEST_F(ReadAudioInfoTest, ReadsTheThreeSampleRatesAndLeavesTheReservedOneAtZero) {
    const int frequencies[] = {44100, 48000, 32000, 0};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(Read("a.mp3", Mpeg(300, 0, Frame(0x90 | i << 2))).Frequency, frequencies[i]);
    }
}

TEST_F(ReadAudioInfoTest, ReadsTheFourteenBitRatesOfLayer3) {
    const int rates[] = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0};
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(Read("a.mp3", Mpeg(300, 0, Frame(i << 4))).BitRate, rates[i]) << i;
    }
}

TEST_F(ReadAudioInfoTest, AnEmptyPathClearsTheRecord) {
    Read("a.mp3", Mpeg(300));
    ReadAudioInfo("", file);
    ExpectCleared(file.AudioInfo);
}

TEST_F(ReadAudioInfoTest, AMissingFileLeavesTheRecordCleared) {
    Read("a.mp3", Mpeg(300));
    ReadAudioInfo(folder / "missing.mp3", file);
    ExpectCleared(file.AudioInfo);
}

TEST_F(ReadAudioInfoTest, LetsEventsRunAtTheStartAndBeforeAnMpegHeader) {
    Read("a.mp3", Mpeg(300));
    EXPECT_EQ(events.count, 2);
    Read("a.wav", "");
    EXPECT_EQ(events.count, 3);
    ReadAudioInfo("", file);
    EXPECT_EQ(events.count, 4);
}

TEST_F(ReadAudioInfoTest, AFileOf255BytesLeavesTheRecordCleared) {
    ExpectCleared(Read("a.mp3", Mpeg(255)));
}

TEST_F(ReadAudioInfoTest, AFrameAfterByte5000IsNotSeenAndTheRecordStaysCleared) {
    ExpectCleared(Read("a.mp3", Mpeg(9000, 5000, Frame())));
    ExpectCleared(Read("a.mp3", TagV2(3, "", 6000) + Mpeg(9000)));
}

TEST_F(ReadAudioInfoTest, AMpeg2OrLayer2FileIsReadFromItsFirstThreeBytesAlone) {
    const AudioInfo& mpeg2 = Read("a.mp3", Mpeg(100000, 0, Bytes({0xFF, 0xF3, 0x90, 0xC4})));
    EXPECT_EQ(mpeg2.Version, 2);
    EXPECT_EQ(mpeg2.Layer, 3);
    EXPECT_EQ(mpeg2.Frequency, 22050);
    EXPECT_EQ(mpeg2.BitRate, 80);
    EXPECT_EQ(mpeg2.Mode, "Stereo") << "the fourth byte says mono, but it is not part of the header";
    EXPECT_EQ(mpeg2.OriginalFlag, "Nein");
    const AudioInfo& layer2 = Read("a.mp3", Mpeg(100000, 0, Bytes({0xFF, 0xFD, 0x90, 0xC4})));
    EXPECT_EQ(layer2.Layer, 2);
    EXPECT_EQ(layer2.BitRate, 160);
    EXPECT_EQ(layer2.Mode, "Stereo");
}

TEST_F(ReadAudioInfoTest, AMpeg2FileAfterAVersion2TagIsReadFromTheTagsMarkAndStaysCleared) {
    ExpectCleared(Read("a.mp3", TagV2(3, TextFrame(3, "TIT2", "Titel")) +
                                    Mpeg(20000, 0, Bytes({0xFF, 0xF3, 0x90, 0xC4}))));
}

TEST_F(ReadAudioInfoTest, AFrameFoundWithinTheAudioOfAMpeg2FileIsTakenForItsFirst) {
    const std::string audio = Bytes({0xFF, 0xE3, 0x18, 0xC4});
    const auto file8k = [&](std::size_t size) { return Put(Mpeg(size, 0, audio), 70, Frame(0xF0)); };
    const AudioInfo& shortFile = Read("a.mp3", file8k(4095));
    EXPECT_EQ(shortFile.Version, 1);
    EXPECT_EQ(shortFile.BitRate, 0) << "the forbidden index, and too short for the fallback";
    EXPECT_EQ(shortFile.Length, 0);
    EXPECT_EQ(Read("a.mp3", file8k(4096)).BitRate, 8) << "the fallback knows the file's real first frame";
    EXPECT_EQ(file.AudioInfo.Length, 4);
}

TEST_F(ReadAudioInfoTest, AFalseHeaderWithADroppedZeroPrefixIsReadShifted) {
    // 0x0F 0xFF 0xB9: twenty bits. Positions 12-13 are "11", 14-15 "01", 17-20 "1001".
    const AudioInfo& info = Read("a.mp3", Mpeg(100000, 0, Bytes({0x0F, 0xFF, 0xB9})));
    EXPECT_EQ(info.Version, 1);
    EXPECT_EQ(info.Layer, 3);
    EXPECT_EQ(info.BitRate, 128);
    EXPECT_EQ(info.Frequency, 44100) << "no bits are left, which is index 0";
}

TEST_F(ReadAudioInfoTest, AReservedVersionLeavesTheRecordCleared) {
    // Without a frame: 0x00 0xFF 0xE8 0x00 begins at its first set bit; positions 12-13 are "01".
    ExpectCleared(Read("a.mp3", Mpeg(300, 0, Bytes({0xFF, 0xE8, 0x00}))));
}

TEST_F(ReadAudioInfoTest, AnUnknownCombinationLeavesTheRecordCleared) {
    ExpectCleared(Read("a.mp3", std::string(300, '\0'))); // Version 25, layer 0.
}

TEST_F(ReadAudioInfoTest, OtherExtensionsGetTheHeadersTextsButNoRates) {
    for (const char* name : {"a.ogg", "a.mp2", "a.mp3x"}) {
        const AudioInfo& info = Read(name, Mpeg(160000));
        EXPECT_EQ(info.BitRate, 0) << name;
        EXPECT_EQ(info.Length, 0) << name;
        EXPECT_EQ(info.Frequency, 0) << name;
        EXPECT_EQ(info.Version, 1) << name;
        EXPECT_EQ(info.Mode, "Stereo") << name;
    }
}

TEST_F(ReadAudioInfoTest, TheExtensionIsComparedInLowercase) {
    EXPECT_EQ(Read("a.MP3", Mpeg(160000)).Length, 10);
    EXPECT_EQ(Read("amp3", Mpeg(160000)).Length, 10) << "the last three characters count, not the point";
}

TEST_F(ReadAudioInfoTest, AXingMarkGivesTheAverageRateAndItsUnroundedValueTheLength) {
    const AudioInfo& info = Read("a.mp3", Xing(4000000, 6000));
    EXPECT_EQ(info.BitRate, 204);
    EXPECT_EQ(info.Length, 156);
}

TEST_F(ReadAudioInfoTest, TheStepsOfAnAverageRateRunInTheirOrderAlone) {
    // 1225 frames are 32 seconds to the instant. In any other order of the multiplication and the three
    // divisions one of these files is a second longer or shorter.
    EXPECT_EQ(Read("a.mp3", Xing(402991, 1225)).Length, 32);
    EXPECT_EQ(Read("a.mp3", Xing(5004, 1225)).Length, 31);
    EXPECT_EQ(Read("a.mp3", Xing(5007, 1225)).Length, 31);
    EXPECT_EQ(Read("a.mp3", Xing(5026, 1225)).Length, 32);
}

TEST_F(ReadAudioInfoTest, TheLengthTakesTheRateBeforeItIsRounded) {
    const AudioInfo& info = Read("a.mp3", Xing(1000000, 12000)); // 25.52 kbit/s
    EXPECT_EQ(info.BitRate, 26);
    EXPECT_EQ(info.Length, 313) << "26 kbit/s would be 307 seconds";
}

TEST_F(ReadAudioInfoTest, TheRateIsRoundedHalfToEven) {
    // size * 44100 / frames / 1000 / 144: 160000 bytes and 392 frames are exactly 125.
    EXPECT_EQ(Read("a.mp3", Xing(160000, 392)).BitRate, 125);
    EXPECT_EQ(Read("a.mp3", Xing(160640, 392)).BitRate, 126) << "125.5";
    EXPECT_EQ(Read("a.mp3", Xing(159360, 392)).BitRate, 124) << "124.5";
}

TEST_F(ReadAudioInfoTest, TheFactorOfAnAverageRateIsThatOfTheLayer) {
    // Headers made of the first three bytes; the mark is looked for at position 36.
    const auto averageOf = [&](int second, std::uint64_t frames) {
        const std::string contents = Put(Mpeg(4000, 0, Bytes({0xFF, second, 0x90})), 35, "Xing");
        return Read("a.mp3", Put(contents, 43, Big(frames, 4))).BitRate;
    };
    EXPECT_EQ(averageOf(0xFF, 100), 147) << "Layer I: 12";
    EXPECT_EQ(averageOf(0xFD, 1), 1225) << "Layer II: 144";
    EXPECT_EQ(averageOf(0xF9, 10), 0) << "the reserved layer has none";
}

TEST_F(ReadAudioInfoTest, ARateAbove16BitsIsStoredAsZeroAndTheLengthStillUsesIt) {
    const AudioInfo& info = Read("a.mp3", Xing(4000000, 1)); // 1225000 kbit/s
    EXPECT_EQ(info.BitRate, 0);
    EXPECT_EQ(info.Length, 0);
    Read("a.mp3", Xing(200000000, 1150)); // 53260.9 kbit/s: 30 seconds
    EXPECT_EQ(file.AudioInfo.BitRate, 0);
    EXPECT_EQ(file.AudioInfo.Length, 30);
}

TEST_F(ReadAudioInfoTest, AXingMarkOfNoFramesGoesToTheFallback) {
    EXPECT_EQ(Read("a.mp3", Xing(5000, 0)).BitRate, 128);
}

TEST_F(ReadAudioInfoTest, AXingMarkWithTheReservedSampleRateGoesToTheFallback) {
    const AudioInfo& info = Read("a.mp3", Xing(5000, 10, Frame(0x9C)));
    EXPECT_EQ(info.BitRate, 128);
    EXPECT_EQ(info.Frequency, 0);
}

TEST_F(ReadAudioInfoTest, TheVbrMarkOfTheFileBeforeGovernsAFileWithoutAHeader) {
    Read("a.mp3", Xing(4000000, 6000));
    const AudioInfo& info = Read("b.mp3", Mpeg(255));
    EXPECT_EQ(info.Version, 25) << "stored, since the combination is not looked at";
    EXPECT_EQ(info.Layer, 0);
    EXPECT_EQ(info.Frequency, 22050);
    EXPECT_EQ(info.Mode, "Stereo");
    EXPECT_EQ(info.ProtectedFlag, "Ja");
    EXPECT_EQ(info.BitRate, 0);
    EXPECT_EQ(info.Length, 0);
}

TEST_F(ReadAudioInfoTest, FilesOf256MebibytesHaveNoLength) {
    const std::string path = File("a.mp3", Mpeg(5000));
    std::filesystem::resize_file(path, 268435455);
    ReadAudioInfo(path, file);
    EXPECT_EQ(file.AudioInfo.Length, 16777);
    std::filesystem::resize_file(path, 268435456);
    ReadAudioInfo(path, file);
    EXPECT_EQ(file.AudioInfo.Length, 0);
    EXPECT_EQ(file.AudioInfo.BitRate, 128);
    std::filesystem::resize_file(path, 5000000000);
    ReadAudioInfo(path, file);
    EXPECT_EQ(file.AudioInfo.Length, 0);
}

TEST_F(ReadAudioInfoTest, AFreeFormatFrameEndsAtItselfInTheFallback) {
    const AudioInfo& info = Read("a.mp3", Mpeg(5000, 0, Frame(0x00)));
    EXPECT_EQ(info.BitRate, 0);
    EXPECT_EQ(info.Length, 0);
    EXPECT_EQ(info.Mode, "Stereo") << "the record is stored all the same";
}

TEST_F(ReadAudioInfoTest, TheForbiddenIndexTakesThePatternThatComesFirst) {
    // An MPEG 2 Layer III header in front of the frame, which the search for frames does not see.
    const std::string contents = Put(Mpeg(50000, 100, Frame(0xF0)), 20, Bytes({0xFF, 0xF3, 0x90}));
    const AudioInfo& info = Read("a.mp3", contents);
    EXPECT_EQ(info.BitRate, 80);
    EXPECT_EQ(info.Length, 5);
}

TEST_F(ReadAudioInfoTest, SpeaksTheLanguageOfTheSettings) {
    settings.values["Language"] = "FRA";
    EXPECT_EQ(Read("a.mp3", Mpeg(300)).Mode, "Error : No Local Data");
    settings.values["Language"] = "GER";
    EXPECT_EQ(Read("a.mp3", Mpeg(300)).Mode, "Stereo");
}

TEST_F(ReadAudioInfoTest, ALanguageChangedByAnEventHoldsAtOnce) {
    settings.values["Language"] = "FRA";
    events.onDoEvents = [&] { settings.values["Language"] = "GER"; };
    EXPECT_EQ(Read("a.mp3", Mpeg(300)).PaddingFlag, "Nein");
}

class MpegFallbackTest : public ::testing::Test {
protected:
    static int Rate(std::size_t offset, std::initializer_list<int> bytes, std::size_t size = 4096) {
        std::string contents(size, '\0');
        const std::string pattern = Bytes(bytes);
        contents.replace(offset, std::min(pattern.size(), size - offset), pattern, 0, size - offset);
        return SearchBitRate(AsBytes(contents));
    }
};

TEST_F(MpegFallbackTest, AFileOf4095BytesIsNotSearched) {
    EXPECT_EQ(Rate(0, {0xFF, 0xFB, 0x90}, 4095), 0);
    EXPECT_EQ(Rate(0, {0xFF, 0xFB, 0x90}, 4096), 128);
}

TEST_F(MpegFallbackTest, ReadsTheWholeTable) {
    const int expected[6][16] = {
        {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448, 0}, // MPEG 1 Layer I
        {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384, 0},
        {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0},
        {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256, 0}, // MPEG 2 Layer I
        {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0},
        {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0}};
    const int seconds[6] = {0xFF, 0xFD, 0xFB, 0xF7, 0xF5, 0xF3};
    for (int column = 0; column < 6; ++column) {
        for (int row = 0; row < 16; ++row) {
            EXPECT_EQ(Rate(100, {0xFF, seconds[column], row << 4}), expected[column][row])
                << column << " " << row;
        }
    }
}

TEST_F(MpegFallbackTest, ReservedVersionsFollowTheirLowestBit) {
    EXPECT_EQ(Rate(0, {0xFF, 0xEB, 0x90}), 128) << "version bits 01 count as MPEG 1";
    EXPECT_EQ(Rate(0, {0xFF, 0xE3, 0x90}), 80) << "version bits 00 count as MPEG 2";
    EXPECT_EQ(Rate(0, {0xFF, 0xF9, 0x90}), 0) << "layer bits 00 are a column of zeros";
}

TEST_F(MpegFallbackTest, APatternHalfAByteLateIsFoundAndReadAsItStands) {
    // x FF Fx: the group begins two characters after the hit and is not shifted back.
    EXPECT_EQ(Rate(10, {0x1F, 0xFF, 0xB9, 0x90}), 0) << "B9: layer bits 00";
    EXPECT_EQ(Rate(10, {0x1F, 0xFE, 0xFB, 0x90}), 128);
    EXPECT_EQ(Rate(10, {0x1F, 0xFD, 0xFB, 0x90}), 0) << "only two top bits of the shifted byte";
}

TEST_F(MpegFallbackTest, TheFirstPatternWins) {
    EXPECT_EQ(Rate(10, {0xFF, 0xFB, 0xF0, 0xFF, 0xFB, 0x90}), 0);
    EXPECT_EQ(Rate(10, {0xFF, 0xDF, 0x00, 0xFF, 0xFB, 0x90}), 128) << "DF has only two top bits";
}

TEST_F(MpegFallbackTest, TheGroupEndsWithThe4096Characters) {
    EXPECT_EQ(Rate(4093, {0xFF, 0xFB, 0x90}, 5000), 128) << "x is 4094";
    EXPECT_EQ(Rate(4094, {0xFF, 0xFB, 0x90}, 5000), 0) << "x is 4095: the rate lies beyond";
    EXPECT_EQ(Rate(4095, {0xFF, 0xFB, 0x90}, 5000), 0);
    EXPECT_EQ(Rate(4092, {0x0F, 0xFE, 0xFB, 0x90}, 5000), 128);
    EXPECT_EQ(Rate(4093, {0x0F, 0xFE, 0xFB, 0x90}, 5000), 0);
}

TEST_F(MpegFallbackTest, NoPatternIsNoRate) {
    EXPECT_EQ(Rate(0, {}), 0);
}

} // namespace quavernet::test
