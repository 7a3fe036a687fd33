// Feeds any bytes to the reader of wave files, in memory and from a file, and compares what comes out with a
// second walk over the chunks.
#include "inspect/FileBytes.h"
#include "inspect/ReadFile.h"
#include "inspect/WaveReader.h"
#include "support/TemporaryFolder.h"

#include "FuzzInput.h"
#include "FuzzServices.h"

#include <optional>
#include <string>

namespace {

using namespace quavernet;
using fuzz::Require;

std::uint64_t Number(std::string_view bytes) {
    std::uint64_t value = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) {
        value = value * 256 + static_cast<unsigned char>(bytes[i]);
    }
    return value;
}

// The chunks one after the other, each cut off the front of what is left; the first of a kind counts.
std::optional<WaveFacts> Model(std::string_view file) {
    if (file.size() < 12 || file.substr(0, 4) != "RIFF" || file.substr(8, 4) != "WAVE") {
        return std::nullopt;
    }
    file.remove_prefix(12);
    std::optional<std::string_view> format;
    std::optional<std::uint64_t> dataSize;
    for (int chunk = 0; chunk < 1024 && file.size() >= 8; ++chunk) {
        const std::string_view id = file.substr(0, 4);
        const std::uint64_t size = Number(file.substr(4, 4));
        file.remove_prefix(8);
        if (id == "fmt " && !format) {
            if (size < 16 || file.size() < 16) {
                return std::nullopt;
            }
            format = file.substr(0, 16);
        } else if (id == "data" && !dataSize) {
            dataSize = size;
        }
        if (format && dataSize) {
            WaveFacts facts;
            facts.channels = static_cast<std::uint16_t>(Number(format->substr(2, 2)));
            facts.samplesPerSecond = static_cast<std::uint32_t>(Number(format->substr(4, 4)));
            facts.averageBytesPerSecond = static_cast<std::uint32_t>(Number(format->substr(8, 4)));
            facts.bitsPerSample = static_cast<std::uint16_t>(Number(format->substr(14, 2)));
            facts.dataBytes = static_cast<std::uint32_t>(*dataSize);
            return facts;
        }
        const std::uint64_t step = size + size % 2;
        file.remove_prefix(step < file.size() ? static_cast<std::size_t>(step) : file.size());
    }
    return std::nullopt;
}

bool Same(const std::optional<WaveFacts>& a, const std::optional<WaveFacts>& b) {
    return a.has_value() == b.has_value() &&
           (!a || (a->samplesPerSecond == b->samplesPerSecond &&
                   a->averageBytesPerSecond == b->averageBytesPerSecond && a->dataBytes == b->dataBytes &&
                   a->channels == b->channels && a->bitsPerSample == b->bitsPerSample));
}

// What the record must hold, in whole numbers alone. What does not fit its field leaves it at 0.
void RequireRecord(const std::optional<WaveFacts>& facts, const AudioInfo& info) {
    Require(info.Version == 0 && info.Layer == 0);
    Require((info.Emphasis + info.PaddingFlag + info.ProtectedFlag + info.CopyFlag + info.OriginalFlag +
             info.PrivateFlag)
                .empty());
    const WaveFacts none;
    const WaveFacts& wave = facts ? *facts : none;
    Require(info.Mode == (wave.channels == 1 ? "mono" : wave.channels == 2 ? "stereo" : ""));
    Require(info.BitRate == (wave.bitsPerSample <= 32767 ? wave.bitsPerSample : 0));
    const std::uint64_t frequency = std::uint64_t{wave.samplesPerSecond} / 10 * 10;
    Require(info.Frequency == static_cast<std::int64_t>(frequency <= 2147483647 ? frequency : 0));
    const std::uint64_t average = wave.averageBytesPerSecond;
    const std::uint64_t seconds =
        average == 0 ? 0 : (2 * std::uint64_t{wave.dataBytes} + average) / (2 * average);
    Require(info.Length == static_cast<std::int64_t>(seconds <= 2147483647 ? seconds : 0));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    static const std::string path = folder / "x.wav";
    const std::string_view contents = fuzz::TextOf(data, size);
    const fuzz::FuzzServices doubles;
    const auto expected = Model(contents);
    Require(Same(ParseWave(fuzz::BytesOf(contents)), expected));
    CurrentFile file;
    ReadAudioInfo(path, FileBytes(fuzz::BytesOf(contents)), file);
    RequireRecord(expected, file.AudioInfo);
    fuzz::WriteWhole(path, contents);
    Require(Same(ParseWave(FileBytes(path)), expected));
    Require(fuzz::ReadWhole(path) == contents);
    return 0;
}
