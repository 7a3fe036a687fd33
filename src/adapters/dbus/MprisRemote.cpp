#include "adapters/dbus/MprisRemote.h"

#include "adapters/dbus/ConnectAside.h"
#include "adapters/dbus/MprisInterfaces.h"
#include "adapters/dbus/MprisMetadata.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QObject>

namespace quavernet {

namespace mpris {

namespace {

constexpr const char* BusName = "org.mpris.MediaPlayer2.quavernet";

// Of the bus itself.
constexpr const char* BusService = "org.freedesktop.DBus";
constexpr const char* BusPath = "/org/freedesktop/DBus";
constexpr const char* RequestName = "RequestName";
constexpr const char* PropertiesInterface = "org.freedesktop.DBus.Properties";
constexpr const char* PropertiesChanged = "PropertiesChanged";
constexpr uint DoNotQueue = 4;
constexpr uint IsOwner = 1;

} // namespace

class MprisRemote final : public MediaRemote {
public:
    explicit MprisRemote(const std::string& busAddress);
    ~MprisRemote() override;

    void SetCommands(MediaRemoteCommands* commands) override { m_shown.commands = commands; }
    void Show(const MediaStatus& status) override;
    void Seeked(double seconds) override;

private:
    void TakeConnection();
    void AskForName(const QString& name);

    Shown m_shown;
    bool m_connected = false;
    QObject m_object; ///< What is on the bus.
    RootInterface m_root{&m_object, m_shown};
    PlayerInterface m_player{&m_object, m_shown};
    std::shared_ptr<bool> m_life = std::make_shared<bool>(); ///< Goes with the remote, and tells so.
};

MprisRemote::MprisRemote(const std::string& busAddress) {
    m_shown.connection = ConnectAside(busAddress, m_life, [this](bool isConnected) {
        if (isConnected) {
            TakeConnection();
        }
    });
}

MprisRemote::~MprisRemote() {
    if (m_connected) {
        QDBusConnection(m_shown.connection).unregisterObject(QLatin1String(ObjectPath));
        QDBusConnection::disconnectFromBus(m_shown.connection); // Gives the name back as well.
    }
}

void MprisRemote::TakeConnection() {
    QDBusConnection bus(m_shown.connection);
    m_connected = bus.registerObject(QLatin1String(ObjectPath), &m_object, QDBusConnection::ExportAdaptors);
    AskForName(QLatin1String(BusName));
}

/// A second program of this user has the name already: this one then takes a name with its process number.
void MprisRemote::AskForName(const QString& name) {
    QDBusMessage request =
        QDBusMessage::createMethodCall(QLatin1String(BusService), QLatin1String(BusPath),
                                       QLatin1String(BusService), QLatin1String(RequestName));
    request << name << DoNotQueue;
    auto* watcher =
        new QDBusPendingCallWatcher(QDBusConnection(m_shown.connection).asyncCall(request), &m_object);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &m_object, [this, name, watcher] {
        const QDBusPendingReply<uint> reply = *watcher;
        const bool isTaken = reply.isValid() && reply.value() != IsOwner;
        watcher->deleteLater();
        if (isTaken && name == QLatin1String(BusName)) {
            AskForName(name + QString::fromLatin1(".instance%1").arg(QCoreApplication::applicationPid()));
        }
    });
}

void MprisRemote::Show(const MediaStatus& status) {
    if (status == m_shown.status) {
        return;
    }
    const QVariantMap before = PlayerProperties(m_shown.status, m_shown.serial);
    if (status.path != m_shown.status.path) {
        ++m_shown.serial;
    }
    m_shown.status = status;
    if (!m_connected) {
        return;
    }
    QVariantMap changed = PlayerProperties(status, m_shown.serial);
    for (auto property = before.cbegin(); property != before.cend(); ++property) {
        if (changed.value(property.key()) == property.value()) {
            changed.remove(property.key());
        }
    }
    QDBusMessage signal = QDBusMessage::createSignal(
        QLatin1String(ObjectPath), QLatin1String(PropertiesInterface), QLatin1String(PropertiesChanged));
    signal << QString::fromLatin1(PlayerInterfaceName) << changed << QStringList();
    QDBusConnection(m_shown.connection).send(signal);
}

void MprisRemote::Seeked(double seconds) {
    Q_EMIT m_player.Seeked(Microseconds(seconds));
}

} // namespace mpris

std::unique_ptr<MediaRemote> CreateMprisRemote(const std::string& busAddress) {
    return std::make_unique<mpris::MprisRemote>(busAddress);
}

} // namespace quavernet
