// The base of tests of the player's window: the real one, with an engine that follows a script.
#pragma once

#include "gui/GuiTest.h"

#include "playback/PlayerList.h"
#include "playback/PlayerSlider.h"
#include "playback/frmPlayer.h"
#include "support/ScriptedPlayer.h"
#include "support/TestFiles.h"
#include "widgets/PictureButton.h"

#include <QLabel>
#include <QTimer>
#include <QToolButton>

#include <algorithm>

namespace quavernet::test {

/// One that may have a reason to be silent.
class WindowEngine : public ScriptedPlayer {
public:
    WindowEngine(std::vector<std::string>& calls, const std::string& silence)
        : ScriptedPlayer(calls), m_silence(silence) {}

    std::string SilenceReason() const override { return m_silence; }

private:
    const std::string& m_silence;
};

class PlayerWindowTest : public GuiTest {
protected:
    PlayerWindowTest() {
        services.createMediaPlayer = [this] {
            auto made = std::make_unique<WindowEngine>(calls, silenceReason);
            engine = made.get();
            return made;
        };
    }

    /// The program with an open player.
    void StartPlayer() {
        Start();
        windows->Player().Show();
    }
    /// Files that the library knows, played from the first one: "Abba - One", "Cure - Two", ...
    void PlayThree() {
        AddFile("Abba", "One");
        AddFile("Cure", "Two");
        AddFile("Eels", "Three");
        StartPlayer();
        for (const char* title : {"One", "Two", "Three"}) {
            Queue().AddPlaylist(std::string("/music/") + title + ".mp3");
        }
        windows->Player().PlayFile(1);
    }

    frmPlayer& Player() { return *windows->Player().Form(); }
    PlayQueue& Queue() { return Player().Queue(); }
    template <typename T> T& Part(const char* name) {
        T* found = Player().findChild<T*>(QLatin1String(name));
        if (found == nullptr) {
            throw std::runtime_error(std::string("no control ") + name);
        }
        return *found;
    }
    void Click(const char* name) { QTest::mouseClick(&Part<QWidget>(name), Qt::LeftButton); }
    std::string LabelText(const char* name) { return FromQString(Part<QLabel>(name).text()); }
    std::string Caption() { return FromQString(Player().windowTitle()); }
    PlayerList& List() { return Part<PlayerList>("lstFiles"); }
    PlayerSlider& Slider(const char* name) { return Part<PlayerSlider>(name); }
    QTimer& Timer1() { return Part<QTimer>("Timer1"); }

    /// What the list shows.
    Texts Entries() {
        Texts texts;
        for (int row = 0; row < List().model()->rowCount(); ++row) {
            texts.push_back(FromQString(List().model()->index(row, 0).data().toString()));
        }
        return texts;
    }
    /// Position of the entry that the list shows as selected; -1 if there is none.
    int Selected() {
        const QModelIndexList rows = List().selectionModel()->selectedRows();
        return rows.size() == 1 ? rows.front().row() : -1;
    }
    void ClickEntry(int position) {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {},
                          List().visualRect(List().model()->index(position, 0)).center());
    }

    /// On empty ground, of the window or of the list.
    static bool Drop(QWidget& target, const Texts& paths) { return GuiTest::Drop(target, paths, {10, 10}); }

    /// How often the engine was asked for something.
    std::ptrdiff_t Calls(const std::string& call) const {
        return std::count(calls.begin(), calls.end(), call);
    }

    std::vector<std::string> calls; ///< Of all engines.
    std::string silenceReason;
    ScriptedPlayer* engine = nullptr; ///< The one that was made last; dead once its window is.
};

} // namespace quavernet::test
