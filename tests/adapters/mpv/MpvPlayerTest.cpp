#include "MpvTest.h"
#include "adapters/mpv/ReadLibraryAhead.h"
#include "support/RealAudio.h"

#include <algorithm>
#include <filesystem>

namespace quavernet::test {

namespace {

using std::chrono::milliseconds;

class MpvPlayerTest : public MpvTest {};

TEST_F(MpvPlayerTest, AFileIsPlayedToItsEndWhichIsToldOnce) {
    MakePlayer(Untimed);
    PlayToItsEnd(RealMp3({"-b", "128"}, RealWave(2)));
    EXPECT_NEAR(player->Duration(), 2, 0.1);
    EXPECT_NEAR(player->CurrentPosition(), player->Duration(), 0.01);
    EXPECT_FALSE(player->IsPlaying());
    loop.RunFor(milliseconds(50));
    EXPECT_EQ(heard.ends, 1);
    EXPECT_EQ(heard.refusedLate, 0);
}

TEST_F(MpvPlayerTest, TheLengthIsKnownWhenSetFileNameReturns) {
    MakePlayer(Untimed);
    for (const std::string& path :
         {RealMp3({"-b", "128"}, RealWave(3)), RealMp3({"-V", "4"}, RealWave(3)), RealWave(3)}) {
        player->SetFileName(path);
        EXPECT_NEAR(player->Duration(), 3, 0.1) << path;
        EXPECT_EQ(player->FileName(), path);
    }
    EXPECT_EQ(heard.loadedLate, 0);
}

TEST_F(MpvPlayerTest, NothingPlaysBeforePlay) {
    MakePlayer(Untimed);
    player->SetFileName(RealWave(1));
    loop.RunFor(milliseconds(100));
    EXPECT_FALSE(player->IsPlaying());
    EXPECT_EQ(player->CurrentPosition(), 0);
    EXPECT_EQ(heard.ends, 0);
}

TEST_F(MpvPlayerTest, WithoutAFileNothingHappens) {
    MakePlayer(Untimed);
    player->Play();
    player->Pause();
    player->Stop();
    player->SetCurrentPosition(3);
    player->SetNextFile(RealWave(1));
    EXPECT_EQ(player->CurrentPosition(), MediaPlayer::NotReady);
    EXPECT_EQ(player->Duration(), MediaPlayer::NotReady);
    EXPECT_EQ(player->FileName(), "");
    EXPECT_FALSE(player->IsPlaying());
}

TEST_F(MpvPlayerTest, ThePositionMovesWhilePlayingAndStaysWhilePaused) {
    MakePlayer(Timed);
    player->SetFileName(RealWave(20));
    player->Play();
    EXPECT_TRUE(loop.RunUntil([&] { return player->CurrentPosition() > 0.05; }));
    EXPECT_TRUE(player->IsPlaying());
    player->Pause();
    EXPECT_FALSE(player->IsPlaying());
    const double paused = player->CurrentPosition();
    loop.RunFor(milliseconds(150));
    EXPECT_EQ(player->CurrentPosition(), paused);
    player->Play();
    loop.RunFor(milliseconds(300));
    EXPECT_GT(player->CurrentPosition(), paused);
    EXPECT_EQ(heard.ends, 0);
}

TEST_F(MpvPlayerTest, APositionThatWasSetWhilePausedIsTheOneThatIsRead) {
    MakePlayer(Timed);
    player->SetFileName(RealMp3({"-b", "128"}, RealWave(20)));
    player->SetCurrentPosition(12.5);
    EXPECT_EQ(player->CurrentPosition(), 12.5);
    loop.RunFor(milliseconds(200));
    EXPECT_EQ(player->CurrentPosition(), 12.5);
    player->Play();
    ASSERT_TRUE(loop.RunUntil([&] { return player->IsPlaying() && player->CurrentPosition() > 12.5; }));
    EXPECT_LT(player->CurrentPosition(), 19);
}

TEST_F(MpvPlayerTest, APositionOutsideOfTheFileIsItsBeginningOrItsEnd) {
    MakePlayer(Timed);
    player->SetFileName(RealWave(20));
    player->SetCurrentPosition(-5);
    EXPECT_EQ(player->CurrentPosition(), 0);
    player->SetCurrentPosition(1000);
    EXPECT_EQ(player->CurrentPosition(), player->Duration());
}

TEST_F(MpvPlayerTest, AJumpToTheEndEndsTheFile) {
    MakePlayer(Timed);
    player->SetFileName(RealWave(20));
    player->Play();
    player->SetCurrentPosition(20);
    EXPECT_TRUE(loop.RunUntil([&] { return heard.ends == 1; }));
}

TEST_F(MpvPlayerTest, AStoppedFileStaysSetAndBeginsAgain) {
    MakePlayer(Timed);
    const std::string path = RealWave(20);
    player->SetFileName(path);
    player->SetCurrentPosition(10);
    player->Play();
    loop.RunFor(milliseconds(100));
    player->Stop();
    EXPECT_FALSE(player->IsPlaying());
    EXPECT_EQ(player->FileName(), path);
    EXPECT_EQ(player->CurrentPosition(), 0);
    EXPECT_NEAR(player->Duration(), 20, 0.1);
    loop.RunFor(milliseconds(50));
    player->Play();
    ASSERT_TRUE(loop.RunUntil([&] { return player->IsPlaying() && player->CurrentPosition() > 0; }));
    EXPECT_LT(player->CurrentPosition(), 9);
    EXPECT_EQ(heard.ends, 0);
}

TEST_F(MpvPlayerTest, APositionThatWasSetAfterStopIsWherePlayBegins) {
    MakePlayer(Timed);
    player->SetFileName(RealWave(20));
    player->Play();
    player->Stop();
    player->SetCurrentPosition(15);
    EXPECT_EQ(player->CurrentPosition(), 15);
    player->Play();
    ASSERT_TRUE(loop.RunUntil([&] { return player->IsPlaying() && player->CurrentPosition() > 15; }));
}

TEST_F(MpvPlayerTest, AFileThatHasEndedBeginsAgain) {
    MakePlayer(Untimed);
    PlayToItsEnd(RealWave(1));
    player->Play();
    EXPECT_TRUE(loop.RunUntil([&] { return heard.ends == 2; }));
}

TEST_F(MpvPlayerTest, NoEndIsToldOfAFileThatWasStoppedReplacedOrRefused) {
    MakePlayer(Untimed);
    player->SetFileName(RealWave(1));
    player->Play();
    player->Stop();
    loop.RunFor(milliseconds(100));
    EXPECT_EQ(heard.ends, 0);
    for (int i = 0; i < 20; ++i) {
        player->SetFileName(RealWave(1));
        player->Play(); // It may end at once: only the last one's end is told.
    }
    EXPECT_EQ(heard.ends, 0);
    ASSERT_TRUE(loop.RunUntil([&] { return heard.ends > 0; }));
    loop.RunFor(milliseconds(50));
    EXPECT_EQ(heard.ends, 1);
    EXPECT_NE(NumberOf([&] { player->SetFileName(folder / "missing.mp3"); }), 0);
    player->Play();
    loop.RunFor(milliseconds(50));
    EXPECT_EQ(heard.ends, 1);
}

TEST_F(MpvPlayerTest, TheNextFileIsFoundPlayingAndGoesOn) {
    MakePlayer(Timed);
    const std::string first = RealWave(1);
    const std::string second = RealMp3({"-b", "128"}, RealWave(20));
    double foundAt = -2;
    heard.atEnd = [&] {
        player->SetFileName(second);
        foundAt = player->Duration();
        EXPECT_TRUE(player->IsPlaying());
        player->Play();
    };
    player->SetFileName(first);
    player->SetNextFile(second);
    player->Play();
    ASSERT_TRUE(loop.RunUntil([&] { return heard.ends == 1; }));
    EXPECT_NEAR(foundAt, 20, 0.1);
    EXPECT_EQ(player->FileName(), second);
    ASSERT_TRUE(loop.RunUntil([&] { return player->CurrentPosition() > 0.01; }));
    EXPECT_LT(player->CurrentPosition(), 5);
    EXPECT_EQ(heard.loadedLate, 0);
}

TEST_F(MpvPlayerTest, TheSameFileAgainIsANextFileToo) {
    MakePlayer(Untimed);
    const std::string path = RealWave(1);
    heard.atEnd = [&] {
        if (heard.ends < 5) {
            player->SetFileName(path);
            player->SetNextFile(path);
            player->Play();
        }
    };
    player->SetFileName(path);
    player->SetNextFile(path);
    player->Play();
    EXPECT_TRUE(loop.RunUntil([&] { return heard.ends == 5; }));
    loop.RunFor(milliseconds(100));
    EXPECT_EQ(heard.ends, 5);
    EXPECT_FALSE(player->IsPlaying());
}

TEST_F(MpvPlayerTest, AnotherFileThanTheNextOneTakesItsPlace) {
    MakePlayer(Untimed);
    const std::string wanted = RealWave(3);
    heard.atEnd = [&] {
        if (heard.ends == 1) {
            player->SetFileName(wanted);
            EXPECT_NEAR(player->Duration(), 3, 0.1);
            player->Play();
        }
    };
    player->SetFileName(RealWave(1));
    player->SetNextFile(RealWave(2));
    player->Play();
    ASSERT_TRUE(loop.RunUntil([&] { return heard.ends == 2; }));
    EXPECT_EQ(player->FileName(), wanted);
}

TEST_F(MpvPlayerTest, ANextFileThatNobodyAsksForStops) {
    MakePlayer(Timed);
    player->SetFileName(RealWave(1));
    player->SetNextFile(RealWave(20));
    player->SetCurrentPosition(0.9);
    player->Play();
    ASSERT_TRUE(loop.RunUntil([&] { return heard.ends == 1; }));
    EXPECT_FALSE(player->IsPlaying());
    EXPECT_NEAR(player->CurrentPosition(), 1, 0.05);
    loop.RunFor(milliseconds(100));
    EXPECT_EQ(heard.ends, 1);
}

TEST_F(MpvPlayerTest, ANextFileThatWasTakenBackIsNotPlayed) {
    MakePlayer(Untimed);
    player->SetFileName(RealWave(1));
    player->SetNextFile(RealWave(20));
    player->SetNextFile("");
    player->Play();
    ASSERT_TRUE(loop.RunUntil([&] { return heard.ends == 1; }));
    loop.RunFor(milliseconds(100));
    EXPECT_FALSE(player->IsPlaying());
    EXPECT_EQ(heard.ends, 1);
}

TEST_F(MpvPlayerTest, ANextFileThatIsRefusedShowsAtItsOwnStart) {
    MakePlayer(Untimed);
    const std::string bad = folder / "bad.mp3";
    CopyTo("/etc/passwd", bad);
    int refused = 0;
    heard.atEnd = [&] { refused = NumberOf([&] { player->SetFileName(bad); }); };
    player->SetFileName(RealWave(1));
    player->SetNextFile(bad);
    player->Play();
    ASSERT_TRUE(loop.RunUntil([&] { return heard.ends == 1; }));
    EXPECT_EQ(refused, ErrorNumber::PathFileAccess);
    EXPECT_EQ(heard.refusedLate, 0);
}

TEST_F(MpvPlayerTest, PlayingIsToldWhenItChanges) {
    MakePlayer(Timed);
    player->SetFileName(RealWave(20));
    loop.RunFor(milliseconds(100));
    const int before = heard.playingChanged;
    player->Play();
    EXPECT_EQ(heard.playingChanged, before) << "not from inside of a call";
    EXPECT_TRUE(loop.RunUntil([&] { return heard.playingChanged == before + 1; }));
    player->Pause();
    EXPECT_TRUE(loop.RunUntil([&] { return heard.playingChanged == before + 2; }));
}

TEST_F(MpvPlayerTest, WhoIsToldMayEndThePlayer) {
    MakePlayer(Untimed);
    heard.atEnd = [&] { player.reset(); };
    player->SetFileName(RealWave(1));
    player->SetNextFile(RealWave(2));
    player->Play();
    EXPECT_TRUE(loop.RunUntil([&] { return heard.ends == 1; }));
    EXPECT_EQ(player, nullptr);
    loop.RunFor(milliseconds(50));
}

TEST_F(MpvPlayerTest, TheFilesOfTheLibraryAreKnownBeforeItIsLoaded) {
    const std::vector<std::string> files = mpv::LoadedFiles(MpvOptions().library);
    EXPECT_GT(files.size(), 20U);
    EXPECT_TRUE(std::any_of(files.begin(), files.end(), [](const std::string& file) {
        return file.find("libavformat.so") != std::string::npos;
    }));
    for (const std::string& file : files) {
        EXPECT_TRUE(std::filesystem::is_regular_file(file)) << file;
    }
    EXPECT_TRUE(mpv::LoadedFiles("libnot-there.so.9").empty());
    ReadMediaLibraryAhead();
}

TEST_F(MpvPlayerTest, WithoutASoundDeviceAllGoesOnInSilenceAndThePlayerSaysSo) {
    settings.values["Language"] = "ENG";
    MakePlayer({{"ao", "alsa"}, {"audio-device", "alsa/there-is-none"}, {"ao-null-untimed", "yes"}});
    EXPECT_EQ(player->SilenceReason(), "");
    player->SetFileName(RealWave(1));
    player->Play();
    // Without a device time is not kept: the file may be over before its begin is told.
    ASSERT_TRUE(loop.RunUntil(
        [&] { return !player->SilenceReason().empty() && heard.playingChanged + heard.ends > 0; }));
    EXPECT_EQ(player->SilenceReason(), "No sound device found: nothing can be heard.");
    EXPECT_TRUE(loop.RunUntil([&] { return heard.ends == 1; }));
}

TEST_F(MpvPlayerTest, ADeviceThatIsMissingLeavesTheTerminalQuiet) {
    ::testing::internal::CaptureStderr();
    MakePlayer({{"ao", "alsa,null"}, {"audio-device", "alsa/nowhere"}});
    PlayToItsEnd(RealWave(0.1));
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST_F(MpvPlayerTest, WithoutTheLibraryAFileIsRefusedAndThePlayerSaysWhy) {
    settings.values["Language"] = "ENG";
    MpvOptions options = PatientOptions();
    options.library = "libnot-there.so.9";
    MakePlayer({}, options);
    EXPECT_EQ(player->SilenceReason(), "");
    EXPECT_EQ(NumberOf([&] { player->SetFileName(RealWave(1)); }), ErrorNumber::FileNotFound);
    EXPECT_TRUE(player->SilenceReason().starts_with("The library libmpv is needed for playing."))
        << player->SilenceReason();
    player->Play();
    player->SetVolume(-100);
    EXPECT_EQ(player->FileName(), "");
    EXPECT_EQ(player->CurrentPosition(), MediaPlayer::NotReady);
}

} // namespace

} // namespace quavernet::test
