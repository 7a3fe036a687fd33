// A message bus of a test's own, and a listener on it.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTest>

#include <functional>

namespace quavernet::test {

inline bool WaitFor(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 10000);
}

class Bus {
public:
    Bus() {
        m_daemon.start(
            QStringLiteral("dbus-daemon"),
            {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address=1")});
        m_daemon.waitForReadyRead();
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    }
    ~Bus() {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    const QString& Address() const { return m_address; }

private:
    QProcess m_daemon;
    QString m_address;
};

/// A listener on the bus: what it prints of the signals of one object.
class BusMonitor {
public:
    explicit BusMonitor(const QString& address,
                        const QString& path = QStringLiteral("/org/mpris/MediaPlayer2")) {
        m_process.start(
            QStringLiteral("dbus-monitor"),
            {QStringLiteral("--address"), address, QStringLiteral("type='signal',path='%1'").arg(path)});
        WaitFor([this] { return Heard().contains(QLatin1String("NameLost")); }); // It is a monitor now.
        m_heard.clear();
    }
    ~BusMonitor() {
        m_process.kill();
        m_process.waitForFinished();
    }
    BusMonitor(const BusMonitor&) = delete;
    BusMonitor& operator=(const BusMonitor&) = delete;

    const QString& Heard() {
        m_heard += QString::fromUtf8(m_process.readAllStandardOutput());
        return m_heard;
    }

private:
    QProcess m_process;
    QString m_heard;
};

} // namespace quavernet::test
