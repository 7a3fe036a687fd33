// Long random sequences of whatever a user and the engine can do, compared step by step with the plain model.
#include "playback/QueueModel.h"
#include "playback/PlayQueueTest.h"

#include <algorithm>
#include <iterator>
#include <random>

namespace quavernet::test {
namespace {

class QueueModelTest : public PlayQueueTest {
protected:
    QueueModelTest() {
        Know("/m/1.mp3", "A", "One", "128", 60);
        Know("/m/2.mp3", "B", "Two", "", 61);
        Know("/m/3.mp3", "|> C", "Three", "320", 0);
        Know("/m/4.wav", "D", "Four ***fileERROR***", "16", 3600);
        Know("/m/5.ogg", "E", "Five", "112", 10);
        Know("/m/6.mp3", "F", "Six", "128", 40'000);
        Know("/m/7.mp3", "G", "Seven", "128", 0);
        paths.insert(paths.end(), {"/m/unknown.mp3", "/m/it's.OGG", "/m/list.m3u", "/m/refused.mp3"});
        Know("/m/known.MP3", "H", "Eight", "128", 5);
        model.refused = player.refused = {"/m/refused.mp3", "/m/known.MP3"};
        model.durations = player.durations = {{"/m/3.mp3", 77.5}, {"/m/7.mp3", 50'000}, {"/m/4.wav", 3601}};
        mainModule.RandomNumbers = RandomNumbers([this] { return ++m_seed; });
        m_seed = 0;
        model.draws = RandomNumbers([this] { return ++m_modelSeed; });
        m_modelSeed = 0;
        events.onDoEvents = [this] { EXPECT_EQ(view.texts, Texts()); };
    }

    void Know(const std::string& path, const std::string& performer, const std::string& title,
              const std::string& quality, int length) {
        AddFile(path, performer, title, quality.empty() ? "Null" : quality, std::to_string(length));
        model.library[path] = {performer + " - " + title, quality, length};
        ids.push_back(path);
        paths.push_back(path);
    }

    int Number(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }
    const std::string& AnyPath() {
        return paths[static_cast<std::size_t>(Number(0, static_cast<int>(paths.size()) - 1))];
    }
    std::vector<std::string> SomePaths() {
        std::vector<std::string> some(static_cast<std::size_t>(Number(1, 3)));
        std::generate(some.begin(), some.end(), [&] { return AnyPath(); });
        return some;
    }

    void FillFromList() {
        const std::vector<std::string> some = SomePaths();
        mainModule.FilePaths.Clear();
        mainModule.SelectedRows.Clear();
        for (std::size_t i = 0; i < some.size(); ++i) {
            mainModule.FilePaths.Add(some[i]);
            mainModule.SelectedRows.Add(static_cast<std::int32_t>(i + 1));
        }
        mainModule.AlwaysAddToPlaylist = Number(0, 2) > 0;
        queue.FillPlaylist();
        model.FillPlaylist(some, mainModule.AlwaysAddToPlaylist);
    }

    void FillOne() {
        const std::string path = AnyPath();
        switch (Number(0, 3)) {
        case 0: {
            RowTexts charts;
            charts.Add(path);
            queue.FillPlaylistFromCharts(charts, 1);
            model.FillPlaylistFromCharts(path);
            break;
        }
        case 1: {
            const auto found = std::find(ids.begin(), ids.end(), path);
            queue.FillRandomPlaylist(std::to_string(found - ids.begin() + 1), 1);
            model.FillRandomPlaylist(path);
            break;
        }
        default:
            queue.AddPlaylist(path);
            model.AddPlaylist(path);
        }
    }

    void Drop() {
        const std::vector<std::string> some = SomePaths();
        if (Number(0, 1) == 0) {
            queue.DropOnList(some);
            model.DropOnList(some);
        } else {
            queue.DropOnWindow(some);
            model.DropOnWindow(some);
        }
    }

    void StartAny() {
        const int index = Number(-1, queue.ListCount() + 2);
        if (Number(0, 2) == 0) {
            queue.PlayFileFromTree(static_cast<std::int16_t>(index));
            model.PlayFileFromTree(index);
        } else {
            queue.PlayFile(static_cast<std::int16_t>(index));
            model.PlayFile(index);
        }
    }

    void PressAny() {
        constexpr int keys[] = {13, 37, 38, 39, 40, 46, 65};
        const int key = keys[Number(0, std::size(keys) - 1)];
        queue.lstFiles_KeyDown(key);
        model.KeyDown(key);
    }

    void SelectAny() {
        const int position = Number(-1, queue.ListCount() - 1);
        queue.SetListIndex(position);
        model.ListIndex = position;
    }

    void UseWindow() {
        const double position = player.FileName().empty() ? -1 : Number(0, 8000) / 2.0;
        switch (Number(0, 4)) {
        case 0:
            view.isMinimized = model.minimized = !view.isMinimized;
            queue.Form_Resize();
            model.Resize();
            break;
        case 1:
            view.position = 7; // The user has moved it.
            queue.Slider1_Scroll(7);
            model.Slider1(7);
            break;
        case 2:
            queue.lblTime_DblClick();
            model.TimeDblClick();
            break;
        default:
            player.SetPosition(position);
            model.position = position;
            queue.Timer1_Timer();
            model.Timer();
        }
    }

    void ClickTransport() {
        switch (Number(0, 9)) {
        case 0:
            queue.cmdPlay_Click();
            return model.cmdPlay();
        case 1:
            queue.cmdPause_Click();
            return model.cmdPause();
        case 2:
            queue.cmdStop_Click();
            return model.cmdStop();
        case 3:
        case 4:
            queue.cmdNext_Click();
            return model.cmdNext();
        case 5:
        case 6:
            queue.cmdLast_Click();
            return model.cmdLast();
        case 7:
            queue.lstFiles_DblClick();
            return model.DblClick();
        case 8:
            queue.chkRepeat_Click(!queue.Repeat());
            return model.ClickRepeat();
        default:
            queue.chkRepeatAll_Click(!queue.RepeatAll());
            return model.ClickRepeatAll();
        }
    }

    void Edit() {
        switch (Number(0, 12)) {
        case 0:
            queue.cmdRemAll_Click();
            return model.cmdRemAll();
        case 1:
            queue.cmdRandomize_Click();
            return model.cmdRandomize();
        default:
            queue.cmdRem_Click();
            return model.cmdRem();
        }
    }

    void DoAnything() {
        const int what = Number(0, 99);
        if (what < 20) {
            FillOne();
        } else if (what < 23) {
            FillFromList();
        } else if (what < 26) {
            Drop();
        } else if (what < 38) {
            Edit();
        } else if (what < 46) {
            SelectAny();
        } else if (what < 54) {
            StartAny();
        } else if (what < 64) {
            PressAny();
        } else if (what < 72) {
            UseWindow();
        } else if (what < 86) {
            player.End();
            model.EndOfStream();
        } else {
            ClickTransport();
        }
    }

    /// The calls of the engine, whether or not it was there already.
    std::vector<std::string> Played() {
        std::vector<std::string> played;
        for (const std::string& call : EngineCalls()) {
            if (!call.starts_with("next")) {
                played.push_back(call.starts_with("goes on with ") ? "file " + call.substr(13) : call);
            }
        }
        return played;
    }

    void Compare() {
        ASSERT_EQ(Texts(), model.lstFiles);
        ASSERT_EQ(Paths(), model.PlayerPaths);
        ASSERT_EQ(queue.ListIndex(), model.ListIndex);
        ASSERT_EQ(queue.CurrentTrack(), model.CurrentTrack);
        ASSERT_EQ(Played(), model.engine);
        model.engine.clear();
        ASSERT_EQ(queue.Paused(), model.Paused);
        ASSERT_EQ(view.caption, model.caption);
        ASSERT_EQ(view.file, model.lblFile);
        ASSERT_EQ(view.toolTip, model.toolTip);
        ASSERT_EQ(view.quality, model.lblQuality);
        ASSERT_EQ(view.time, model.lblTime);
        ASSERT_EQ(view.length, model.lblLength);
        ASSERT_EQ(view.positionMax, model.SliderMax);
        ASSERT_EQ(view.position, model.SliderValue);
        ASSERT_EQ(queue.Repeat(), model.chkRepeat);
        ASSERT_EQ(queue.RepeatAll(), model.chkRepeatAll);
        ASSERT_EQ(view.texts, model.lstFiles);
        ASSERT_EQ(view.selected, model.ListIndex);
        if (!player.FileName().empty()) {
            ASSERT_EQ(player.Next(), model.NextFile());
        }
    }

    std::mt19937 random{20261122};
    QueueModel model;
    std::vector<std::string> paths;
    std::vector<std::string> ids; ///< Paths by File_id - 1.

private:
    std::uint64_t m_seed = 0;
    std::uint64_t m_modelSeed = 0;
};

TEST_F(QueueModelTest, TenThousandRandomStepsAreThoseOfThePlainModel) {
    constexpr int Sequences = 200;
    constexpr int Steps = 50;
    for (int sequence = 0; sequence < Sequences && !HasFatalFailure(); ++sequence) {
        for (int step = 0; step < Steps && !HasFatalFailure(); ++step) {
            SCOPED_TRACE("sequence " + std::to_string(sequence) + " step " + std::to_string(step));
            DoAnything();
            Compare();
        }
        queue.cmdRemAll_Click(); // Short queues meet more of the borders.
        model.cmdRemAll();
    }
}

// Events may let anything happen in the middle of anything: whatever it is, the stores stay in step, the list
// on the screen is theirs, and the engine is told what comes next.
TEST_F(QueueModelTest, AnythingInTheMiddleOfAnythingLeavesTheQueueWhole) {
    int depth = 0;
    events.onDoEvents = [&] {
        EXPECT_EQ(view.texts, Texts());
        EXPECT_EQ(static_cast<std::size_t>(queue.ListCount()), queue.PathCount());
        if (depth < 3 && Number(0, 1) == 0) {
            ++depth;
            DoAnything();
            --depth;
        }
    };
    for (int step = 0; step < 3000; ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        DoAnything();
        if (Number(0, 30) == 0) {
            queue.cmdRemAll_Click();
        }
        ASSERT_EQ(view.texts, Texts());
        ASSERT_EQ(view.selected, queue.ListIndex());
        ASSERT_EQ(static_cast<std::size_t>(queue.ListCount()), queue.PathCount());
        ASSERT_LT(queue.ListIndex(), queue.ListCount());
        model.lstFiles = Texts();
        model.PlayerPaths = Paths();
        model.ListIndex = queue.ListIndex();
        model.CurrentTrack = queue.CurrentTrack();
        model.chkRepeat = queue.Repeat();
        model.chkRepeatAll = queue.RepeatAll();
        if (!player.FileName().empty()) {
            ASSERT_EQ(player.Next(), model.NextFile());
        }
    }
}

} // namespace
} // namespace quavernet::test
