// The player's window: shows the play queue, hands it what the user does, and keeps the rules of opening and
// closing. PlayerHost makes one when it is first wanted and forgets it when it has closed.
#pragma once

#include "platform/MediaPlayer.h"
#include "playback/PlayQueue.h"
#include "playback/PlayerView.h"

#include <functional>
#include <memory>

#include <QMenu>
#include <QPoint>
#include <QTimer>
#include <QWidget>

namespace Ui {
class frmPlayer;
}

namespace quavernet {

class MainWindow;
class PlayerButtons;

class frmPlayer : public QWidget, private PlayerView, private MediaPlayerEvents {
    Q_OBJECT
public:
    frmPlayer(std::unique_ptr<MediaPlayer> engine, MainWindow& main);
    ~frmPlayer() override;

    /// Restores the window from the settings, before it is shown. Throws SettingError.
    void Form_Load();

    /// All texts of the window in the current language.
    void LoadStrings();

    /// Writes the window's place to the settings.
    void StorePlace() const;

    PlayQueue& Queue() { return *m_queue; }
    const MediaPlayer& Engine() const { return *m_engine; }

    // As if the user had moved the slider there: Slider1, Slider3.
    void Seek(std::int32_t seconds);
    void SetVolume(std::int32_t value);

    /// Does something with the queue that may start or stop a track, and shows what has become of it. Lets
    /// events run.
    void Act(const std::function<void()>& action);

signals:
    void StatusTold(); ///< Track, playing, position by a jump or order may have changed.
    void Closed();     ///< Form_Unload is through. Nothing plays any more.

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool IsMinimized() const override { return isMinimized(); }
    void DragEntered(QDropEvent& event);
    void SetCaption(const std::string& text) override;
    void SetFile(const std::string& text, const std::string& toolTip) override;
    void SetQuality(const std::string& text) override;
    void SetTime(const std::string& text) override;
    void SetLength(const std::string& text) override;
    void SetPercent(const std::string& text) override;
    void SetPositionMax(std::int32_t seconds) override;
    void SetPosition(std::int32_t seconds) override;
    void SetRepeat(bool repeat, bool repeatAll) override;
    void EntriesReset() override;
    void EntriesAppended(std::int32_t first) override;
    void EntryChanged(std::int32_t position) override;
    void EntryRemoved(std::int32_t position) override;
    void SelectionMoved() override;
    void StatusChanged() override;

    void EndOfStream() override;
    void LoadedLate() override;
    void RefusedLate() override;
    void PlayingChanged() override;

    void DressControls();
    void ConnectButtons();
    void ConnectList();
    void Form_QueryUnload();
    void Form_Unload();
    void FollowEngine();

    void Ask(const std::function<void()>& action);
    void cmdMaindialog_Click();
    void cmdCreateCategory_Click();

    MainWindow& m_main;
    std::unique_ptr<Ui::frmPlayer> m_ui;
    std::unique_ptr<MediaPlayer> m_engine;
    std::unique_ptr<PlayQueue> m_queue;
    PlayerButtons* m_buttons = nullptr;
    QMenu m_add{this}; ///< mnuAdd
    QTimer m_timer;
    bool m_takesDrag = false; ///< The files that are dragged over it now.
    bool m_open = true;
    bool m_bringing = false; ///< cmdMaindialog loads list and tree.
    QPoint m_loadedPlace;    ///< Twips, as the settings had it.
};

} // namespace quavernet
