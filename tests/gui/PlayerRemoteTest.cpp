// The player controlled from outside of its windows.
#include "gui/PlayerWindowTest.h"

#include "platform/MediaRemote.h"

#include <QDialog>

namespace quavernet::test {

namespace {

/// What the desktop would be told; its commands are called by hand.
class RecordingRemote : public MediaRemote {
public:
    struct Record {
        MediaRemoteCommands* commands = nullptr;
        MediaStatus status;
        int shows = 0;
        std::vector<double> seeks;
    };

    explicit RecordingRemote(Record& record) : m_record(record) {}

    void SetCommands(MediaRemoteCommands* commands) override { m_record.commands = commands; }
    void Show(const MediaStatus& status) override {
        m_record.status = status;
        ++m_record.shows;
    }
    void Seeked(double seconds) override { m_record.seeks.push_back(seconds); }

private:
    Record& m_record;
};

class PlayerRemoteTest : public PlayerWindowTest {
protected:
    PlayerRemoteTest() {
        services.createMediaRemote = [this] { return std::make_unique<RecordingRemote>(remote); };
    }
    MediaRemoteCommands& Remote() { return *remote.commands; }
    const MediaStatus& Status() {
        QCoreApplication::processEvents();
        return remote.status;
    }
    using Playback = MediaStatus::Playback;

