#include "adapters/dbus/ConnectAside.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QFile>

#include <atomic>
#include <system_error>
#include <thread>

namespace quavernet {

namespace {

QString NewConnectionName() {
    static std::atomic<int> last{0};
    return QString::fromLatin1("quavernet-%1").arg(++last);
}

bool HasSessionBus() {
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

} // namespace

QString ConnectAside(const std::string& busAddress, const std::weak_ptr<bool>& life,
                     const std::function<void(bool isConnected)>& taken) {
    if (busAddress.empty() && !HasSessionBus()) {
        return {};
    }
    const QString name = NewConnectionName();
    const auto connect = [name, address = QString::fromStdString(busAddress), life, taken] {
        const bool isConnected =
            (address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)
                               : QDBusConnection::connectToBus(address, name))
                .isConnected();
        if (!isConnected) {
            QDBusConnection::disconnectFromBus(name); // Here: it waits while another connection is made.
        }
        const auto take = [name, life, taken, isConnected] {
            if (isConnected && life.expired()) {
                QDBusConnection::disconnectFromBus(name);
            }
            if (!life.expired()) {
                taken(isConnected);
            }
        };
        QMetaObject::invokeMethod(qApp, take, Qt::QueuedConnection);
    };
    try {
        std::thread(connect).detach();
    } catch (const std::system_error&) {
        // The machine is short of everything: the program does without the bus.
    }
    return name;
}

} // namespace quavernet
