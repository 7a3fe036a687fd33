// Base of the play queue's tests: a library with some files, an engine that follows a script, a window that
// writes down what it is told.
#pragma once

#include "library/SqlQuote.h"
#include "platform/Paths.h"
#include "playback/PlayQueue.h"
#include "support/RecordingPlayerView.h"
#include "support/ScanDoubles.h"
#include "support/ScriptedPlayer.h"
#include "support/TestLibrary.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quavernet::test {

class PlayQueueTest : public LibraryTest {
protected:
    PlayQueueTest() {
        services.fileSystem = &volumes;
        shell.documents = "/home/me";
        view.Show(queue);
        queue.Form_Load();
        view.resets = 0;
        calls.clear();
    }
    ~PlayQueueTest() override {
        // Whatever a test has done: the list on the screen is the queue's.
        EXPECT_EQ(view.texts, Texts());
        EXPECT_EQ(view.selected, queue.ListIndex());
    }

    /// A file of the library with its performer and title. Gives its id.
    std::string AddFile(const std::string& path, const std::string& performer, const std::string& title,
                        const std::string& quality = "128", const std::string& length = "60") {
        const std::string id = std::to_string(++m_files);
        Execute("Insert into Interpret (Inter_id, Interpret) values (" + id + ", '" + SqlQuote(performer) +
                "')");
        Execute("Insert into Titel (Title_id, Name) values (" + id + ", '" + SqlQuote(title) + "')");
        Execute("Insert into Quality (Quality_id, Quality) values (" + id + ", " + quality + ")");
        Execute("Insert into Files (File_id, Name, Path, Length, Inter_id, Title_id, Quality_id) values (" +
                id + ", '" + SqlQuote(FileNameFromPath(path)) + "', '" + SqlQuote(path) + "', " + length +
                ", " + id + ", " + id + ", " + id + ")");
        return id;
    }
    /// "/m/1.mp3" and so on, "P1 - T1" in the list.
    void AddFiles(int count) {
        for (int i = 1; i <= count; ++i) {
            AddFile(PathOf(i), "P" + std::to_string(i), "T" + std::to_string(i));
        }
    }
    /// The same in the queue. From here on calls are noted.
    void Fill(int count) {
        AddFiles(count);
        for (int i = 1; i <= count; ++i) {
            queue.AddPlaylist(PathOf(i));
        }
        calls.clear();
    }
    static std::string PathOf(int number) { return "/m/" + std::to_string(number) + ".mp3"; }

    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (std::int32_t i = 0; i < queue.ListCount(); ++i) {
            texts.push_back(queue.Text(i));
        }
        return texts;
    }
    std::vector<std::string> Paths() const {
        std::vector<std::string> paths;
        for (std::size_t i = 1; i <= queue.PathCount(); ++i) {
            paths.push_back(queue.Path(static_cast<std::int32_t>(i)));
        }
        return paths;
    }
    /// The calls of the engine since they were asked for last.
    std::vector<std::string> EngineCalls() {
        std::vector<std::string> engine;
        for (const std::string& call : calls) {
            for (const std::string_view start :
                 {"file /", "goes on with ", "next ", "Play", "Pause", "Stop", "position ", "volume "}) {
                if (call.starts_with(start)) {
                    engine.push_back(call);
                }
            }
        }
        calls.clear();
        return engine;
    }
    /// What happens when events are let run for the first time from here on.
    void InEvents(std::function<void()> happens) {
        m_happens = std::move(happens);
        events.onDoEvents = [this] {
            if (const auto happening = std::exchange(m_happens, nullptr)) {
                happening();
            }
        };
    }

    ChosenVolumes volumes;
    std::vector<std::string> calls;
    ScriptedPlayer player{calls};
    RecordingPlayerView view{calls};
    PlayQueue queue{player, view};

private:
    int m_files = 0;
    std::function<void()> m_happens;
};

} // namespace quavernet::test
