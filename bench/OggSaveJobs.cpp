#include "OggSaveJobs.h"

#include "BareFile.h"
#include "Lines.h"

#include "adapters/posix/PosixFiles.h"
#include "adapters/vorbis/OggCommentWriter.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace quavernet::bench {

namespace {

constexpr double Wish = 1.5;
constexpr double WishRenumbered = 2; // Each page is looked for and checked, as a reader does it.

using Comments = std::vector<std::string>;

} // namespace

void OggSaveJobs(const std::string& song, const std::string& work, int rounds) {
    const std::string path = work + "/saved.ogg";
    const std::string copy = work + "/copy.ogg";
    PosixFiles files;
    OggCommentWriter writer(files);
    const Comments listed = writer.List(song);
    const auto measure = [&](const std::string& job, double wish, const Comments& comments) {
        const Timed save{[&] { CopyAndSync(song, path); },
                         [&] {
                             writer.List(path); // As the dialog does, which keeps what it does not edit.
                             writer.Write(path, comments);
                         }};
        const Timed floor{[&] { std::filesystem::remove(copy); }, [&] { CopyAndSync(song, copy); }};
        const Line line = Measure(job, 1, {.ratio = wish}, rounds, save, floor);
        if (writer.List(path) != comments) {
            throw std::runtime_error("the comments were not saved");
        }
        Print(line);
    };
    Comments longer = listed;
    longer.push_back("COMMENT=another one");
    measure("Ogg comments saved, floor: copy and sync", Wish, longer);
    longer.push_back("METADATA_BLOCK_PICTURE=" + std::string(100'000, 'A'));
    measure("Ogg comments saved, all pages renumbered, floor: copy and sync", WishRenumbered, longer);
    std::filesystem::remove(path);
    std::filesystem::remove(copy);
}

} // namespace quavernet::bench
