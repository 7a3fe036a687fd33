// The player on a bus of the test's own, asked by a real client.
#include "adapters/dbus/ConnectAside.h"
#include "adapters/dbus/MprisRemote.h"
#include "gui/PrivateBus.h"
#include "support/TemporaryFolder.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QProcess>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace quavernet::test {

namespace {

constexpr const char* BusPlayer = "org.mpris.MediaPlayer2.Player";
constexpr const char* BusRoot = "org.mpris.MediaPlayer2";
constexpr const char* BusPlace = "/org/mpris/MediaPlayer2";
constexpr const char* BusName = "org.mpris.MediaPlayer2.quavernet";

/// Writes the commands down, and does what a player would.
class RecordingRemoteCommands : public MediaRemoteCommands {
public:
    void RemotePlay() override { calls.push_back("play"); }
    void RemotePause() override { calls.push_back("pause"); }
    void RemotePlayPause() override { calls.push_back("play-pause"); }
    void RemoteStop() override { calls.push_back("stop"); }
    void RemoteNext() override { calls.push_back("next"); }
    void RemotePrevious() override { calls.push_back("previous"); }
    void RemoteSetPosition(double seconds) override { calls.push_back("at " + std::to_string(seconds)); }
    double RemotePosition() const override { return position; }
    void RemoteSetVolume(double volume) override { calls.push_back("volume " + std::to_string(volume)); }
    void RemoteSetLoop(MediaStatus::Loop loop) override {
        calls.push_back("loop " + std::to_string(static_cast<int>(loop)));
    }
    void RemoteRaise() override { calls.push_back("raise"); }
    void RemoteQuit() override { calls.push_back("quit"); }

    std::vector<std::string> calls;
    double position = 3.5;
};

MediaStatus PlayingSong() {
    MediaStatus status;
    status.playback = MediaStatus::Playback::Playing;
    status.track = 2;
    status.title = "Über den Wolken";
    status.artist = "Die Probe";
    status.path = "/music/Über 50%.mp3";
    status.cover = "/covers/front 1.png";
    status.length = 215.5;
    status.volume = 0.5;
    status.canGoNext = true;
    status.canGoPrevious = true;
    return status;
}

class MediaRemoteTest : public ::testing::Test {
protected:
    MediaRemoteTest()
        : client(QDBusConnection::connectToBus(bus.Address(), QStringLiteral("client"))),
          remote(CreateMprisRemote(bus.Address().toStdString())) {
        remote->SetCommands(&commands);
        isThere = WaitFor([this] { return Names().contains(QLatin1String(BusName)); });
    }
    ~MediaRemoteTest() override { QDBusConnection::disconnectFromBus(QStringLiteral("client")); }

    QStringList Names() {
        const QDBusMessage answer = client.call(QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ListNames")));
        return answer.arguments().value(0).toStringList();
    }

    /// What playerctl prints, without the end of the line.
    std::string Playerctl(const QStringList& arguments) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus.Address());
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral("playerctl"),
                      QStringList{QStringLiteral("-p"), QStringLiteral("quavernet")} + arguments);
        EXPECT_TRUE(WaitFor([&] { return process.state() == QProcess::NotRunning; }));
        return QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError())
            .trimmed()
            .toStdString();
    }

    /// The command that playerctl leads to.
    std::string CallOf(const QStringList& arguments) {
        commands.calls.clear();
        EXPECT_EQ(Playerctl(arguments), "");
        EXPECT_TRUE(WaitFor([this] { return !commands.calls.empty(); }));
        return commands.calls.empty() ? std::string() : commands.calls[0];
    }

    QVariant Property(const char* interface, const char* name) {
        QDBusMessage request = QDBusMessage::createMethodCall(
            QLatin1String(BusName), QLatin1String(BusPlace),
            QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
        request << QLatin1String(interface) << QLatin1String(name);
        QDBusPendingCall call = client.asyncCall(request);
        WaitFor([&] { return call.isFinished(); });
        return qvariant_cast<QDBusVariant>(call.reply().arguments().value(0)).variant();
    }

    /// A call without an answer of interest. The error's name, or an empty text.
    QString Call(const char* interface, const char* method, const QVariantList& arguments = {}) {
        QDBusMessage request = QDBusMessage::createMethodCall(
            QLatin1String(BusName), QLatin1String(BusPlace), QLatin1String(interface), QLatin1String(method));
        request.setArguments(arguments);
        QDBusPendingCall call = client.asyncCall(request);
        WaitFor([&] { return call.isFinished(); });
        QCoreApplication::processEvents();
        return call.reply().errorName();
    }

    Bus bus;
    QDBusConnection client;
    RecordingRemoteCommands commands;
    std::unique_ptr<MediaRemote> remote;
    bool isThere = false;
};

