#include "inspect/AudioInfoModel.h"

#include "inspect/FileBytes.h"
#include "inspect/ReadFile.h"
#include "inspect/modMp3Info.h"
#include "support/LogicTest.h"
#include "support/TemporaryFolder.h"
#include "support/TestFiles.h"

#include <random>

namespace quavernet::test {

namespace {

std::string Describe(const AudioInfo& info) {
    return std::to_string(info.BitRate) + "|" + std::to_string(info.Frequency) + "|" + info.Mode + "|" +
           info.Emphasis + "|" + std::to_string(info.Version) + "|" + std::to_string(info.Layer) + "|" +
           info.PaddingFlag + "|" + info.ProtectedFlag + "|" + std::to_string(info.Length) + "|" +
           info.CopyFlag + "|" + info.OriginalFlag + "|" + info.PrivateFlag;
}

} // namespace

class AudioInfoPropertyTest : public LogicTest {
protected:
    int Number(int from, int to) { return std::uniform_int_distribution(from, to)(random); }
    bool Chance(int percent) { return Number(1, 100) <= percent; }

    std::size_t Size() {
        switch (Number(0, 5)) {
        case 0:
            return static_cast<std::size_t>(Number(0, 300));
        case 1:
            return static_cast<std::size_t>(Number(250, 260));
        case 2:
            return static_cast<std::size_t>(Number(4090, 4100));
        case 3:
            return static_cast<std::size_t>(Number(4990, 5130));
        default:
            return static_cast<std::size_t>(Number(256, 9000));
        }
    }

    // Noise, zeros, or bytes of which frame headers are made.
    std::string Filling(std::size_t size) {
        static const std::string headerBytes =
            Bytes({0xFF, 0xFA, 0xFB, 0xFF, 0xF3, 0x0F, 0xFE, 0xE0, 0xEF, 0, 1});
        const int kind = Number(0, 3);
        std::string bytes(size, '\0');
        for (char& c : bytes) {
            if (kind == 0 || (kind == 2 && Chance(3))) {
                c = static_cast<char>(Number(0, 255));
            } else if (kind == 1 || (kind == 3 && Chance(1))) {
                c = headerBytes[static_cast<std::size_t>(Number(0, 10))];
            }
        }
        return bytes;
    }

    void PutAt(std::string& file, int offset, const std::string& bytes) {
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const std::size_t at = static_cast<std::size_t>(offset) + i;
            if (at < file.size()) {
                file[at] = bytes[i];
            }
        }
    }

    std::string File() {
        std::string file = Filling(Size());
        if (Chance(60)) {
            const int at = Chance(50) ? Number(0, 5) : Number(0, 5060);
            PutAt(file, at,
                  Bytes({0xFF, Chance(80) ? Number(0xFA, 0xFB) : Number(0xE0, 0xFF), Number(0, 255),
                         Number(0, 255)}));
            if (Chance(40)) {
                PutAt(file, at + 36, "Xing");
                PutAt(file, at + 44,
                      Big(static_cast<std::uint64_t>(Chance(10) ? 0 : Number(1, 1 << Number(1, 30))), 4));
            }
        } else if (Chance(30)) {
            PutAt(file, 35, "Xing"); // Where it is looked for if no frame is found.
        }
        return file;
    }

    std::string Path() {
        static const std::vector<std::string> paths = {"/m/a.mp3", "/m/a.MP3", "/m/a.Mp3", "/m/a.ogg", "mp3"};
        return Chance(70) ? paths[0] : paths[static_cast<std::size_t>(Number(0, 4))];
    }

    std::mt19937 random{20261120};
    AudioInfoModel model;
    CurrentFile record;
};

TEST_F(AudioInfoPropertyTest, EqualsTheSlowReadingOnRandomFiles) {
    int withRate = 0, withVbr = 0, cleared = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::string file = File();
        const std::string path = Path();
        ReadAudioInfo(path, FileBytes(AsBytes(file)), record);
        const AudioInfo& info = record.AudioInfo;
        ASSERT_EQ(Describe(info), Describe(model.ReadAudioInfo(path, file))) << "file " << i;
        ASSERT_EQ(record.IsVbr, model.isVbr) << "file " << i;
        ASSERT_EQ(record.VbrFrames, model.vbrFrames) << "file " << i;
        withRate += info.BitRate != 0;
        withVbr += model.isVbr;
        cleared += info.Mode.empty();
    }
    // The files must reach every branch, or the comparison proves nothing.
    EXPECT_GT(withRate, 4000);
    EXPECT_GT(withVbr, 1500);
    EXPECT_GT(cleared, 1500);
}

TEST_F(AudioInfoPropertyTest, EqualsTheSlowReadingOnEveryHeader) {
    std::string file(5000, '\0');
    for (int second : {0xFA, 0xFB}) {
        for (int third = 0; third < 256; ++third) {
            for (int fourth = 0; fourth < 256; ++fourth) {
                file = Put(file, 100, Bytes({0xFF, second, third, fourth}));
                ReadAudioInfo("a.mp3", FileBytes(AsBytes(file)), record);
                ASSERT_EQ(Describe(record.AudioInfo), Describe(model.ReadAudioInfo("a.mp3", file)))
                    << second << " " << third << " " << fourth;
            }
        }
    }
}

TEST_F(AudioInfoPropertyTest, ReadsTheSameBitsFromADiskAsTheSlowReading) {
    const TemporaryFolder folder;
    for (int i = 0; i < 500; ++i) {
        const std::string contents = File();
        WriteFile(folder / "a.mp3", contents);
        ASSERT_EQ(ReadMpegHeader(folder / "a.mp3", record), model.ReadMpegHeader(contents)) << "file " << i;
    }
}

} // namespace quavernet::test
