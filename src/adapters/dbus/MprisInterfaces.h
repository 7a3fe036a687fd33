// The two interfaces of the player on the bus: what clients read of it and ask of it. Used by MprisRemote.
#pragma once

#include "platform/MediaRemote.h"

#include <QDBusAbstractAdaptor>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QStringList>
#include <QVariantMap>

#include <functional>

namespace quavernet::mpris {

/// What both show, and who is given their commands.
struct Shown {
    MediaStatus status;
    int serial = 0;     ///< Of the track.
    QString connection; ///< Name of the connection to the bus.
    MediaRemoteCommands* commands = nullptr;
};

/// The program: its window and its end.
class RootInterface : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(bool CanQuit READ Yes)
    Q_PROPERTY(bool CanRaise READ Yes)
    Q_PROPERTY(bool HasTrackList READ No)
    Q_PROPERTY(QString Identity READ Identity)
    Q_PROPERTY(QString DesktopEntry READ DesktopEntry)
    Q_PROPERTY(QStringList SupportedUriSchemes READ Nothing)
    Q_PROPERTY(QStringList SupportedMimeTypes READ Nothing)

public:
    RootInterface(QObject* object, Shown& shown) : QDBusAbstractAdaptor(object), m_shown(shown) {}

    bool Yes() const { return true; }
    bool No() const { return false; }
    QString Identity() const;
    QString DesktopEntry() const;
    QStringList Nothing() const { return {}; } ///< Files come from the library, not from the bus.

public Q_SLOTS:
    void Raise();
    void Quit();

private:
    Shown& m_shown;
};

/// The player. Commands run after their answer has gone out: some let events run, or end the program.
class PlayerInterface : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ PlaybackStatus)
    Q_PROPERTY(QString LoopStatus READ LoopStatus WRITE SetLoopStatus)
    Q_PROPERTY(double Rate READ Rate WRITE SetRate)
    Q_PROPERTY(double MinimumRate READ Rate)
    Q_PROPERTY(double MaximumRate READ Rate)
    Q_PROPERTY(QVariantMap Metadata READ TrackFacts)
    Q_PROPERTY(double Volume READ Volume WRITE SetVolume)
    Q_PROPERTY(qlonglong Position READ Position)
    Q_PROPERTY(bool CanGoNext READ CanGoNext)
    Q_PROPERTY(bool CanGoPrevious READ CanGoPrevious)
    Q_PROPERTY(bool CanPlay READ HasTrack)
    Q_PROPERTY(bool CanPause READ HasTrack)
    Q_PROPERTY(bool CanSeek READ CanSeek)
    Q_PROPERTY(bool CanControl READ CanControl)

public:
    PlayerInterface(QObject* object, Shown& shown) : QDBusAbstractAdaptor(object), m_shown(shown) {}

    QString PlaybackStatus() const;
    QString LoopStatus() const;
    void SetLoopStatus(const QString& text);
    double Rate() const { return 1; }
    void SetRate(double) {} ///< There is one speed.
    QVariantMap TrackFacts() const;
    double Volume() const { return m_shown.status.volume; }
    void SetVolume(double volume);
    qlonglong Position() const;
    bool CanGoNext() const { return m_shown.status.canGoNext; }
    bool CanGoPrevious() const { return m_shown.status.canGoPrevious; }
    bool HasTrack() const { return !m_shown.status.path.empty(); }
    bool CanSeek() const { return HasTrack() && m_shown.status.length > 0; }
    bool CanControl() const { return true; }

public Q_SLOTS:
    void Next();
    void Previous();
    void Pause();
    void PlayPause();
    void Stop();
    void Play();
    void Seek(qlonglong offset);
    void SetPosition(const QDBusObjectPath& track, qlonglong position);
    void OpenUri(const QString& address, const QDBusMessage& message);

Q_SIGNALS:
    void Seeked(qlonglong position);

private:
    void Later(std::function<void(MediaRemoteCommands&)> command);

    Shown& m_shown;
};

} // namespace quavernet::mpris
