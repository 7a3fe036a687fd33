#include "playback/PlayerHost.h"

#include "app/MainModule.h"
#include "playback/PlayerRemote.h"
#include "playback/frmPlayer.h"

namespace quavernet {

PlayerHost::PlayerHost(MainWindow& main) : m_main(main) {}

PlayerHost::~PlayerHost() = default;

void PlayerHost::Show() {
    if (m_form) {
        // Minimised it stays so: the task bar names the track. Else it comes up beside the main window.
        m_form->raise();
        return;
    }
    auto form = std::make_unique<frmPlayer>(services.createMediaPlayer(), m_main);
    form->Form_Load();
    m_form = std::move(form);
    QObject::connect(m_form.get(), &frmPlayer::Closed, &m_closed, [this] { Forget(); });
    m_form->show();
    FollowByRemote();
}

void PlayerHost::BringToFront() {
    Show();
    if (m_form->isMinimized()) {
        m_form->showNormal();
    }
    m_form->raise();
    m_form->activateWindow();
}

void PlayerHost::FollowByRemote() {
    if (!m_remote && services.createMediaRemote) {
        m_remote = std::make_unique<PlayerRemote>(services.createMediaRemote(), *this, m_main);
    }
    if (m_remote) {
        m_remote->Follow(*m_form);
    }
}

void PlayerHost::Forget() {
    m_closed.Add(std::move(m_form));
}

void PlayerHost::FillPlaylist() {
    if (m_form) {
        m_form->Queue().FillPlaylist();
    }
}

void PlayerHost::FillPlaylistFromTree(std::int16_t mode, const TreeModel& tree) {
    if (m_form) {
        m_form->Queue().FillPlaylistFromTree(mode, tree);
    }
}

void PlayerHost::FillPlaylistFromCharts(const RowTexts& chartPaths, std::int32_t row) {
    if (m_form) {
        m_form->Queue().FillPlaylistFromCharts(chartPaths, row);
    }
}

void PlayerHost::FillRandomPlaylist(const std::string& fileId, std::int32_t counter) {
    if (m_form) {
        m_form->Queue().FillRandomPlaylist(fileId, counter);
    }
}

void PlayerHost::fGetM3u(std::int16_t mode, const std::string& fileName, bool checkExists) {
    if (m_form) {
        m_form->Queue().fGetM3u(mode, fileName, checkExists);
    }
}

void PlayerHost::ClearQueue() {
    if (m_form) {
        m_form->Queue().Clear();
    }
}

void PlayerHost::SelectFirst() {
    if (m_form) {
        m_form->Queue().SetListIndex(0);
    }
}

std::size_t PlayerHost::QueueCount() const {
    return m_form ? m_form->Queue().PathCount() : 0;
}

void PlayerHost::PlayFile(std::int16_t index) {
    if (frmPlayer* form = m_form.get()) {
        form->Act([form, index] { form->Queue().PlayFile(index); });
    }
}

void PlayerHost::PlayFileFromTree(std::int16_t index) {
    if (frmPlayer* form = m_form.get()) {
        form->Act([form, index] { form->Queue().PlayFileFromTree(index); });
    }
}

void PlayerHost::LoadStrings() {
    if (m_form) {
        m_form->LoadStrings();
    }
}

} // namespace quavernet
