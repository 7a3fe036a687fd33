// Feeds any bytes to the Ogg reader, as they are and with their checksums made right, and what it prints to
// the parser of those lines.
#include "adapters/vorbis/ByteSource.h"
#include "adapters/vorbis/OggInfoReader.h"
#include "inspect/OggInfoText.h"

#include "FuzzInput.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <ogg/ogg.h>

namespace {

using namespace quavernet;
using fuzz::Require;

/// The texts printed for a file are in proportion to its size: a byte of a comment gives six characters at
/// most (itself and its hexadecimal form), a page one line.
void RequireBounded(const std::string& lines, std::size_t size) {
    Require(lines.size() <= 1024 + 16 * size);
}

void ReadFile(const std::uint8_t* data, std::size_t size) {
    const auto source = vorbis::OpenMemory({data, size});
    std::string lines;
    vorbis::AppendOggInfo("/music/x.ogg", *source, lines);
    RequireBounded(lines, size);
    Require(lines.starts_with("Processing file \"/music/x.ogg\"...\n\n"));
    const auto files = ReadOggInfo(lines);
    Require(!files.empty() && files.front().path == "/music/x.ogg");
}

/// The bytes with the right checksum in every page: without it nothing after a changed byte would be read.
std::vector<std::uint8_t> Repaired(std::span<const std::uint8_t> data) {
    constexpr std::string_view mark = "OggS";
    std::vector<std::uint8_t> bytes(data.begin(), data.end());
    for (std::size_t at = 0; at + 27 <= bytes.size();) {
        const std::size_t headerSize = std::size_t{27} + bytes[at + 26];
        if (!std::equal(mark.begin(), mark.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at)) ||
            at + headerSize > bytes.size()) {
            ++at;
            continue;
        }
        std::size_t size = headerSize;
        for (std::size_t i = at + 27; i < at + headerSize; ++i) {
            size += bytes[i];
        }
        if (at + size > bytes.size()) {
            break;
        }
        ogg_page page{bytes.data() + at, static_cast<long>(headerSize), bytes.data() + at + headerSize,
                      static_cast<long>(size - headerSize)};
        ogg_page_checksum_set(&page);
        at += size;
    }
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ReadFile(data, size);
    const std::vector<std::uint8_t> repaired = Repaired({data, size});
    ReadFile(repaired.data(), repaired.size());
    return 0;
}
