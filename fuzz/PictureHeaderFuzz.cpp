// Feeds any bytes to what looks at a picture before its decoder does, and compares it with a second walk over
// the markers of a JPEG, in memory.
#include "extras/PictureHeader.h"
#include "support/TemporaryFolder.h"

#include "FuzzInput.h"
#include "FuzzServices.h"

#include <limits>
#include <string>

namespace {

using namespace quavernet;
using fuzz::Require;
using fuzz::TakeByte;

constexpr std::uint64_t TooMuch = std::numeric_limits<std::uint64_t>::max();

// Cuts off all up to the next marker and the marker itself, which is given; 0 if there is none.
unsigned TakeMarker(std::string_view& rest) {
    for (;;) {
        const std::size_t start = rest.find('\xFF');
        const std::size_t end =
            start == std::string_view::npos ? start : rest.find_first_not_of('\xFF', start);
        if (end == std::string_view::npos) {
            rest = {};
            return 0;
        }
        rest.remove_prefix(end);
        if (const unsigned marker = TakeByte(rest); marker != 0) {
            return marker;
        }
    }
}

unsigned TakeNumber(std::string_view& rest) {
    const unsigned high = TakeByte(rest);
    return high * 256 + TakeByte(rest);
}

std::uint64_t EightsIn(std::uint64_t length) {
    return length / 8 + (length % 8 == 0 ? 0 : 1);
}

// The bytes of a segment from its length on; false if the length is cut or too short.
bool TakeSegment(std::string_view& rest, std::string_view& segment) {
    if (rest.size() < 2) {
        return false;
    }
    std::string_view look = rest;
    const std::size_t length = TakeNumber(look);
    segment = rest.substr(2, length < 2 ? 0 : length - 2);
    return length >= 2;
}

std::uint64_t Model(std::string_view rest) {
    rest.remove_prefix(rest.size() < 2 ? rest.size() : 2);
    std::uint64_t blocks = 0;
    unsigned components = 0;
    bool progressive = false;
    for (int segments = 0; segments < 10000; ++segments) {
        const unsigned marker = TakeMarker(rest);
        if (marker == 0 || marker == 0xD9) {
            return 0;
        }
        if (marker == 1 || (marker / 8 == 0xD0 / 8) || marker == 0xD8) {
            continue;
        }
        std::string_view segment;
        if (!TakeSegment(rest, segment)) {
            return 0;
        }
        std::string_view look = rest;
        const std::size_t length = TakeNumber(look);
        if (marker == 0xDA) {
            const unsigned inScan = TakeByte(look);
            if (!progressive && inScan >= components) {
                return 0;
            }
            int scans = 1;
            for (unsigned next = TakeMarker(look); next != 0 && next != 0xD9; next = TakeMarker(look)) {
                scans += next == 0xDA ? 1 : 0;
            }
            return scans > 30 ? TooMuch : blocks * 128;
        }
        if (marker / 16 == 0xC && marker != 0xC4 && marker != 0xC8 && marker != 0xCC && length >= 8) {
            TakeByte(look);
            const std::uint64_t height = TakeNumber(look);
            const std::uint64_t width = TakeNumber(look);
            components = TakeByte(look);
            progressive = marker % 4 == 2;
            blocks = EightsIn(height) * EightsIn(width) * components;
        }
        rest.remove_prefix(length < rest.size() ? length : rest.size());
    }
    return TooMuch;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    static const std::string path = folder / "x.jpg";
    const std::string_view contents = fuzz::TextOf(data, size);
    const fuzz::FuzzServices doubles;
    fuzz::WriteWhole(path, contents);
    const auto file = services.files->Open(path, BinaryFile::Access::Read);
    Require(JpegCoefficientBytes(*file) == Model(contents));
    (void)HasOversizedTexts(*file);
    const PictureFormat format = FormatOfPicture(*file);
    Require((format == PictureFormat::Jpeg) == contents.starts_with("\xFF\xD8\xFF"));
    Require((format == PictureFormat::None) ==
            !(contents.starts_with("BM") || contents.starts_with("GIF87a") ||
              contents.starts_with("GIF89a") || contents.starts_with("\xFF\xD8\xFF") ||
              contents.starts_with("\x89PNG") ||
              (contents.starts_with("RIFF") && contents.size() >= 12 && contents.substr(8, 4) == "WEBP")));
    return 0;
}
