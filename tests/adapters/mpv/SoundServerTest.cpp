// A real sound server that comes and goes while music plays.
#include "MpvTest.h"
#include "support/RealAudio.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

namespace quavernet::test {

namespace {

using std::chrono::milliseconds;

/// A sound server of the test's own, with one device that nobody hears.
class SoundServer {
public:
    explicit SoundServer(std::string folder) : m_folder(std::move(folder)) { Start(); }
    ~SoundServer() { Kill(); }
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    std::string Address() const { return "unix:" + m_folder + "/socket"; }

    void Start() {
        const std::string script = m_folder + "/server.pa";
        std::ofstream(script) << "load-module module-null-sink\n"
                              << "load-module module-native-protocol-unix auth-anonymous=1 socket="
                              << m_folder << "/socket\n";
        std::string home = "HOME=" + m_folder;
        std::string runtime = "XDG_RUNTIME_DIR=" + m_folder;
        std::string path = std::string("PATH=") + std::getenv("PATH");
        std::string file = "--file=" + script;
        char* environment[] = {home.data(), runtime.data(), path.data(), nullptr};
        std::string words[] = {"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
                               "--use-pid-file=no"};
        char* arguments[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(),
                             words[4].data(), file.data(),     nullptr};
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
        const int failure =
            ::posix_spawnp(&m_process, "pulseaudio", &actions, nullptr, arguments, environment);
        posix_spawn_file_actions_destroy(&actions);
        for (int i = 0; failure == 0 && i < 1000; ++i) {
            if (std::filesystem::exists(m_folder + "/socket")) {
                return;
            }
            std::this_thread::sleep_for(milliseconds(10));
        }
        throw std::runtime_error("no sound server");
    }

    /// As if the device were pulled out.
    void Kill() {
        if (m_process > 0) {
            ::kill(m_process, SIGKILL);
            ::waitpid(m_process, nullptr, 0);
            std::filesystem::remove(m_folder + "/socket");
            m_process = 0;
        }
    }

private:
    const std::string m_folder;
    pid_t m_process = 0;
};

class SoundServerTest : public MpvTest {
protected:
    SoundServerTest() { settings.values["Language"] = "ENG"; }

    SoundServer server{folder.Path()};
};

TEST_F(SoundServerTest, ADeviceThatGoesAwayLeavesSilenceUntilItIsThereAgain) {
    MakePlayer({{"ao", "pulse"}, {"pulse-host", server.Address()}});
    const std::string path = RealWave(20);
    player->SetFileName(path);
    player->Play();
    ASSERT_TRUE(loop.RunUntil([&] { return player->CurrentPosition() > 0.1; }));
    EXPECT_EQ(player->SilenceReason(), "");

    const int told = heard.playingChanged;
    server.Kill();
    ASSERT_TRUE(loop.RunUntil([&] { return heard.playingChanged > told; }));
    EXPECT_EQ(player->SilenceReason(), "No sound device found: nothing can be heard.");
    EXPECT_TRUE(player->IsPlaying());
    const double position = player->CurrentPosition();
    EXPECT_TRUE(loop.RunUntil([&] { return player->CurrentPosition() > position + 0.1; }));

    server.Start();
    player->SetFileName(path);
    player->Play();
    EXPECT_TRUE(loop.RunUntil([&] { return player->SilenceReason().empty(); }));
    EXPECT_TRUE(loop.RunUntil([&] { return player->CurrentPosition() > 0.1; }));
    EXPECT_EQ(heard.ends + heard.refusedLate, 0);
}

} // namespace

} // namespace quavernet::test
