// The player as the rest of the program reaches it: makes its window when it is first wanted and forgets it
// when it has closed. The program's windows own it, so that it outlives the main window.
#pragma once

#include "app/PlayerWindow.h"
#include "widgets/ClosedWindows.h"

#include <memory>

namespace quavernet {

class MainWindow;
class PlayerRemote;
class frmPlayer;

class PlayerHost : public PlayerWindow {
public:
    explicit PlayerHost(MainWindow& main);
    ~PlayerHost() override;

    void Show() override;
    void BringToFront() override;

    // While no window is open these do nothing: callers show it first, and the user may have closed it since.
    void FillPlaylist() override;
    void FillPlaylistFromTree(std::int16_t mode, const TreeModel& tree) override;
    void FillPlaylistFromCharts(const RowTexts& chartPaths, std::int32_t row) override;
    void FillRandomPlaylist(const std::string& fileId, std::int32_t counter) override;
    void fGetM3u(std::int16_t mode, const std::string& fileName, bool checkExists) override;
    void ClearQueue() override;
    void SelectFirst() override;
    std::size_t QueueCount() const override;
    void PlayFile(std::int16_t index) override;
    void PlayFileFromTree(std::int16_t index) override;
    void LoadStrings() override;

    /// The open window, or null.
    frmPlayer* Form() const { return m_form.get(); }

private:
    void FollowByRemote();
    void Forget();

    MainWindow& m_main;
    ClosedWindows m_closed;
    std::unique_ptr<frmPlayer> m_form;
    std::unique_ptr<PlayerRemote> m_remote; ///< Null before the first window, and where there is none.
};

} // namespace quavernet
