#include "adapters/mpv/ReadLibraryAhead.h"

#include "adapters/mpv/MpvOptions.h"

#include <array>
#include <system_error>
#include <thread>

#include <dlfcn.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/auxv.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace quavernet {

namespace mpv {

namespace {

constexpr int LowestPriority = 19;

/// The program that loads shared libraries, as this process was loaded by it; empty if there is none.
std::string SystemLoader() {
    Dl_info loader{};
    const auto* base =
        reinterpret_cast<const void*>(::getauxval(AT_BASE)); // NOLINT(performance-no-int-to-ptr)
    return base != nullptr && ::dladdr(base, &loader) != 0 ? loader.dli_fname : "";
}

std::string ReadAll(int pipe) {
    std::string text;
    std::array<char, 4096> piece{};
    ssize_t count = 0;
    while ((count = ::read(pipe, piece.data(), piece.size())) > 0) {
        text.append(piece.data(), static_cast<std::size_t>(count));
    }
    return text;
}

/// What a program prints.
std::string Printed(const std::string& program, const char* option, const std::string& argument) {
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
        return {};
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipe[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    const std::array<char*, 4> words{const_cast<char*>(program.c_str()), const_cast<char*>(option),
                                     const_cast<char*>(argument.c_str()), nullptr};
    pid_t child = 0;
    const bool isStarted =
        ::posix_spawn(&child, program.c_str(), &actions, nullptr, words.data(), environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipe[1]);
    const std::string text = isStarted ? ReadAll(pipe[0]) : std::string();
    ::close(pipe[0]);
    if (isStarted) {
        ::waitpid(child, nullptr, 0);
    }
    return text;
}

/// The system reads it in its own time; what it holds already costs nothing.
void ReadAhead(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file >= 0) {
        ::posix_fadvise(file, 0, 0, POSIX_FADV_WILLNEED);
        ::close(file);
    }
}

} // namespace

std::vector<std::string> LoadedFiles(const std::string& library) {
    const std::string loader = SystemLoader();
    std::vector<std::string> files;
    if (loader.empty()) {
        return files;
    }
    // Lines of the form "libz.so.1 => /lib/libz.so.1 (0x00007f…)".
    const std::string text = Printed(loader, "--list", library);
    for (std::size_t at = text.find("=> /"); at != std::string::npos; at = text.find("=> /", at)) {
        at += 3;
        files.push_back(text.substr(at, text.find(" (", at) - at));
    }
    return files;
}

} // namespace mpv

void ReadMediaLibraryAhead() {
    try {
        std::thread([] {
            ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), mpv::LowestPriority);
            for (const std::string& path : mpv::LoadedFiles(MpvOptions().library)) {
                mpv::ReadAhead(path);
            }
        }).detach();
    } catch (const std::system_error&) {
        // No thread to be had: the first file starts later.
    }
}

} // namespace quavernet
