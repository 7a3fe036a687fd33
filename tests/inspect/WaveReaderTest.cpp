#include "inspect/InspectTest.h"

#include "inspect/WaveReader.h"
#include "support/RealAudio.h"

#include <filesystem>
#include <random>

namespace quavernet::test {

using WaveReaderTest = InspectTest;

TEST_F(WaveReaderTest, ReadsARealWaveOfCompactDiscQuality) {
    ReadAudioInfo(RealWave(2, 44100, 2, 16), file);
    EXPECT_EQ(file.AudioInfo.BitRate, 16) << "bits per sample";
    EXPECT_EQ(file.AudioInfo.Frequency, 44100);
    EXPECT_EQ(file.AudioInfo.Mode, "stereo");
    EXPECT_EQ(file.AudioInfo.Length, 2);
    EXPECT_EQ(file.AudioInfo.Version, 0);
    EXPECT_EQ(file.AudioInfo.Layer, 0);
    EXPECT_EQ(file.AudioInfo.Emphasis + file.AudioInfo.PaddingFlag + file.AudioInfo.ProtectedFlag +
                  file.AudioInfo.CopyFlag + file.AudioInfo.OriginalFlag + file.AudioInfo.PrivateFlag,
              "");
}

TEST_F(WaveReaderTest, TheFrequencyIsCutToAMultipleOfTen) {
    ReadAudioInfo(RealWave(1, 11025, 1, 8), file);
    EXPECT_EQ(file.AudioInfo.Frequency, 11020);
    EXPECT_EQ(file.AudioInfo.BitRate, 8);
    EXPECT_EQ(file.AudioInfo.Mode, "mono");
    EXPECT_EQ(Read("a.wav", Riff(Format(1, 9, 100, 8) + Chunk("data", ""))).Frequency, 0);
    EXPECT_EQ(Read("a.wav", Riff(Format(1, 44109, 100, 8) + Chunk("data", ""))).Frequency, 44100);
}

TEST_F(WaveReaderTest, ReadsWavesOf24Bits) {
    ReadAudioInfo(RealWave(1, 48000, 2, 24), file);
    EXPECT_EQ(file.AudioInfo.BitRate, 24);
    EXPECT_EQ(file.AudioInfo.Length, 1);
}

TEST_F(WaveReaderTest, TheExtensionIsComparedInUppercase) {
    const std::string wave = Riff(Format(2, 44100, 176400, 16) + Chunk("data", std::string(176400, '\0')));
    EXPECT_EQ(Read("a.WaV", wave).Length, 1);
    EXPECT_EQ(Read("a_wav", wave).Length, 0) << "the point belongs to it";
}

TEST_F(WaveReaderTest, MoreThanTwoChannelsHaveNoMode) {
    const AudioInfo& info = Read("a.wav", Riff(Format(3, 44100, 264600, 16) + Chunk("data", "")));
    EXPECT_EQ(info.Mode, "");
    EXPECT_EQ(info.BitRate, 16);
    EXPECT_EQ(Read("a.wav", Riff(Format(0, 44100, 264600, 16) + Chunk("data", ""))).Mode, "");
}

TEST_F(WaveReaderTest, TheLengthIsRoundedHalfAwayFromZero) {
    const auto length = [&](std::size_t size) {
        return Read("a.wav", Riff(Format(1, 1000, 1000, 8) + Chunk("data", std::string(size, '\0')))).Length;
    };
    EXPECT_EQ(length(499), 0);
    EXPECT_EQ(length(500), 1);
    EXPECT_EQ(length(1500), 2);
    EXPECT_EQ(length(2499), 2);
    EXPECT_EQ(length(2500), 3);
}

TEST_F(WaveReaderTest, AnAverageOfZeroGivesNoLength) {
    const AudioInfo& info = Read("a.wav", Riff(Format(2, 44100, 0, 16) + Chunk("data", "abcd")));
    EXPECT_EQ(info.Length, 0);
    EXPECT_EQ(info.BitRate, 16) << "the other fields are read";
}

TEST_F(WaveReaderTest, TheDeclaredSizeCountsAlsoWhereTheFileIsCutOff) {
    const std::string wave = Riff(Format(2, 44100, 1000, 16)) + "data" + Little(0xFFFFFFFF, 4);
    EXPECT_EQ(Read("a.wav", wave).Length, 4294967);
}

TEST_F(WaveReaderTest, ValuesThatDoNotFitLeaveTheirFieldAtZero) {
    const AudioInfo& info =
        Read("a.wav", Riff(Format(2, 0xFFFFFFFF, 1, 0xFFFF)) + "data" + Little(0xFFFFFFFF, 4));
    EXPECT_EQ(info.Frequency, 0);
    EXPECT_EQ(info.BitRate, 0);
    EXPECT_EQ(info.Length, 0);
    EXPECT_EQ(info.Mode, "stereo");
}

TEST_F(WaveReaderTest, OtherChunksArePassedOverWhereverTheyStand) {
    const std::string odd = Chunk("LIST", "abc"); // Filled up to an even offset.
    EXPECT_EQ(Read("a.wav", Riff(odd + Format(2, 44100, 4, 16) + odd + Chunk("data", "abcdefgh"))).Length, 2);
    const std::string far = Chunk("junk", std::string(100000, 'x')); // Beyond what is read at first.
    EXPECT_EQ(Read("a.wav", Riff(far + Format(2, 44100, 4, 16) + far + Chunk("data", "abcdefgh"))).Length, 2);
    EXPECT_EQ(Read("a.wav", Riff(Chunk("data", "abcdefgh") + Format(2, 44100, 4, 16))).Length, 2);
}

TEST_F(WaveReaderTest, AThousandOtherChunksDoNotKeepAWaveFromBeingRead) {
    std::string chunks;
    for (int i = 0; i < 1000; ++i) {
        chunks += Chunk("junk", "ab");
    }
    EXPECT_EQ(Read("a.wav", Riff(chunks + Format(2, 44100, 4, 16) + Chunk("data", "abcdefgh"))).Length, 2);
}

TEST_F(WaveReaderTest, TheFirstChunkOfItsKindCounts) {
    EXPECT_EQ(
        Read("a.wav", Riff(Format(1, 44100, 4, 8) + Format(2, 8000, 4, 16) + Chunk("data", ""))).BitRate, 8);
}

TEST_F(WaveReaderTest, AnExtendedFormatIsReadByItsFirstSixteenBytes) {
    std::string format = Format(2, 44100, 4, 16).substr(8) + std::string(24, 'x');
    EXPECT_EQ(Read("a.wav", Riff(Chunk("fmt ", format) + Chunk("data", "abcdefgh"))).Length, 2);
}

TEST_F(WaveReaderTest, WhatIsNoWaveLeavesTheRecordCleared) {
    const std::string format = Format(2, 44100, 176400, 16);
    const std::string data = Chunk("data", "abcd");
    const std::string good = Riff(format + data);
    const std::pair<const char*, std::string> hostile[] = {
        {"empty", ""},
        {"one byte", "R"},
        {"RIFF alone", "RIFF"},
        {"header cut off", good.substr(0, 11)},
        {"no chunk", good.substr(0, 12)},
        {"chunk header cut off", good.substr(0, 19)},
        {"format cut off", good.substr(0, 30)},
        {"no data chunk", Riff(format)},
        {"data header cut off", good.substr(0, 43)},
        {"no format chunk", Riff(data)},
        {"RIFX", Put(good, 0, "RIFX")},
        {"no WAVE", Put(good, 8, "AVI ")},
        {"lower case", Put(good, 0, "riff")},
        {"format too short", Riff(Chunk("fmt ", std::string(14, '\1')) + data)},
        {"format of a huge size", Riff(format.substr(0, 4) + Little(0xFFFFFFFF, 4) + "abc")},
        {"huge chunk in front", Riff("junk" + Little(0xFFFFFFFF, 4) + format + data)},
        {"MPEG", Mpeg(5000)},
    };
    for (const auto& [what, contents] : hostile) {
        SCOPED_TRACE(what);
        Read("good.wav", good);
        ExpectCleared(Read("a.wav", contents));
    }
}

TEST_F(WaveReaderTest, AFileOfEmptyChunksEnds) {
    std::string chunks;
    for (int i = 0; i < 100000; ++i) {
        chunks += "junk" + Little(0, 4);
    }
    EXPECT_FALSE(ParseWave(AsBytes(Riff(chunks + Format(2, 44100, 4, 16) + Chunk("data", "")))));
}

TEST_F(WaveReaderTest, FilesThatAreMissingOrNoPlainFilesLeaveTheRecordCleared) {
    ReadAudioInfo(folder / "missing.wav", file);
    ExpectCleared(file.AudioInfo);
    std::filesystem::create_directory(folder / "folder.wav");
    ReadAudioInfo(folder / "folder.wav", file);
    ExpectCleared(file.AudioInfo);
}

TEST_F(WaveReaderTest, NoMutationOfAWaveBreaksTheParser) {
    const std::string good =
        Riff(Chunk("LIST", "abc") + Format(2, 44100, 176400, 16) + Chunk("data", "abcd"));
    std::mt19937 random(7);
    int parsed = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string bytes = good.substr(0, random() % (good.size() + 1));
        for (unsigned n = random() % 4; n > 0 && !bytes.empty(); --n) {
            bytes[random() % bytes.size()] = static_cast<char>(random());
        }
        parsed += ParseWave(AsBytes(bytes)).has_value();
    }
    EXPECT_GT(parsed, 100);
}

} // namespace quavernet::test
