// Files on a share that answers late or never.
#include "MpvTest.h"
#include "support/RealAudio.h"

#include <atomic>
#include <thread>

namespace quavernet::test {

namespace {

using std::chrono::milliseconds;

/// Opens and reads nothing of one folder until it is let go.
class HangingShare : public UserFiles {
public:
    explicit HangingShare(std::string folder) : m_folder(std::move(folder)) {}

    std::unique_ptr<BinaryFile> Open(const std::string& path, BinaryFile::Access access) override {
        if (path.starts_with(m_folder)) {
            ++waiting;
            letGo.wait(false);
            --waiting;
        }
        return RealFiles().Open(path, access);
    }
    std::unique_ptr<NewFile> Create(const std::string& path) override { return RealFiles().Create(path); }
    std::unique_ptr<NewFile> CreatePrivate(const std::string& path) override {
        return RealFiles().CreatePrivate(path);
    }

    void LetGo() {
        letGo = true;
        letGo.notify_all();
    }

    std::atomic<bool> letGo{false};
    std::atomic<int> waiting{0};

private:
    const std::string m_folder;
};

class SlowFilesTest : public MpvTest {
protected:
    SlowFilesTest() : share(folder.Path()) { services.files = &share; }
    ~SlowFilesTest() override {
        player.reset();
        share.LetGo();
        while (share.waiting > 0) { // Threads that still use it.
            std::this_thread::yield();
        }
    }

    void MakeImpatientPlayer(EngineOptions engine) {
        MpvOptions options;
        options.patience = milliseconds(30);
        MakePlayer(std::move(engine), options);
    }

    HangingShare share;
};

TEST_F(SlowFilesTest, AFileThatLoadsLateIsToldLater) {
    MakeImpatientPlayer(Timed);
    const std::string path = CopyTo(RealWave(20), folder / "late.wav");
    player->SetFileName(path);
    EXPECT_EQ(player->FileName(), path);
    EXPECT_EQ(player->Duration(), MediaPlayer::NotReady);
    EXPECT_EQ(player->CurrentPosition(), MediaPlayer::NotReady);
    player->Play();
    EXPECT_FALSE(player->IsPlaying());
    share.LetGo();
    ASSERT_TRUE(loop.RunUntil([&] { return heard.loadedLate == 1; }));
    EXPECT_NEAR(player->Duration(), 20, 0.1);
    EXPECT_TRUE(player->IsPlaying());
    EXPECT_EQ(heard.refusedLate, 0);
}

TEST_F(SlowFilesTest, AFileThatIsRefusedLateIsToldLater) {
    MakeImpatientPlayer(Untimed);
    player->SetFileName(folder / "missing.mp3");
    player->Play();
    share.LetGo();
    ASSERT_TRUE(loop.RunUntil([&] { return heard.refusedLate == 1; }));
    loop.RunFor(milliseconds(50));
    EXPECT_EQ(heard.refusedLate, 1);
    EXPECT_EQ(heard.ends, 0);
    EXPECT_EQ(heard.loadedLate, 0);
}

TEST_F(SlowFilesTest, AnotherFilePlaysWhileOneHangs) {
    MakeImpatientPlayer(Untimed);
    for (int i = 0; i < 3; ++i) {
        player->SetFileName(folder / "hangs.wav");
        player->Play();
        loop.RunFor(milliseconds(20));
    }
    const std::string good = RealWave(1);
    player->SetFileName(good);
    player->Play();
    ASSERT_TRUE(loop.RunUntil([&] { return heard.ends == 1; }));
    EXPECT_EQ(player->FileName(), good);
    EXPECT_EQ(share.waiting, 3) << "they hang still";
}

TEST_F(SlowFilesTest, ANextFileThatHangsHoldsNothingUp) {
    MakeImpatientPlayer(Untimed);
    const std::string good = RealWave(2);
    heard.atEnd = [&] {
        if (heard.ends == 1) {
            player->SetFileName(folder / "hangs.wav");
            player->SetFileName(good);
            player->Play();
        }
    };
    player->SetFileName(RealWave(1));
    player->SetNextFile(folder / "hangs.wav");
    player->Play();
    EXPECT_TRUE(loop.RunUntil([&] { return heard.ends == 2; }));
}

TEST_F(SlowFilesTest, AFileThatHangsIsStoppedAndStartedAgain) {
    MakeImpatientPlayer(Untimed);
    const std::string path = CopyTo(RealWave(1), folder / "late.wav");
    player->SetFileName(path);
    player->Play();
    player->Stop();
    loop.RunFor(milliseconds(50));
    player->Play();
    share.LetGo();
    EXPECT_TRUE(loop.RunUntil([&] { return heard.ends == 1; }));
}

TEST_F(SlowFilesTest, APlayerEndsWhileAFileHangs) {
    MakeImpatientPlayer(Untimed);
    player->SetFileName(folder / "hangs.wav");
    EXPECT_TRUE(loop.RunUntil([&] { return share.waiting == 1; }));
    player.reset();
    EXPECT_EQ(share.waiting, 1);
}

} // namespace

} // namespace quavernet::test
