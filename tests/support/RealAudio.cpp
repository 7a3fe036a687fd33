#include "support/RealAudio.h"

#include "support/TemporaryFolder.h"

#include <cstdlib>
#include <filesystem>
#include <map>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

namespace quavernet::test {

namespace {

struct MadeFiles {
    TemporaryFolder folder;
    std::map<std::vector<std::string>, std::string> paths;
};

MadeFiles& Made() {
    static MadeFiles made;
    return made;
}

// `command` gets the output's path appended.
std::string Make(std::vector<std::string> command, const std::string& extension) {
    MadeFiles& made = Made();
    std::string& path = made.paths[command];
    if (path.empty()) {
        const std::string target = made.folder / (std::to_string(made.paths.size()) + extension);
        command.push_back(target);
        RunProgram(command);
        path = target;
    }
    return path;
}

} // namespace

void RunProgram(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    for (const std::string& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    std::string path = std::string("PATH=") + (std::getenv("PATH") ? std::getenv("PATH") : "/usr/bin:/bin");
    std::string locale = "LC_ALL=C.UTF-8"; // The encoders read their arguments in the locale's code set.
    char* environment[] = {path.data(), locale.data(), nullptr};

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int spawned = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environment);
    posix_spawn_file_actions_destroy(&actions);
    int status = -1;
    if (spawned != 0 || waitpid(child, &status, 0) != child || status != 0) {
        throw std::runtime_error("failed: " + command.front());
    }
}

std::string RealWave(double seconds, int rate, int channels, int bits) {
    std::vector<std::string> command = {
        "sox", "-n", "-r", std::to_string(rate), "-c", std::to_string(channels), "-b", std::to_string(bits)};
    // sox wants the effect after the output, so the path's place is not the last one.
    MadeFiles& made = Made();
    command.push_back(std::to_string(seconds));
    std::string& path = made.paths[command];
    if (path.empty()) {
        const std::string target = made.folder / (std::to_string(made.paths.size()) + ".wav");
        command.back() = target;
        command.insert(command.end(), {"synth", std::to_string(seconds), "sine", "440"});
        RunProgram(command);
        path = target;
    }
    return path;
}

std::string RealMp3(const std::vector<std::string>& switches, const std::string& wave) {
    std::vector<std::string> command = {"lame", "--quiet"};
    command.insert(command.end(), switches.begin(), switches.end());
    command.push_back(wave);
    return Make(command, ".mp3");
}

std::string RealOgg(const std::vector<std::string>& switches, const std::string& wave) {
    std::vector<std::string> command = {"oggenc", "--quiet"};
    command.insert(command.end(), switches.begin(), switches.end());
    command.insert(command.end(), {wave, "-o"});
    return Make(command, ".ogg");
}

std::string CopyTo(const std::string& source, const std::string& target) {
    std::filesystem::copy_file(source, target, std::filesystem::copy_options::overwrite_existing);
    return target;
}

} // namespace quavernet::test
