// The player's tie to the desktop: media keys and sound applets see what it does, and their commands reach
// its queue. PlayerHost makes it with the first window.
#pragma once

#include "platform/MediaRemote.h"
#include "playback/RemoteStatus.h"

#include <memory>

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>

namespace quavernet {

class MainWindow;
class PlayerWindow;
class frmPlayer;

class PlayerRemote : public QObject, private MediaRemoteCommands {
    Q_OBJECT
public:
    PlayerRemote(std::unique_ptr<MediaRemote> remote, PlayerWindow& player, MainWindow& main);
    ~PlayerRemote() override;

    /// Tells of this window from now on, until it closes.
    void Follow(frmPlayer& form);

private:
    void Tell();

    void RemotePlay() override;
    void RemotePause() override;
    void RemotePlayPause() override;
    void RemoteStop() override;
    void RemoteNext() override;
    void RemotePrevious() override;
    void RemoteSetPosition(double seconds) override;
    double RemotePosition() const override;
    void RemoteSetVolume(double volume) override;
    void RemoteSetLoop(MediaStatus::Loop loop) override;
    void RemoteRaise() override;
    void RemoteQuit() override;

    std::unique_ptr<MediaRemote> m_remote;
    PlayerWindow& m_player;
    MainWindow& m_main;
    QPointer<frmPlayer> m_form; ///< Null while no window is open.
    RemoteStatus m_reader;
    QTimer m_soon;

    // What was told last, by which a jump shows.
    MediaStatus m_told;
    double m_toldPosition = 0;
    QElapsedTimer m_sinceTold;
};

} // namespace quavernet
