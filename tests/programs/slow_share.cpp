// A share that answers late: shows a folder read-only under another path, and answers each open, read and
// listing after some milliseconds; a file of one name is opened and read after ten seconds, and "hangs" is
// printed when somebody begins to wait for that. Run by bench/run and by the check of shares that hang, until
// it is unmounted.
#define FUSE_USE_VERSION 31

#include <fuse3/fuse.h>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <thread>

namespace {

constexpr std::chrono::seconds HangTime{10};

// Set before the share is mounted, then only read.
std::string root;
std::string hangingName;
std::chrono::milliseconds delay{0};

std::string Real(const char* path) {
    return root + path;
}

void BeLate(std::string_view path) {
    const bool hangs = !hangingName.empty() && path.ends_with("/" + hangingName);
    if (hangs) {
        std::puts("hangs");
        std::fflush(stdout);
    }
    std::this_thread::sleep_for(hangs ? std::chrono::milliseconds(HangTime) : delay);
}

int GetFacts(const char* path, struct stat* facts, fuse_file_info*) {
    return lstat(Real(path).c_str(), facts) == 0 ? 0 : -errno;
}

int List(const char* path, void* buffer, fuse_fill_dir_t fill, off_t, fuse_file_info*, fuse_readdir_flags) {
    BeLate(path);
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(Real(path).c_str()), closedir);
    if (!entries) {
        return -errno;
    }
    while (const dirent* entry = readdir(entries.get())) {
        struct stat facts {};
        facts.st_ino = entry->d_ino;
        facts.st_mode = static_cast<mode_t>(entry->d_type << 12);
        fill(buffer, entry->d_name, &facts, 0, fuse_fill_dir_flags());
    }
    return 0;
}

int Open(const char* path, fuse_file_info* file) {
    BeLate(path);
    const int number = open(Real(path).c_str(), O_RDONLY | O_CLOEXEC);
    file->fh = static_cast<std::uint64_t>(number);
    return number >= 0 ? 0 : -errno;
}

int Read(const char*, char* bytes, std::size_t size, off_t offset, fuse_file_info* file) {
    BeLate({});
    const ssize_t count = pread(static_cast<int>(file->fh), bytes, size, offset);
    return count >= 0 ? static_cast<int>(count) : -errno;
}

int Close(const char*, fuse_file_info* file) {
    close(static_cast<int>(file->fh));
    return 0;
}

} // namespace

int main(int count, char** words) {
    if (count != 4 && count != 5) {
        std::fprintf(stderr, "slow_share FOLDER MOUNTPOINT MILLISECONDS [NAME OF A FILE THAT HANGS]\n");
        return 2;
    }
    root = words[1];
    delay = std::chrono::milliseconds(std::stoi(words[3]));
    hangingName = count == 5 ? words[4] : "";
    fuse_operations operations{};
    operations.getattr = &GetFacts;
    operations.readdir = &List;
    operations.open = &Open;
    operations.read = &Read;
    operations.release = &Close;
    std::string mountOptions = "ro,max_threads=64,max_idle_threads=64";
    std::array<char*, 5> arguments{words[0], words[2], const_cast<char*>("-f"), const_cast<char*>("-o"),
                                   mountOptions.data()};
    return fuse_main(static_cast<int>(arguments.size()), arguments.data(), &operations, nullptr);
}
