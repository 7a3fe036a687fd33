#include "OggSaveJobs.h"

#include "Lines.h"

#include "adapters/posix/PosixFiles.h"
#include "adapters/vorbis/OggCommentWriter.h"

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace quavernet::bench {

namespace {

constexpr std::size_t BlockSize = std::size_t{1} << 20;
constexpr double Wish = 1.5;
constexpr double WishRenumbered = 2; // Each page is looked for and checked, as a reader does it.

using Comments = std::vector<std::string>;

class OpenNumber {
public:
    OpenNumber(const std::string& path, int flags) : m_number(::open(path.c_str(), flags | O_CLOEXEC, 0644)) {
        Require(m_number >= 0);
    }
    ~OpenNumber() { ::close(m_number); }
    OpenNumber(const OpenNumber&) = delete;
    OpenNumber& operator=(const OpenNumber&) = delete;

    int Get() const { return m_number; }

    static void Require(bool condition) {
        if (!condition) {
            throw std::runtime_error("can't copy the song");
        }
    }

private:
    int m_number;
};

/// Bare system calls, in blocks as large as those of a save.
void CopyAndSync(const std::string& from, const std::string& to) {
    const OpenNumber source(from, O_RDONLY);
    const OpenNumber target(to, O_WRONLY | O_CREAT | O_TRUNC);
    std::vector<char> block(BlockSize);
    while (const ssize_t count = ::read(source.Get(), block.data(), block.size())) {
        OpenNumber::Require(count > 0 &&
                            ::write(target.Get(), block.data(), static_cast<std::size_t>(count)) == count);
    }
    OpenNumber::Require(::fsync(target.Get()) == 0);
}

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
