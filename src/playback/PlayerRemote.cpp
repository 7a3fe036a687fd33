#include "playback/PlayerRemote.h"

#include "adapters/qt/QtText.h"
#include "app/MainModule.h"
#include "app/MainWindow.h"
#include "app/PlayerWindow.h"
#include "playback/frmPlayer.h"

#include <QApplication>

#include <algorithm>
#include <cmath>

namespace quavernet {

namespace {

constexpr double LeastJump = 1.5; ///< Seconds. Less may be the engine's and the clock's own difference.

} // namespace

PlayerRemote::PlayerRemote(std::unique_ptr<MediaRemote> remote, PlayerWindow& player, MainWindow& main)
    : m_remote(std::move(remote)), m_player(player), m_main(main) {
    // Once for all that a handler changes: a fill of thousands is told when it is over.
    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    connect(&m_soon, &QTimer::timeout, this, &PlayerRemote::Tell);
    m_remote->SetCommands(this);
}

PlayerRemote::~PlayerRemote() {
    m_remote->SetCommands(nullptr);
}

void PlayerRemote::Follow(frmPlayer& form) {
    m_form = &form;
    connect(&form, &frmPlayer::StatusTold, &m_soon, qOverload<>(&QTimer::start));
    connect(&form, &frmPlayer::Closed, this, [this] {
        m_form = nullptr;
        m_soon.start();
    });
    m_soon.start();
}

void PlayerRemote::Tell() {
    MediaStatus status = m_form ? m_reader.Read(m_form->Queue(), m_form->Engine()) : MediaStatus();
    for (std::string* text : {&status.title, &status.artist}) {
        *text = FromQString(ToQString(*text)); // A file's name may be any bytes.
    }
    const double position = RemotePosition();
    const bool wasPlaying = m_told.playback == MediaStatus::Playback::Playing;
    const double gone =
        wasPlaying && m_sinceTold.isValid() ? static_cast<double>(m_sinceTold.elapsed()) / 1000 : 0;
    const bool isSameTrack = status.path == m_told.path; // Keys move the number while a file plays.
    m_remote->Show(status);
    if (isSameTrack && std::abs(position - m_toldPosition - gone) > LeastJump) {
        m_remote->Seeked(position);
    }
    m_told = status;
    m_toldPosition = position;
    m_sinceTold.start();
}

void PlayerRemote::RemotePlay() {
    if (!m_form || m_form->Engine().IsPlaying()) {
        return;
    }
    m_form->Act([&queue = m_form->Queue(), &engine = m_form->Engine()] {
        if (queue.Paused() && !queue.Stopped() && !engine.FileName().empty()) {
            queue.cmdPause_Click();
        } else {
            queue.PlayFile(std::max<std::int16_t>(queue.CurrentTrack(), 1));
        }
    });
}

void PlayerRemote::RemotePause() {
    if (!m_form || !m_form->Engine().IsPlaying()) {
        return;
    }
    m_form->Act([&queue = m_form->Queue()] {
        if (queue.Paused()) {
            queue.cmdPause_Click(); // Stopped while it was paused, and started again: the mark is still set.
        }
        queue.cmdPause_Click();
    });
}

void PlayerRemote::RemotePlayPause() {
    if (m_form && m_form->Engine().IsPlaying()) {
        RemotePause();
    } else {
        RemotePlay();
    }
}

void PlayerRemote::RemoteStop() {
    if (m_form) {
        m_form->Act([&queue = m_form->Queue()] { queue.cmdStop_Click(); });
    }
}

void PlayerRemote::RemoteNext() {
    if (m_form) {
        m_form->Act([&queue = m_form->Queue()] { queue.cmdNext_Click(); });
    }
}

void PlayerRemote::RemotePrevious() {
    if (m_form) {
        m_form->Act([&queue = m_form->Queue()] { queue.cmdLast_Click(); });
    }
}

void PlayerRemote::RemoteSetPosition(double seconds) {
    if (m_form) {
        m_form->Seek(Narrow32(seconds));
    }
}

double PlayerRemote::RemotePosition() const {
    return m_form ? std::max(m_form->Engine().CurrentPosition(), 0.0) : 0;
}

void PlayerRemote::RemoteSetVolume(double volume) {
    if (m_form) {
        m_form->SetVolume(Narrow32(std::clamp(volume, 0.0, 1.0) * PlayQueue::LoudestPosition));
    }
}

void PlayerRemote::RemoteSetLoop(MediaStatus::Loop loop) {
    if (m_form) {
        m_form->Act([&queue = m_form->Queue(), loop] {
            queue.chkRepeat_Click(loop == MediaStatus::Loop::Track);
            queue.chkRepeatAll_Click(loop == MediaStatus::Loop::Playlist);
        });
    }
}

void PlayerRemote::RemoteRaise() {
    if (m_form) {
        m_player.BringToFront();
    } else {
        m_main.BringToFront();
    }
}

// A scan keeps the main window, and with it the player; other work, like an open box, keeps both.
void PlayerRemote::RemoteQuit() {
    if (QApplication::activeModalWidget() != nullptr || mainModule.ActsAlone) {
        return;
    }
    m_main.Close();
    if (!mainModule.MainOpen && m_form) {
        m_form->close();
    }
}

} // namespace quavernet
