// The base of tests of the media engine: a message loop that the test runs by hand, and who listens to the
// engine.
#pragma once

#include "adapters/mpv/MpvPlayer.h"
#include "support/FailureNumber.h"
#include "support/LogicTest.h"
#include "support/TemporaryFolder.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace quavernet::test {

/// What other threads post is run by the test's own.
class HandLoop {
public:
    void Post(std::function<void()> run) {
        const std::lock_guard lock(m_mutex);
        m_posted.push_back(std::move(run));
        m_arrived.notify_one();
    }

    /// Runs what is posted until the condition holds. False if it doesn't within half a minute.
    bool RunUntil(const std::function<bool()>& condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
            RunOne(std::chrono::milliseconds(20));
        }
        return true;
    }

    /// Runs what comes within the time.
    void RunFor(std::chrono::milliseconds time) {
        const auto end = std::chrono::steady_clock::now() + time;
        while (std::chrono::steady_clock::now() < end) {
            RunOne(std::chrono::duration_cast<std::chrono::milliseconds>(end -
                                                                         std::chrono::steady_clock::now()));
        }
    }

private:
    void RunOne(std::chrono::milliseconds patience) {
        std::function<void()> run;
        {
            std::unique_lock lock(m_mutex);
            if (!m_arrived.wait_for(lock, patience, [this] { return !m_posted.empty(); })) {
                return;
            }
            run = std::move(m_posted.front());
            m_posted.pop_front();
        }
        run();
    }

    std::mutex m_mutex;
    std::condition_variable m_arrived;
    std::deque<std::function<void()>> m_posted;
};

/// Writes down what the engine tells, and does what the test wants done at the end of a file.
class RecordingEvents : public MediaPlayerEvents {
public:
    void EndOfStream() override {
        ++ends;
        if (atEnd) {
            atEnd();
        }
    }
    void LoadedLate() override { ++loadedLate; }
    void RefusedLate() override { ++refusedLate; }
    void PlayingChanged() override { ++playingChanged; }

    std::function<void()> atEnd;
    int ends = 0;
    int loadedLate = 0;
    int refusedLate = 0;
    int playingChanged = 0;
};

using EngineOptions = std::vector<std::pair<std::string, std::string>>;

/// Plays as fast as it can, into nothing.
inline const EngineOptions Untimed = {{"ao", "null"}, {"ao-null-untimed", "yes"}};
/// Plays into nothing, in the time that music takes.
inline const EngineOptions Timed = {{"ao", "null"}};

class MpvTest : public LogicTest {
protected:
    void MakePlayer(EngineOptions engine, MpvOptions options = PatientOptions()) {
        options.engine = std::move(engine);
        player = CreateMpvPlayer(
            *services.files, [this](std::function<void()> run) { loop.Post(std::move(run)); }, options);
        player->SetEvents(&heard);
    }

    /// A slow machine is no slow file.
    static MpvOptions PatientOptions() {
        MpvOptions options;
        options.patience = std::chrono::seconds(10);
        options.endPatience = std::chrono::seconds(10);
        return options;
    }

    void PlayToItsEnd(const std::string& path) {
        const int before = heard.ends;
        player->SetFileName(path);
        player->Play();
        ASSERT_TRUE(loop.RunUntil([&] { return heard.ends > before; }));
    }

    TemporaryFolder folder;
    HandLoop loop;
    RecordingEvents heard;
    std::unique_ptr<MediaPlayer> player;
};

} // namespace quavernet::test
