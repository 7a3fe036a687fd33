// Feeds any bytes to the Ogg reader, as they are and with their checksums made right, and what it prints to
// the parser of those lines.
#include "adapters/vorbis/ByteSource.h"
#include "adapters/vorbis/OggInfoReader.h"
#include "inspect/OggInfoText.h"

#include "FuzzInput.h"
#include "OggChecksums.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ReadFile(data, size);
    const std::vector<std::uint8_t> repaired = fuzz::WithRightChecksums({data, size});
    ReadFile(repaired.data(), repaired.size());
    return 0;
}
