// What the program tells the desktop, heard on a bus of the test's own.
#include "adapters/dbus/BusDesktop.h"
#include "gui/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace quavernet::test {

namespace {

DesktopNote Note(const std::string& text) {
    return {"Quavernet", text, "Show", {}};
}

/// Shows notes as a desktop does: each new one has the next number.
class NotesServer : public QDBusVirtualObject {
public:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() != QLatin1String("Notify")) {
            return false;
        }
        notes.push_back(message.arguments());
        signature = message.signature();
        return connection.send(message.createReply(static_cast<uint>(6 + notes.size())));
    }

    std::vector<QVariantList> notes;
    QString signature;
};

class BusDesktopTest : public ::testing::Test {
protected:
    BusDesktopTest() : server(QDBusConnection::connectToBus(bus.Address(), QStringLiteral("server"))) {
        server.registerVirtualObject(QStringLiteral("/org/freedesktop/Notifications"), &shown);
        server.registerService(QStringLiteral("org.freedesktop.Notifications"));
    }
    static QDBusMessage NotesSignal(const char* name) {
        return QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/Notifications"),
                                          QStringLiteral("org.freedesktop.Notifications"),
                                          QLatin1String(name));
    }
    void Token(unsigned int note, const char* token) {
        QDBusMessage signal = NotesSignal("ActivationToken");
        signal << note << QString::fromLatin1(token);
        server.send(signal);
    }
    void Click(unsigned int note, const char* action) {
        QDBusMessage signal = NotesSignal("ActionInvoked");
        signal << note << QString::fromLatin1(action);
        server.send(signal);
    }

    /// A note whose clicks add to `tokens` what the toolkit would find then.
    DesktopNote NotingNote(const char* text) {
        DesktopNote note = Note(text);
        note.Clicked = [this] { tokens.push_back(qgetenv("XDG_ACTIVATION_TOKEN").toStdString()); };
        return note;
    }
    /// Clicks on a note until one has come: none is heard before the server's answer has told the note's
    /// number.
    bool ClickUntilHeard(unsigned int note) {
        return WaitFor([&, before = tokens.size()] {
            Click(note, "default");
            return tokens.size() > before;
        });
    }
    /// One more click, known by its token: what was sent before has been heard by then.
    bool HearsToken(unsigned int note, const char* token) {
        Token(note, token);
        Click(note, "default");
        return WaitFor([&] { return !tokens.empty() && tokens.back() == token; });
    }

    ~BusDesktopTest() override { QDBusConnection::disconnectFromBus(QStringLiteral("server")); }

    Bus bus;
    NotesServer shown;
    QDBusConnection server;
    std::vector<std::string> tokens;
    std::unique_ptr<Desktop> desktop = CreateBusDesktop(bus.Address().toStdString());
};

TEST_F(BusDesktopTest, ANoteHasTitleTextAndPictureAndTheNextOneTakesItsPlace) {
    desktop->Notify(Note("Fertig: 3 neu <b>&"));
    ASSERT_TRUE(WaitFor([this] { return shown.notes.size() == 1; })) << "the first call connects";
    EXPECT_EQ(shown.signature, QLatin1String("susssasa{sv}i"));
    const QVariantList& first = shown.notes[0];
    EXPECT_EQ(first[0].toString(), QLatin1String("Quavernet"));
    EXPECT_EQ(first[1].toUInt(), 0U);
    EXPECT_EQ(first[2].toString(), QLatin1String("io.greyfinch.Quavernet"));
    EXPECT_EQ(first[3].toString(), QLatin1String("Quavernet"));
    EXPECT_EQ(first[4].toString(), QStringLiteral("Fertig: 3 neu &lt;b&gt;&amp;"))
        << "it may be read as markup";
    EXPECT_EQ(first[7].toInt(), -1);
    ASSERT_TRUE(WaitFor([this] {
        desktop->Notify(Note("Fertig: 4 neu"));
        return shown.notes.back()[1].toUInt() != 0;
    })) << "once the server's answer has told the number";
    EXPECT_GE(shown.notes.back()[1].toUInt(), 7U);
    EXPECT_LT(shown.notes.back()[1].toUInt(), 6 + shown.notes.size()) << "one that was shown before";
}

TEST_F(BusDesktopTest, AClickOnTheNoteThatIsShownIsTold) {
    desktop->Notify(NotingNote("Fertig: 3 neu"));
    ASSERT_TRUE(WaitFor([this] { return shown.notes.size() == 1; }));
    EXPECT_EQ(shown.notes[0][5].toStringList(),
              (QStringList{QStringLiteral("default"), QStringLiteral("Show")}));
    ASSERT_TRUE(ClickUntilHeard(7));
    ASSERT_TRUE(HearsToken(7, "first"));
    const std::size_t before = tokens.size();
    Click(99, "default");
    Click(7, "other");
    ASSERT_TRUE(HearsToken(7, "last"));
    EXPECT_EQ(tokens.size(), before + 1) << "notes of others and other actions are none of ours";
    DesktopNote next = Note("Fertig: 4 neu");
    int clicks = 0;
    next.Clicked = [&] { ++clicks; };
    desktop->Notify(next);
    ASSERT_TRUE(WaitFor([this] { return shown.notes.size() == 2; }));
    ASSERT_TRUE(WaitFor([&] {
        Click(8, "default");
        return clicks > 0;
    }));
    EXPECT_EQ(tokens.size(), before + 1) << "the next note has a click of its own";
}

