#include "inspect/modMp3Info.h"

#include "inspect/FileBytes.h"
#include "inspect/MpegFallback.h"
#include "inspect/MpegHeader.h"
#include "inspect/ReadFile.h"
#include "inspect/WaveReader.h"

#include "app/AudioKind.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "app/TextNumbers.h"
#include "platform/RuntimeError.h"

#include <array>
#include <cmath>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace quavernet {

namespace {

constexpr std::array<std::int16_t, 4> Versions = {25, 0, 2, 1};
constexpr std::array<std::int16_t, 4> Layers = {0, 3, 2, 1};
constexpr std::array<std::int32_t, 3> Mpeg1Frequencies = {44100, 48000, 32000};
constexpr std::array<std::int32_t, 3> Mpeg2Frequencies = {22050, 24000, 16000};

constexpr int BitRateCount = 15;
constexpr std::int16_t Mpeg1Layer1[BitRateCount] = {0,   32,  64,  96,  128, 160, 192, 224,
                                                    256, 288, 320, 352, 384, 416, 448};
constexpr std::int16_t Mpeg1Layer2[BitRateCount] = {0,   32,  48,  56,  64,  80,  96, 112,
                                                    128, 160, 192, 224, 256, 320, 384};
constexpr std::int16_t Mpeg1Layer3[BitRateCount] = {0,   32,  40,  48,  56,  64,  80, 96,
                                                    112, 128, 160, 192, 224, 256, 320};
constexpr std::int16_t Mpeg2Layer1[BitRateCount] = {0,   32,  48,  56,  64,  80,  96, 112,
                                                    128, 144, 160, 176, 192, 224, 256};
constexpr std::int16_t Mpeg2Layer23[BitRateCount] = {0,  8,  16, 24,  32,  40,  48, 56,
                                                     64, 80, 96, 112, 128, 144, 160};

// Null for a combination that does not exist.
const std::int16_t* BitRatesOf(int version, int layer) {
    const bool mpeg2 = version == 2 || version == 25;
    if (layer == 1) {
        return version == 1 ? Mpeg1Layer1 : mpeg2 ? Mpeg2Layer1 : nullptr;
    }
    if (layer == 2 || layer == 3) {
        return version == 1 ? (layer == 2 ? Mpeg1Layer2 : Mpeg1Layer3) : mpeg2 ? Mpeg2Layer23 : nullptr;
    }
    return nullptr;
}

// Average rate of a file with a Xing mark; 0 where it can't be computed. The order of the steps is fixed.
double VbrBitRate(std::uint64_t fileSize, std::int32_t frequency, double vbrFrames, int layer) {
    constexpr std::array<double, 4> Factors = {0, 12, 144, 144}; // No layer, no factor.
    const double frames = std::floor(vbrFrames);
    if (layer == 0 || frames == 0) {
        return 0;
    }
    return static_cast<double>(fileSize) * frequency / frames / 1000 /
           Factors[static_cast<std::size_t>(layer)];
}

// Play time in whole seconds. The file's bits must fit 32 bits, and a rate of 0 gives no time either.
std::int32_t PlayTime(std::uint64_t fileSize, double bitRate) {
    const std::int32_t bits = Narrow32(static_cast<double>(fileSize) * 8);
    if (bitRate == 0) {
        return 0;
    }
    return Narrow32(std::floor(bits / bitRate / 1000));
}

// The header of the file, kept in IsVbr and VbrFrames too. Both keep their values if no header can be read.
std::string TakeMpegHeader(const FileBytes& bytes, CurrentFile& file) {
    auto header = bytes.IsOpen() ? FindMpegHeader(bytes.Head(), bytes.Size()) : std::nullopt;
    if (!header) {
        return {};
    }
    file.IsVbr = header->isVbr;
    if (header->isVbr) {
        file.VbrFrames = header->xingFrames;
    }
    return std::move(header->bits);
}

// Number of up to `count` bits of a header from a position that counts from 1. Bits after its end are
// missing, not 0; where none is left the number is 0.
std::uint32_t BitField(std::string_view header, std::size_t position, std::size_t count) {
    return position > header.size() ? 0 : BitsToNumber(header.substr(position - 1, count));
}

// What the mode, emphasis and flag bits say, in words.
void ReadTexts(std::string_view header, AudioInfo& info) {
    const std::vector<std::string> texts = LoadResStrings(
        {Texts::Stereo + static_cast<std::int32_t>(BitField(header, 25, 2)), Texts::No, Texts::Yes});
    info.Mode = texts[0];
    constexpr std::array<const char*, 4> Emphases = {"no", "50/15", nullptr, "CCITT J 17"};
    const char* emphasis = Emphases[BitField(header, 31, 2)];
    info.Emphasis = emphasis != nullptr ? emphasis : LoadResString(Texts::ReservedEmphasis);
    const std::span<const std::string> noYes = std::span(texts).subspan(1);
    info.OriginalFlag = noYes[BitField(header, 30, 1)];
    info.CopyFlag = noYes[BitField(header, 29, 1)];
    info.PaddingFlag = noYes[BitField(header, 23, 1)];
    info.PrivateFlag = noYes[BitField(header, 24, 1)];
    info.ProtectedFlag = noYes[1 - BitField(header, 16, 1)];
}

// Sample rate and working bit rate of an MPEG file; false if version or layer do not exist.
bool ReadRates(std::string_view header, const FileBytes& bytes, const CurrentFile& file, AudioInfo& info,
               double& bitRate) {
    if (info.Version == 0) {
        return false;
    }
    const std::uint32_t frequency = BitField(header, 21, 2);
    if (frequency < Mpeg1Frequencies.size()) {
        info.Frequency = (info.Version == 1 ? Mpeg1Frequencies : Mpeg2Frequencies)[frequency];
    }
    if (file.IsVbr) {
        bitRate = VbrBitRate(bytes.Size(), info.Frequency, file.VbrFrames, info.Layer);
    } else {
        const std::int16_t* rates = BitRatesOf(info.Version, info.Layer);
        if (rates == nullptr) {
            return false;
        }
        const std::uint32_t index = BitField(header, 17, 4);
        bitRate = index < BitRateCount ? rates[index] : 0;
    }
    if (bitRate == 0) {
        bitRate = SearchBitRate(bytes.Head());
    }
    return true;
}

void ReadMpeg(const std::string& path, const FileBytes& bytes, CurrentFile& file) {
    const std::string header = TakeMpegHeader(bytes, file);
    AudioInfo info;
    info.Version = Versions[BitField(header, 12, 2)];
    info.Layer = Layers[BitField(header, 14, 2)];
    if (LowerAscii(RightCharacters(path, 3)) == "mp3") {
        double bitRate = 0;
        if (!ReadRates(header, bytes, file, info, bitRate)) {
            return;
        }
        IgnoreFailure([&] { info.Length = PlayTime(bytes.Size(), bitRate); });
        IgnoreFailure([&] { info.BitRate = Narrow16(bitRate); });
    }
    ReadTexts(header, info);
    file.AudioInfo = std::move(info);
}

void ReadWave(const FileBytes& bytes, AudioInfo& info) {
    const auto facts = bytes.IsOpen() ? ParseWave(bytes) : std::nullopt;
    if (!facts) {
        return;
    }
    const std::uint32_t tensOfHertz = facts->samplesPerSecond / 10;
    IgnoreFailure([&] { info.Frequency = Narrow32(tensOfHertz * 10.0); });
    IgnoreFailure([&] { info.BitRate = Narrow16(facts->bitsPerSample); });
    if (facts->averageBytesPerSecond != 0) {
        const double seconds = static_cast<double>(facts->dataBytes) / facts->averageBytesPerSecond;
        IgnoreFailure([&] { info.Length = Narrow32(Val(FormatFixed(seconds, 1, 0, services.regional))); });
    }
    info.Mode = facts->channels == 1 ? "mono" : facts->channels == 2 ? "stereo" : "";
}

} // namespace

void ReadAudioInfo(const std::string& path, const FileBytes& bytes, CurrentFile& file) {
    services.events->DoEvents();
    file.AudioInfo = AudioInfo();
    if (path.empty()) {
        return;
    }
    if (AudioKindOf(path) == AudioKind::Wav) {
        ReadWave(bytes, file.AudioInfo);
        return;
    }
    services.events->DoEvents();
    ReadMpeg(path, bytes, file);
}

void ReadAudioInfo(const std::string& path, CurrentFile& file) {
    ReadAudioInfo(path, FileBytes(path), file);
}

std::string ReadMpegHeader(const std::string& path, CurrentFile& file) {
    return TakeMpegHeader(FileBytes(path), file);
}

} // namespace quavernet
