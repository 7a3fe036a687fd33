// Feeds any bytes, as the beginning of an MPEG file, to the search for a frame header, the reading of its
// fields and of a Xing mark, and the fallback search for a bit rate, and compares what comes out with the
// slow reading of the tests, which shares no code with it.
#include "inspect/AudioInfoModel.h"
#include "inspect/FileBytes.h"
#include "inspect/MpegFallback.h"
#include "inspect/MpegHeader.h"
#include "inspect/ReadFile.h"

#include "FuzzInput.h"
#include "FuzzServices.h"

#include <algorithm>
#include <array>
#include <string>

namespace {

using namespace quavernet;
using fuzz::Require;

bool Same(const AudioInfo& a, const AudioInfo& b) {
    return a.BitRate == b.BitRate && a.Frequency == b.Frequency && a.Mode == b.Mode &&
           a.Emphasis == b.Emphasis && a.Version == b.Version && a.Layer == b.Layer &&
           a.PaddingFlag == b.PaddingFlag && a.ProtectedFlag == b.ProtectedFlag && a.Length == b.Length &&
           a.CopyFlag == b.CopyFlag && a.OriginalFlag == b.OriginalFlag && a.PrivateFlag == b.PrivateFlag;
}

template <typename T> bool IsOneOf(const T& value, std::initializer_list<T> values) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

void RequireInRange(const AudioInfo& info) {
    Require(info.BitRate >= 0 && info.Length >= 0);
    Require(IsOneOf(info.Frequency, {0, 44100, 48000, 32000, 22050, 24000, 16000}));
    Require(IsOneOf<int>(info.Version, {0, 1, 2, 25}));
    Require(IsOneOf<int>(info.Layer, {0, 1, 2, 3}));
    Require(IsOneOf<std::string>(info.Emphasis, {"", "no", "50/15", "reserviert", "CCITT J 17"}));
    for (const std::string& flag :
         {info.PaddingFlag, info.ProtectedFlag, info.CopyFlag, info.OriginalFlag, info.PrivateFlag}) {
        Require(IsOneOf<std::string>(flag, {"", "Ja", "Nein"}));
    }
}

// The file under a name, after one whose Xing mark was kept or not.
void ReadAs(const std::string& path, std::string_view contents, bool isVbr, double frames) {
    CurrentFile file;
    file.IsVbr = isVbr;
    file.VbrFrames = frames;
    test::AudioInfoModel model;
    model.isVbr = isVbr;
    model.vbrFrames = frames;
    ReadAudioInfo(path, FileBytes(fuzz::BytesOf(contents)), file);
    Require(Same(file.AudioInfo, model.ReadAudioInfo(path, std::string(contents))));
    Require(file.IsVbr == model.isVbr && file.VbrFrames == model.vbrFrames);
    RequireInRange(file.AudioInfo);
}

void ReadHeader(std::string_view contents) {
    const auto bytes = fuzz::BytesOf(contents);
    const auto head = bytes.first(std::min(bytes.size(), FileBytes::HeadSize));
    const auto header = FindMpegHeader(head, contents.size());
    Require(header.has_value() == (contents.size() >= 256));
    if (header) {
        Require(header->bits.size() <= 32 && (header->bits.empty() || header->bits.front() == '1'));
        Require(header->bits == BytesToBits(BitsToNumber(header->bits)));
        Require(header->isVbr || header->xingFrames == 0);
        // Nothing after the head counts, whatever the size of the file.
        const auto huge = FindMpegHeader(head, std::uint64_t{1} << 40);
        Require(huge->bits == header->bits && huge->xingFrames == header->xingFrames);
    }
    const std::int16_t rate = SearchBitRate(head);
    Require(rate >= 0 && rate <= 448 && rate % 8 == 0);
    Require(rate == 0 || head.size() >= 4096);
    Require(rate == SearchBitRate(head.first(std::min<std::size_t>(head.size(), 4096))));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view contents = fuzz::TextOf(data, size);
    const fuzz::FuzzServices doubles;
    ReadHeader(contents);
    ReadAs("/music/x.mp3", contents, false, 0);
    ReadAs("/music/x.MP3", contents, true, 1000.0);
    ReadAs("/music/x.ogg", contents, true, 0);
    return 0;
}
