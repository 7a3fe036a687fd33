#include "adapters/dbus/MprisInterfaces.h"

#include "adapters/dbus/MprisMetadata.h"
#include "platform/Desktop.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace quavernet::mpris {

namespace {

constexpr const char* ProgramName = "Quavernet";

/// Runs a command from the message loop, if there is still somebody to take it.
void RunLater(QObject* context, Shown& shown, std::function<void(MediaRemoteCommands&)> command) {
    QTimer::singleShot(0, context, [&shown, command = std::move(command)] {
        if (shown.commands != nullptr) {
            command(*shown.commands);
        }
    });
}

} // namespace

QString RootInterface::Identity() const {
    return QLatin1String(ProgramName);
}

QString RootInterface::DesktopEntry() const {
    return QLatin1String(quavernet::DesktopId);
}

void RootInterface::Raise() {
    RunLater(this, m_shown, [](MediaRemoteCommands& commands) { commands.RemoteRaise(); });
}

void RootInterface::Quit() {
    RunLater(this, m_shown, [](MediaRemoteCommands& commands) { commands.RemoteQuit(); });
}

void PlayerInterface::Later(std::function<void(MediaRemoteCommands&)> command) {
    RunLater(this, m_shown, std::move(command));
}

QString PlayerInterface::PlaybackStatus() const {
    return QLatin1String(PlaybackStatusText(m_shown.status.playback));
}

QString PlayerInterface::LoopStatus() const {
    return QLatin1String(LoopStatusText(m_shown.status.loop));
}

void PlayerInterface::SetLoopStatus(const QString& text) {
    Later([loop = LoopOfText(text)](MediaRemoteCommands& commands) { commands.RemoteSetLoop(loop); });
}

QVariantMap PlayerInterface::TrackFacts() const {
    return Metadata(m_shown.status, m_shown.serial);
}

void PlayerInterface::SetVolume(double volume) {
    // Written so that "not a number" becomes 0.
    const double place = volume > 0 ? std::min(volume, 1.0) : 0.0;
    Later([place](MediaRemoteCommands& commands) { commands.RemoteSetVolume(place); });
}

qlonglong PlayerInterface::Position() const {
    return m_shown.commands == nullptr ? 0 : Microseconds(std::max(m_shown.commands->RemotePosition(), 0.0));
}

void PlayerInterface::Next() {
    Later([](MediaRemoteCommands& commands) { commands.RemoteNext(); });
}

void PlayerInterface::Previous() {
    Later([](MediaRemoteCommands& commands) { commands.RemotePrevious(); });
}

void PlayerInterface::Pause() {
    Later([](MediaRemoteCommands& commands) { commands.RemotePause(); });
}

void PlayerInterface::PlayPause() {
    Later([](MediaRemoteCommands& commands) { commands.RemotePlayPause(); });
}

void PlayerInterface::Stop() {
    Later([](MediaRemoteCommands& commands) { commands.RemoteStop(); });
}

void PlayerInterface::Play() {
    Later([](MediaRemoteCommands& commands) { commands.RemotePlay(); });
}

/// Beyond the end is the next track, before the beginning the beginning.
void PlayerInterface::Seek(qlonglong offset) {
    Later([this, offset](MediaRemoteCommands& commands) {
        if (!CanSeek()) {
            return;
        }
        const double place = commands.RemotePosition() + static_cast<double>(offset) / 1e6;
        if (place > m_shown.status.length) {
            commands.RemoteNext();
        } else {
            commands.RemoteSetPosition(std::max(place, 0.0));
        }
    });
}

/// Ignored for another track than the one that plays now, and for places outside of it.
void PlayerInterface::SetPosition(const QDBusObjectPath& track, qlonglong position) {
    Later([this, path = track.path(), position](MediaRemoteCommands& commands) {
        const double place = static_cast<double>(position) / 1e6;
        if (CanSeek() && path == TrackPath(m_shown.status, m_shown.serial) && place >= 0 &&
            place <= m_shown.status.length) {
            commands.RemoteSetPosition(place);
        }
    });
}

void PlayerInterface::OpenUri(const QString&, const QDBusMessage& message) {
    message.setDelayedReply(true);
    QDBusConnection(m_shown.connection).send(message.createErrorReply(QDBusError::NotSupported, QString()));
}

} // namespace quavernet::mpris