TEST_F(MediaRemoteTest, AClientFindsThePlayerAndReadsWhatPlays) {
    ASSERT_TRUE(isThere);
    EXPECT_EQ(Playerctl({QStringLiteral("status")}), "Stopped");
    remote->Show(PlayingSong());
    EXPECT_EQ(Playerctl({QStringLiteral("status")}), "Playing");
    EXPECT_EQ(
        Playerctl({QStringLiteral("metadata"), QStringLiteral("--format"),
                   QStringLiteral("{{artist}}|{{title}}|{{mpris:length}}|{{mpris:artUrl}}|{{xesam:url}}")}),
        "Die Probe|Über den Wolken|215500000|file:///covers/front%201.png|"
        "file:///music/%C3%9Cber%2050%25.mp3");
    EXPECT_EQ(Property(BusPlayer, "Position").toLongLong(), 3500000);
    EXPECT_EQ(Playerctl({QStringLiteral("volume")}), "0.500000");
    EXPECT_EQ(Playerctl({QStringLiteral("loop")}), "None");
    MediaStatus paused = PlayingSong();
    paused.playback = MediaStatus::Playback::Paused;
    paused.loop = MediaStatus::Loop::Playlist;
    remote->Show(paused);
    EXPECT_EQ(Playerctl({QStringLiteral("status")}), "Paused");
    EXPECT_EQ(Playerctl({QStringLiteral("loop")}), "Playlist");
}

TEST_F(MediaRemoteTest, EachCommandOfAClientArrives) {
    ASSERT_TRUE(isThere);
    remote->Show(PlayingSong());
    EXPECT_EQ(CallOf({QStringLiteral("play")}), "play");
    EXPECT_EQ(CallOf({QStringLiteral("pause")}), "pause");
    EXPECT_EQ(CallOf({QStringLiteral("play-pause")}), "play-pause");
    EXPECT_EQ(CallOf({QStringLiteral("stop")}), "stop");
    EXPECT_EQ(CallOf({QStringLiteral("next")}), "next");
    EXPECT_EQ(CallOf({QStringLiteral("previous")}), "previous");
    EXPECT_EQ(CallOf({QStringLiteral("position"), QStringLiteral("60")}), "at 60.000000");
    EXPECT_EQ(CallOf({QStringLiteral("position"), QStringLiteral("10+")}), "at 13.500000");
    EXPECT_EQ(CallOf({QStringLiteral("position"), QStringLiteral("10-")}), "at 0.000000");
    EXPECT_EQ(CallOf({QStringLiteral("volume"), QStringLiteral("0.25")}), "volume 0.250000");
    EXPECT_EQ(CallOf({QStringLiteral("loop"), QStringLiteral("Track")}), "loop 1");
    EXPECT_EQ(CallOf({QStringLiteral("loop"), QStringLiteral("Playlist")}), "loop 2");
    EXPECT_EQ(CallOf({QStringLiteral("loop"), QStringLiteral("None")}), "loop 0");
}

TEST_F(MediaRemoteTest, TheWindowIsRaisedAndTheProgramQuits) {
    ASSERT_TRUE(isThere);
    EXPECT_EQ(Property(BusRoot, "Identity").toString(), QStringLiteral("Quavernet"));
    EXPECT_EQ(Property(BusRoot, "DesktopEntry").toString(), QStringLiteral("io.greyfinch.Quavernet"));
    EXPECT_TRUE(Property(BusRoot, "CanRaise").toBool());
    EXPECT_TRUE(Property(BusRoot, "CanQuit").toBool());
    EXPECT_FALSE(Property(BusRoot, "HasTrackList").toBool());
    Call(BusRoot, "Raise");
    Call(BusRoot, "Quit");
    EXPECT_TRUE(WaitFor([this] { return commands.calls == std::vector<std::string>{"raise", "quit"}; }));
}