TEST_F(BusDesktopTest, TheRightToComeToTheFrontIsTakenOverFromTheDesktopForTheClickAlone) {
    desktop->Notify(NotingNote("Fertig: 3 neu"));
    ASSERT_TRUE(WaitFor([this] { return shown.notes.size() == 1; }));
    ASSERT_TRUE(ClickUntilHeard(7));
    Token(7, "ours");
    Token(99, "of another");
    Click(7, "default");
    ASSERT_TRUE(WaitFor([this] { return tokens.back() == "ours"; }));
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN")) << "programs that it starts would get it";
    Click(7, "default");
    ASSERT_TRUE(WaitFor([this] { return tokens.back().empty(); })) << "it holds for one click";
}

TEST_F(BusDesktopTest, ProgressIsASignalOfTheLauncherEntry) {
    BusMonitor monitor(bus.Address(), QStringLiteral("/io/greyfinch/Quavernet"));
    desktop->ShowProgress(0.25);
    ASSERT_TRUE(WaitFor([&] { return monitor.Heard().contains(QLatin1String("progress-visible")); }));
    EXPECT_TRUE(monitor.Heard().contains(
        QLatin1String("interface=com.canonical.Unity.LauncherEntry; member=Update")));
    EXPECT_TRUE(
        monitor.Heard().contains(QLatin1String("string \"application://io.greyfinch.Quavernet.desktop\"")));
    EXPECT_TRUE(monitor.Heard().contains(QLatin1String("double 0.25")));
    EXPECT_TRUE(WaitFor([&] { return monitor.Heard().contains(QLatin1String("boolean true")); }));
    desktop->HideProgress();
    EXPECT_TRUE(WaitFor([&] { return monitor.Heard().contains(QLatin1String("boolean false")); }));
}

TEST_F(BusDesktopTest, WhileItConnectsTheNewestWaits) {
    BusMonitor monitor(bus.Address(), QStringLiteral("/io/greyfinch/Quavernet"));
    desktop->ShowProgress(0.25);
    desktop->ShowProgress(0.5);
    desktop->Notify(Note("one"));
    desktop->Notify(Note("two"));
    ASSERT_TRUE(WaitFor([this] { return !shown.notes.empty(); }));
    ASSERT_TRUE(WaitFor([&] { return monitor.Heard().contains(QLatin1String("progress-visible")); }));
    EXPECT_EQ(shown.notes.size(), 1U);
    EXPECT_EQ(shown.notes[0][4].toString(), QLatin1String("two"));
    EXPECT_FALSE(monitor.Heard().contains(QLatin1String("double 0.25")));
}

TEST_F(BusDesktopTest, WithoutABusNothingHappens) {
    desktop = CreateBusDesktop("unix:path=/nowhere/at/all");
    desktop->Notify(Note("one"));
    desktop->ShowProgress(0.5);
    QTest::qWait(100); // The refusal arrives.
    desktop->Notify(Note("two"));
    desktop->HideProgress();
    desktop.reset();
    EXPECT_TRUE(shown.notes.empty());
}

TEST_F(BusDesktopTest, TheBusOfTheSessionIsTheOneThatTheEnvironmentNames) {
    const QByteArray before = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    qputenv("XDG_RUNTIME_DIR", "/nowhere");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    desktop = CreateBusDesktop();
    desktop->Notify(Note("there is none"));
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.Address().toUtf8());
    desktop->Notify(Note("nor is it looked for again"));
    const std::unique_ptr<Desktop> later = CreateBusDesktop();
    later->Notify(Note("there is one"));
    EXPECT_TRUE(WaitFor([this] { return !shown.notes.empty(); }));
    EXPECT_EQ(shown.notes.size(), 1U);
    EXPECT_EQ(shown.notes[0][4].toString(), QLatin1String("there is one"));
    before.isNull() ? qunsetenv("DBUS_SESSION_BUS_ADDRESS") : qputenv("DBUS_SESSION_BUS_ADDRESS", before);
    folder.isNull() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", folder);
}

TEST_F(BusDesktopTest, ADesktopThatGoesWhileItConnectsTakesTheConnectionAlong) {
    desktop->Notify(Note("one"));
    desktop.reset();
    QTest::qWait(200); // The connection arrives.
    EXPECT_TRUE(shown.notes.empty());
}

} // namespace
} // namespace quavernet::test