    RecordingRemote::Record remote;
};

} // namespace

TEST_F(PlayerRemoteTest, WithoutAPlayerNobodyIsTold) {
    Start();
    EXPECT_EQ(remote.commands, nullptr);
}

TEST_F(PlayerRemoteTest, AnEmptyPlayerIsTold) {
    StartPlayer();
    EXPECT_EQ(Status(), MediaStatus());
    EXPECT_EQ(remote.shows, 1);
}

TEST_F(PlayerRemoteTest, TheTrackIsToldWithTitlePerformerAndCover) {
    AddFile("Abba", "One");
    mainModule.Connection->Execute(
        "Insert into Covers (Album_id, Interpret_id, Front) values (1, 1, '/covers/one.png')");
    StartPlayer();
    Queue().AddPlaylist("/music/One.mp3");
    Queue().AddPlaylist("/music/new.mp3");
    windows->Player().PlayFile(1);
    const MediaStatus first = Status();
    EXPECT_EQ(first.playback, Playback::Playing);
    EXPECT_EQ(first.track, 1);
    EXPECT_EQ(first.title, "One");
    EXPECT_EQ(first.artist, "Abba");
    EXPECT_EQ(first.path, "/music/One.mp3");
    EXPECT_EQ(first.cover, "/covers/one.png");
    EXPECT_EQ(first.length, 60);
    EXPECT_TRUE(first.canGoNext);
    EXPECT_FALSE(first.canGoPrevious);
    Click("cmdNext");
    const MediaStatus second = Status();
    EXPECT_EQ(second.title, "new.mp3");
    EXPECT_EQ(second.artist, "");
    EXPECT_EQ(second.cover, "");
    EXPECT_FALSE(second.canGoNext);
    EXPECT_TRUE(second.canGoPrevious);
}

TEST_F(PlayerRemoteTest, ManyChangesAreToldOnce) {
    StartPlayer();
    (void)Status();
    remote.shows = 0;
    for (int number = 0; number < 100; ++number) {
        Queue().AddPlaylist("/music/" + std::to_string(number) + ".mp3");
    }
    (void)Status();
    EXPECT_EQ(remote.shows, 1);
}

TEST_F(PlayerRemoteTest, TheCommandsAreThoseOfTheButtons) {
    PlayThree();
    Remote().RemotePause();
    EXPECT_EQ(Status().playback, Playback::Paused);
    EXPECT_EQ(Caption(), "Quavernet Player - Pause");
    Remote().RemotePause();
    EXPECT_EQ(Status().playback, Playback::Paused) << "nothing unless it plays";
    Remote().RemotePlay();
    EXPECT_EQ(Status().playback, Playback::Playing);
    calls.clear();
    Remote().RemotePlay();
    EXPECT_EQ(calls, Texts{}) << "nothing while it plays";
    Remote().RemotePlayPause();
    EXPECT_EQ(Status().playback, Playback::Paused);
    Remote().RemotePlayPause();
    EXPECT_EQ(Status().playback, Playback::Playing);
    Remote().RemoteNext();
    EXPECT_EQ(Status().title, "Two");
    Remote().RemotePrevious();
    EXPECT_EQ(Status().title, "One");
    Remote().RemoteStop();
    EXPECT_EQ(Status().playback, Playback::Stopped);
    Remote().RemotePlay();
    EXPECT_EQ(Status().playback, Playback::Playing);
    EXPECT_EQ(Entries()[0], "|> Abba - One");
}

TEST_F(PlayerRemoteTest, AStopInAPauseIsAStop) {
    PlayThree();
    Remote().RemotePause();
    EXPECT_EQ(Status().playback, Playback::Paused);
    Remote().RemoteStop();
    EXPECT_EQ(Status().playback, Playback::Stopped);
    EXPECT_TRUE(Queue().Paused()) << "the button still knows of it";
    Remote().RemotePlay();
    EXPECT_EQ(Status().playback, Playback::Playing);
    EXPECT_EQ(Entries()[0], "|> Abba - One");
    EXPECT_EQ(Caption(), "Quavernet Player");
    Remote().RemotePause();
    EXPECT_EQ(Status().playback, Playback::Paused);
    Click("cmdStop");
    Click("cmdPause");
    EXPECT_EQ(Status().playback, Playback::Playing);
    Click("cmdPause");
    EXPECT_EQ(Status().playback, Playback::Paused);
}

TEST_F(PlayerRemoteTest, PlayBeginsWithTheFirstEntry) {
    AddFile("Abba", "One");
    StartPlayer();
    Remote().RemotePlay();
    EXPECT_EQ(Status().playback, Playback::Stopped);
    Queue().AddPlaylist("/music/One.mp3");
    Remote().RemotePlay();
    EXPECT_EQ(Status().playback, Playback::Playing);
}

TEST_F(PlayerRemoteTest, AJumpIsToldAndTimeThatGoesByIsNot) {
    PlayThree();
    (void)Status();
    Remote().RemoteSetPosition(40);
    EXPECT_EQ(engine->CurrentPosition(), 40);
    (void)Status();
    EXPECT_EQ(remote.seeks, std::vector<double>{40});
    EXPECT_EQ(Slider("Slider1").value(), 40);
    QTest::keyClick(&Slider("Slider1"), Qt::Key_Home);
    (void)Status();
    EXPECT_EQ(remote.seeks, (std::vector<double>{40, 0}));
    EXPECT_EQ(Remote().RemotePosition(), 0);
    Remote().RemoteNext();
    (void)Status();
    EXPECT_EQ(remote.seeks.size(), 2U) << "a new track begins at 0 by itself";
}

TEST_F(PlayerRemoteTest, TheVolumeMovesTheSlider) {
    StartPlayer();
    Remote().RemoteSetVolume(0.5);
    EXPECT_EQ(Slider("Slider3").value(), 1250);
    EXPECT_EQ(engine->Volume(), -1250);
    EXPECT_EQ(LabelText("lblPercent"), "50 %");
    EXPECT_EQ(Status().volume, 0.5);
    Remote().RemoteSetVolume(7);
    EXPECT_EQ(Slider("Slider3").value(), 2500);
}

TEST_F(PlayerRemoteTest, TheLoopSetsTheBoxes) {
    StartPlayer();
    for (const auto loop : {MediaStatus::Loop::Track, MediaStatus::Loop::Playlist, MediaStatus::Loop::None}) {
        Remote().RemoteSetLoop(loop);
        EXPECT_EQ(Status().loop, loop);
        EXPECT_EQ(Part<QAbstractButton>("chkRepeat").isChecked(), loop == MediaStatus::Loop::Track);
        EXPECT_EQ(Part<QAbstractButton>("chkRepeatAll").isChecked(), loop == MediaStatus::Loop::Playlist);
    }
}

TEST_F(PlayerRemoteTest, RaiseRestoresThePlayer) {
    StartPlayer();
    Click("cmdMinimize");
    Remote().RemoteRaise();
    EXPECT_FALSE(Player().isMinimized());
}

TEST_F(PlayerRemoteTest, AfterThePlayerHasClosedItIsToldAndTheCommandsDoNothing) {
    PlayThree();
    (void)Status();
    Player().close();
    EXPECT_EQ(Status(), MediaStatus());
    Remote().RemotePlay();
    Remote().RemotePlayPause();
    Remote().RemotePause();
    Remote().RemoteStop();
    Remote().RemoteNext();
    Remote().RemotePrevious();
    Remote().RemoteSetPosition(10);
    Remote().RemoteSetVolume(0.1);
    Remote().RemoteSetLoop(MediaStatus::Loop::Track);
    EXPECT_EQ(Remote().RemotePosition(), 0);
    EXPECT_EQ(windows->Player().Form(), nullptr);
    Form().showMinimized();
    Remote().RemoteRaise();
    EXPECT_FALSE(Form().isMinimized());
    windows->Player().Show();
    Queue().AddPlaylist("/music/One.mp3");
    windows->Player().PlayFile(1);
    EXPECT_EQ(Status().title, "One");
}

TEST_F(PlayerRemoteTest, QuitClosesBothWindowsAndEndsTheProcess) {
    PlayThree();
    int exitCode = -1;
    try {
        Remote().RemoteQuit();
    } catch (const ProcessEnded& end) {
        exitCode = end.exitCode;
    }
    EXPECT_EQ(exitCode, 0);
    EXPECT_TRUE(settings.values.contains("WindowLeft"));
    EXPECT_TRUE(settings.values.contains("WindowLeftPlayer"));
}

TEST_F(PlayerRemoteTest, QuitDuringAScanIsRefusedLikeTheMainWindowsClose) {
    PlayThree();
    mainModule.ScanRunning = true;
    Remote().RemoteQuit();
    mainModule.ScanRunning = false;
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].title, "Programm beenden");
    EXPECT_TRUE(Form().isVisible());
    EXPECT_TRUE(Player().isVisible());
}

TEST_F(PlayerRemoteTest, QuitWithAnOpenBoxDoesNothing) {
    StartPlayer();
    QDialog box;
    box.setModal(true);
    box.show();
    Remote().RemoteQuit();
    EXPECT_TRUE(Form().isVisible());
    EXPECT_TRUE(mainModule.MainOpen);
}

} // namespace quavernet::test