TEST_F(MediaRemoteTest, ASeekBeyondTheEndIsTheNextTrack) {
    ASSERT_TRUE(isThere);
    remote->Show(PlayingSong());
    Call(BusPlayer, "Seek", {qlonglong{1000000000}});
    EXPECT_TRUE(WaitFor([this] { return commands.calls == std::vector<std::string>{"next"}; }));
}

TEST_F(MediaRemoteTest, APositionForAnotherTrackOrOutsideOfThisOneIsIgnored) {
    ASSERT_TRUE(isThere);
    remote->Show(PlayingSong());
    MediaStatus other = PlayingSong();
    other.path = "/music/other.mp3";
    const auto trackOf = [](const QVariant& facts) {
        return qdbus_cast<QVariantMap>(facts).value(QStringLiteral("mpris:trackid"));
    };
    const QVariant before = trackOf(Property(BusPlayer, "Metadata"));
    remote->Show(other);
    const QVariant now = trackOf(Property(BusPlayer, "Metadata"));
    EXPECT_NE(qvariant_cast<QDBusObjectPath>(before).path(), qvariant_cast<QDBusObjectPath>(now).path());
    Call(BusPlayer, "SetPosition", {before, qlonglong{1000000}});
    Call(BusPlayer, "SetPosition", {now, qlonglong{-1}});
    Call(BusPlayer, "SetPosition", {now, qlonglong{300000000}});
    Call(BusPlayer, "SetPosition", {now, qlonglong{2000000}});
    EXPECT_TRUE(WaitFor([this] { return !commands.calls.empty(); }));
    EXPECT_EQ(commands.calls, std::vector<std::string>{"at 2.000000"});
}

TEST_F(MediaRemoteTest, ListenersHearWhatHasChangedAndNothingElse) {
    ASSERT_TRUE(isThere);
    BusMonitor monitor(bus.Address());
    MediaStatus status = PlayingSong();
    remote->Show(status);
    remote->Show(status);
    status.playback = MediaStatus::Playback::Paused;
    remote->Show(status);
    remote->Seeked(12.25);
    ASSERT_TRUE(WaitFor([&] { return monitor.Heard().contains(QLatin1String("int64 12250000")); }));
    const QStringList changes = monitor.Heard().split(QStringLiteral("member=PropertiesChanged"));
    ASSERT_EQ(changes.size(), 3) << "the same again tells nothing: " << monitor.Heard().toStdString();
    EXPECT_TRUE(changes[1].contains(QLatin1String("Metadata")));
    EXPECT_TRUE(changes[2].contains(QLatin1String("Paused")));
    EXPECT_FALSE(changes[2].contains(QLatin1String("Metadata")));
    EXPECT_FALSE(changes[2].contains(QLatin1String("CanPlay")));
    EXPECT_TRUE(changes[2].contains(QLatin1String("member=Seeked")));
}

TEST_F(MediaRemoteTest, WithoutATrackThereIsNothingToPlay) {
    ASSERT_TRUE(isThere);
    EXPECT_FALSE(Property(BusPlayer, "CanPlay").toBool());
    EXPECT_FALSE(Property(BusPlayer, "CanSeek").toBool());
    EXPECT_TRUE(Property(BusPlayer, "CanControl").toBool());
    remote->Show(PlayingSong());
    EXPECT_TRUE(Property(BusPlayer, "CanPlay").toBool());
    EXPECT_TRUE(Property(BusPlayer, "CanSeek").toBool());
    EXPECT_TRUE(Property(BusPlayer, "CanGoNext").toBool());
    remote->Show(MediaStatus());
    EXPECT_FALSE(Property(BusPlayer, "CanPlay").toBool());
}

TEST_F(MediaRemoteTest, AFileThatPlaysCanBePausedWhateverEntryCountsAsCurrent) {
    ASSERT_TRUE(isThere);
    MediaStatus status = PlayingSong();
    remote->Show(status);
    const QVariant before = Property(BusPlayer, "Metadata");
    status.track = 0;
    remote->Show(status);
    EXPECT_TRUE(Property(BusPlayer, "CanPause").toBool());
    EXPECT_TRUE(Property(BusPlayer, "CanSeek").toBool());
    const auto trackOf = [](const QVariant& facts) {
        const QVariant track = qdbus_cast<QVariantMap>(facts).value(QStringLiteral("mpris:trackid"));
        return qvariant_cast<QDBusObjectPath>(track).path();
    };
    EXPECT_EQ(trackOf(Property(BusPlayer, "Metadata")), trackOf(before)) << "the same file plays on";
}

