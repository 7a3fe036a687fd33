#include "adapters/dbus/BusDesktop.h"

#include "adapters/dbus/ConnectAside.h"
#include "adapters/dbus/NoteClicks.h"
#include "adapters/dbus/NoteNames.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QObject>
#include <QVariantMap>

#include <optional>
#include <vector>

namespace quavernet {

namespace {

constexpr const char* LauncherInterface = "com.canonical.Unity.LauncherEntry";
constexpr const char* UpdateSignal = "Update";
constexpr const char* NotesSender = "Quavernet";
constexpr int ServersOwnTime = -1; // How long a note stays.

// The text of a note may be read as markup.
QString PlainBody(const std::string& text) {
    return QString::fromStdString(text).toHtmlEscaped();
}

// The object of the program on the bus: its name as a path.
QString LauncherPath() {
    return u'/' + QString::fromLatin1(DesktopId).replace(u'.', u'/');
}

class BusDesktop final : public Desktop {
public:
    explicit BusDesktop(std::string busAddress) : m_busAddress(std::move(busAddress)) {}
    ~BusDesktop() override {
        if (m_state == State::Connected) {
            QDBusConnection::disconnectFromBus(m_connection); // What was shown goes with it.
        }
    }
    BusDesktop(const BusDesktop&) = delete;
    BusDesktop& operator=(const BusDesktop&) = delete;

    void Notify(const DesktopNote& note) override {
        m_note = note;
        Send();
    }
    void ShowProgress(double share) override { TellProgress(share, true); }
    void HideProgress() override { TellProgress(0, false); }

private:
    enum class State { Unasked, Connecting, Connected, Absent };

    void TellProgress(double share, bool isVisible) {
        QDBusMessage signal = QDBusMessage::createSignal(LauncherPath(), QLatin1String(LauncherInterface),
                                                         QLatin1String(UpdateSignal));
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
                if (isConnected) {
                    m_clicks.ListenOn(m_connection);
                }
                Send();
            });
            if (m_connection.isEmpty()) {
                m_state = State::Absent;
            }
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
    QDBusMessage CallOf(const DesktopNote& note) const {
        QDBusMessage call =
            QDBusMessage::createMethodCall(QLatin1String(notes::Service), QLatin1String(notes::Path),
                                           QLatin1String(notes::Service), QLatin1String(notes::Notify));
        const QStringList actions{QLatin1String(notes::ClickOnTheNote),
                                  QString::fromStdString(note.ClickName)};
        const QVariantMap hints{{QStringLiteral("desktop-entry"), QLatin1String(DesktopId)}};
        call << QLatin1String(NotesSender) << m_clicks.Shown << QLatin1String(DesktopId)
             << QString::fromStdString(note.Title) << PlainBody(note.Text) << actions << hints
             << ServersOwnTime;
        return call;
    }
    void SendNote() {
        if (!m_note) {
            return;
        }
        auto* watcher =
            new QDBusPendingCallWatcher(QDBusConnection(m_connection).asyncCall(CallOf(*m_note)), &m_calls);
        m_clicks.Clicked = m_note->Clicked;
        m_note.reset();
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &m_calls, [this, watcher] {
            const QDBusPendingReply<uint> reply = *watcher;
            if (reply.isValid()) {
                m_clicks.Shown = reply.value();
            }
            watcher->deleteLater();
        });
    }

    std::string m_busAddress;
    State m_state = State::Unasked;
    QString m_connection;
    std::optional<DesktopNote> m_note;      ///< Not yet sent.
    std::optional<QDBusMessage> m_progress; ///< Not yet sent.
    NoteClicks m_clicks;                    ///< Of the last note, which the next one takes the place of.
    QObject m_calls;                        ///< Owns those that wait for an answer.
    std::shared_ptr<bool> m_life = std::make_shared<bool>(); ///< Goes with the desktop, and tells so.
};

} // namespace

std::unique_ptr<Desktop> CreateBusDesktop(const std::string& busAddress) {
    return std::make_unique<BusDesktop>(busAddress);
}

} // namespace quavernet
