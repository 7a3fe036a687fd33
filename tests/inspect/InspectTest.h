// The base of the inspection's tests: a folder, the real tag component, builders of MPEG and wave files.
#pragma once

#include "adapters/id3v2/TagLibComponent.h"
#include "inspect/modMp3Info.h"
#include "support/LogicTest.h"
#include "support/RealFiles.h"
#include "support/TagBytes.h"
#include "support/TemporaryFolder.h"
#include "support/TestFiles.h"

#include <string>

namespace quavernet::test {

class InspectTest : public LogicTest {
protected:
    InspectTest() { mainModule.TagComponent = CreateTagLibComponent(RealFiles()); }

    /// Writes a file into the folder and gives its path.
    std::string File(const std::string& name, std::string_view contents) {
        WriteFile(folder / name, contents);
        return folder / name;
    }

    /// Writes a file and reads its stream facts.
    const AudioInfo& Read(const std::string& name, std::string_view contents) {
        ReadAudioInfo(File(name, contents), file);
        return file.AudioInfo;
    }

    /// Writes a file under the name that a scan would give it and inspects it whole.
    const CurrentFile& Inspect(const std::string& name, std::string_view contents) {
        const std::string path = File(name, contents);
        file.CurrentPath = path;
        file.CurrentFileName = name;
        InspectFile(path, file);
        return file;
    }

    /// A frame of MPEG 1 Layer III: 128 kbit/s, 44100 Hz, stereo unless told otherwise.
    static std::string Frame(int third = 0x90, int fourth = 0, int second = 0xFB) {
        return Bytes({0xFF, second, third, fourth});
    }

    /// A file of `size` bytes 0 with `bytes` at the offset.
    static std::string Mpeg(std::size_t size, std::size_t offset = 0, std::string_view bytes = Frame()) {
        return Put(std::string(size, '\0'), offset, bytes);
    }

    /// As Mpeg, with a Xing mark of so many frames.
    static std::string Xing(std::size_t size, std::uint64_t frames, std::string_view header = Frame()) {
        return Put(Put(Mpeg(size, 0, header), 36, "Xing"), 44, Big(frames, 4));
    }

    static std::string Chunk(const std::string& id, const std::string& contents) {
        return id + Little(contents.size(), 4) + contents + std::string(contents.size() % 2, '\0');
    }

    static std::string Format(int channels, std::uint32_t rate, std::uint32_t average, int bits) {
        return Chunk("fmt ", Little(1, 2) + Little(static_cast<std::uint64_t>(channels), 2) +
                                 Little(rate, 4) + Little(average, 4) + Little(4, 2) +
                                 Little(static_cast<std::uint64_t>(bits), 2));
    }

    static std::string Riff(const std::string& chunks) {
        return "RIFF" + Little(chunks.size() + 4, 4) + "WAVE" + chunks;
    }

    /// All fields as a new record has them.
    static void ExpectCleared(const AudioInfo& info) {
        EXPECT_EQ(info.BitRate, 0);
        EXPECT_EQ(info.Frequency, 0);
        EXPECT_EQ(info.Version, 0);
        EXPECT_EQ(info.Layer, 0);
        EXPECT_EQ(info.Length, 0);
        EXPECT_EQ(info.Mode + info.Emphasis + info.PaddingFlag + info.ProtectedFlag + info.CopyFlag +
                      info.OriginalFlag + info.PrivateFlag,
                  "");
    }

    TemporaryFolder folder;
    CurrentFile file;
};

} // namespace quavernet::test
