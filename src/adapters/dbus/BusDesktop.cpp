#include "adapters/dbus/BusDesktop.h"

#include "adapters/dbus/ConnectAside.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFile>
#include <QObject>
#include <QVariantMap>

#include <optional>
#include <vector>

namespace quavernet {

namespace {

constexpr const char* DesktopId = "io.greyfinch.Quavernet";
constexpr const char* NotesService = "org.freedesktop.Notifications";
constexpr const char* NotesPath = "/org/freedesktop/Notifications";
constexpr const char* LauncherPath = "/io/greyfinch/Quavernet";
constexpr const char* LauncherInterface = "com.canonical.Unity.LauncherEntry";
constexpr const char* NotifyMethod = "Notify";
constexpr const char* UpdateSignal = "Update";
constexpr const char* NotesSender = "Quavernet";
constexpr int ServersOwnTime = -1; // How long a note stays.

// The text of a note may be read as markup.
QString PlainBody(const std::string& text) {
    return QString::fromStdString(text).toHtmlEscaped();
}

// Where there is none the library would try to start one.
bool HasSessionBus() {
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

class BusDesktop final : public Desktop {
public:
    explicit BusDesktop(std::string busAddress)
        : m_busAddress(std::move(busAddress)),
          m_state(m_busAddress.empty() && !HasSessionBus() ? State::Absent : State::Unasked) {}
    ~BusDesktop() override {
        if (m_state == State::Connected) {
            QDBusConnection::disconnectFromBus(m_connection); // What was shown goes with it.
        }
    }
    BusDesktop(const BusDesktop&) = delete;
    BusDesktop& operator=(const BusDesktop&) = delete;

    void Notify(const std::string& title, const std::string& text) override {
        QDBusMessage call =
            QDBusMessage::createMethodCall(QLatin1String(NotesService), QLatin1String(NotesPath),
                                           QLatin1String(NotesService), QLatin1String(NotifyMethod));
        const QVariantMap hints{{QStringLiteral("desktop-entry"), QLatin1String(DesktopId)}};
        call << QLatin1String(NotesSender) << m_shownNote << QLatin1String(DesktopId)
             << QString::fromStdString(title) << PlainBody(text) << QStringList() << hints << ServersOwnTime;
        m_note = call;
        Send();
    }
    void ShowProgress(double share) override { TellProgress(share, true); }
    void HideProgress() override { TellProgress(0, false); }

private:
    enum class State { Unasked, Connecting, Connected, Absent };

    void TellProgress(double share, bool isVisible) {
        QDBusMessage signal = QDBusMessage::createSignal(
            QLatin1String(LauncherPath), QLatin1String(LauncherInterface), QLatin1String(UpdateSignal));
        const QVariantMap properties{{QStringLiteral("progress"), share},
                                     {QStringLiteral("progress-visible"), isVisible}};
        signal << QStringLiteral("application://%1.desktop").arg(QLatin1String(DesktopId)) << properties;
        m_progress = signal;
        Send();
    }

    // While the connection is made the newest of both waits.
    void Send() {
        if (m_state == State::Unasked) {
            m_state = State::Connecting;
            m_connection = ConnectAside(m_busAddress, m_life, [this](bool isConnected) {
                m_state = isConnected ? State::Connected : State::Absent;
                Send();
            });
        }
        if (m_state == State::Connected) {
            SendProgress();
            SendNote();
        }
    }
    void SendProgress() {
        if (m_progress) {
            QDBusConnection(m_connection).send(*m_progress);
            m_progress.reset();
        }
    }
    void SendNote() {
        if (!m_note) {
            return;
        }
        auto* watcher =
            new QDBusPendingCallWatcher(QDBusConnection(m_connection).asyncCall(*m_note), &m_calls);
        m_note.reset();
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &m_calls, [this, watcher] {
            const QDBusPendingReply<uint> reply = *watcher;
            if (reply.isValid()) {
                m_shownNote = reply.value();
            }
            watcher->deleteLater();
        });
    }

    std::string m_busAddress;
    State m_state;
    QString m_connection;
    std::optional<QDBusMessage> m_note;     ///< Not yet sent.
    std::optional<QDBusMessage> m_progress; ///< Not yet sent.
    uint m_shownNote = 0; ///< Number of the last note, which the next one takes the place of.
    QObject m_calls;      ///< Owns those that wait for an answer.
    std::shared_ptr<bool> m_life = std::make_shared<bool>(); ///< Goes with the desktop, and tells so.
};

} // namespace

std::unique_ptr<Desktop> CreateBusDesktop(const std::string& busAddress) {
    return std::make_unique<BusDesktop>(busAddress);
}

} // namespace quavernet
