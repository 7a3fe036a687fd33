#include "OggJobs.h"

#include "Floors.h"
#include "Lines.h"

#include "adapters/posix/PosixFiles.h"
#include "adapters/vorbis/OggInfoReader.h"
#include "inspect/OggInfoText.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace quavernet::bench {

namespace {

constexpr std::size_t BatchSize = 10; ///< As in a scan.

using Batches = std::vector<std::vector<std::string>>;

Batches BatchesOf(const std::vector<std::string>& paths) {
    Batches batches;
    for (std::size_t first = 0; first < paths.size(); first += BatchSize) {
        const auto begin = paths.begin() + static_cast<std::ptrdiff_t>(first);
        const auto size = static_cast<std::ptrdiff_t>(std::min(BatchSize, paths.size() - first));
        batches.emplace_back(begin, begin + size);
    }
    return batches;
}

/// The output of ogginfo itself. The paths hold no apostrophe.
std::string RunTool(const std::vector<std::string>& paths) {
    std::string command = "LC_ALL=C.UTF-8 ogginfo";
    for (const std::string& path : paths) {
        command += " '" + path + "'";
    }
    const auto close = [](FILE* pipe) { ::pclose(pipe); };
    // NOLINTNEXTLINE(cert-env33-c): the tool as a user calls it, on files that the benchmark made.
    const std::unique_ptr<FILE, decltype(close)> pipe(::popen(command.c_str(), "r"), close);
    if (!pipe) {
        throw std::runtime_error("can't run ogginfo");
    }
    std::string output;
    std::array<char, 65536> piece{};
    while (const std::size_t size = std::fread(piece.data(), 1, piece.size(), pipe.get())) {
        output.append(piece.data(), size);
    }
    return output;
}

/// Both must tell the same of every file, or their times can't be compared.
void RequireEqual(const Batches& batches) {
    PosixFiles files;
    for (const auto& batch : batches) {
        const auto own = ReadOggInfo(OggInfoReader(files).Run(batch));
        if (own.size() != batch.size() || own != ReadOggInfo(RunTool(batch))) {
            throw std::runtime_error("ogginfo is missing or tells something else of " + batch.front());
        }
    }
}

} // namespace

void OggJobs(const std::string& music, int rounds) {
    const std::vector<std::string> paths = WalkFiles(music);
    const Batches batches = BatchesOf(paths);
    RequireEqual(batches);
    PosixFiles files;
    const auto forEachBatch = [&](const auto& read) {
        for (const auto& batch : batches) {
            ReadOggInfo(read(batch));
        }
    };
    const Timed own{
        nullptr, [&] { forEachBatch([&](const auto& batch) { return OggInfoReader(files).Run(batch); }); }};
    const Timed tool{nullptr, [&] { forEachBatch(RunTool); }};
    const Timed bare{nullptr, [&] { ReadWhole(paths); }};
    Print(Measure("Ogg files, floor: bare reads", paths.size(), {.ratio = 4}, rounds, own, bare));
    Print(Measure("Ogg files, floor: ogginfo", paths.size(), {.ratio = 0.5}, rounds, own, tool));
}

} // namespace quavernet::bench