TEST_F(MediaRemoteTest, AnAddressIsNotOpened) {
    ASSERT_TRUE(isThere);
    EXPECT_EQ(Call(BusPlayer, "OpenUri", {QStringLiteral("http://example.org/song.mp3")}),
              QStringLiteral("org.freedesktop.DBus.Error.NotSupported"));
    EXPECT_TRUE(commands.calls.empty());
}

TEST_F(MediaRemoteTest, TextsThatAreNotUtf8AreShownAllTheSame) {
    ASSERT_TRUE(isThere);
    MediaStatus status = PlayingSong();
    status.title = "caf\xe9";
    status.path = "/music/caf\xe9.mp3";
    remote->Show(status);
    EXPECT_EQ(Playerctl({QStringLiteral("metadata"), QStringLiteral("title")}), "caf\xef\xbf\xbd");
    EXPECT_EQ(Playerctl({QStringLiteral("metadata"), QStringLiteral("xesam:url")}),
              "file:///music/caf%E9.mp3");
}

TEST_F(MediaRemoteTest, ASecondPlayerTakesANameOfItsOwnAndBothGoAgain) {
    ASSERT_TRUE(isThere);
    auto second = CreateMprisRemote(bus.Address().toStdString());
    const QString name =
        QLatin1String(BusName) + QStringLiteral(".instance%1").arg(QCoreApplication::applicationPid());
    EXPECT_TRUE(WaitFor([&] { return Names().contains(name); }));
    second.reset();
    EXPECT_TRUE(WaitFor([&] { return !Names().contains(name); }));
    remote.reset();
    EXPECT_TRUE(WaitFor([this] { return !Names().contains(QLatin1String(BusName)); }));
}

TEST_F(MediaRemoteTest, CommandsWithoutATakerGoNowhere) {
    ASSERT_TRUE(isThere);
    remote->SetCommands(nullptr);
    EXPECT_EQ(Call(BusPlayer, "Play"), QString());
    EXPECT_EQ(Property(BusPlayer, "Position").toLongLong(), 0);
    EXPECT_TRUE(commands.calls.empty());
}

TEST(MediaRemoteWithoutBusTest, WithoutABusNobodyIsToldAndNothingFails) {
    const std::unique_ptr<MediaRemote> remote = CreateMprisRemote("unix:path=/nowhere/bus");
    remote->Show(PlayingSong());
    remote->Seeked(1);
    QTest::qWait(50);
    remote->Show(MediaStatus());
}

TEST(MediaRemoteWithoutBusTest, WhereTheEnvironmentNamesNoBusNoneIsLookedFor) {
    const QByteArray before = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    qputenv("XDG_RUNTIME_DIR", "/nowhere");
    for (const bool isNamed : {false, true}) {
        isNamed ? qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus")
                : qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        bool told = false;
        const auto life = std::make_shared<bool>();
        const QString name = ConnectAside({}, life, [&](bool) { told = true; });
        EXPECT_EQ(name.isEmpty(), !isNamed);
        EXPECT_EQ(QTest::qWaitFor([&] { return told; }, isNamed ? 10000 : 100), isNamed);
        // By its address: a thread would read the variables while they are put back.
        const std::unique_ptr<MediaRemote> remote =
            isNamed ? CreateMprisRemote("unix:path=/nowhere/bus") : CreateMprisRemote();
        remote->Show(PlayingSong());
        remote->Seeked(1);
    }
    before.isNull() ? qunsetenv("DBUS_SESSION_BUS_ADDRESS") : qputenv("DBUS_SESSION_BUS_ADDRESS", before);
    folder.isNull() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", folder);
}

TEST(MediaRemoteWithoutBusTest, ABusThatDoesNotAnswerHoldsNothingUp) {
    const TemporaryFolder folder;
    const std::string path = folder / "bus";
    const int server = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(server, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(::listen(server, 5), 0);
    auto remote = CreateMprisRemote("unix:path=" + path);
    remote->Show(PlayingSong());
    QTest::qWait(50);
    remote.reset();
    ::close(server); // Lets the thread go that still waits for an answer.
    QTest::qWait(50);
}

} // namespace

} // namespace quavernet::test
