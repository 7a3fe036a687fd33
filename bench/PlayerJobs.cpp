#include "PlayerJobs.h"

#include "Floors.h"
#include "Lines.h"
#include "Services.h"

#include "adapters/mpv/MpvLibrary.h"
#include "adapters/mpv/MpvPlayer.h"
#include "platform/RuntimeError.h"

#include <chrono>
#include <clocale>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <sys/resource.h>

namespace quavernet::bench {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::size_t Tracks = 20;
/// What a start may cost over the bare library, in seconds.
constexpr double StartLimit = 0.010;
/// For how long processor time is counted, and of how much of it the program may take.
constexpr milliseconds Watched{10000};
constexpr double PlayingLimit = 0.010;
/// How often the window asks for the position.
constexpr milliseconds Tick{100};

/// What the engine's threads post, run by the one that waits.
class Loop {
public:
    void Post(std::function<void()> run) {
        const std::lock_guard lock(m_mutex);
        m_posted.push_back(std::move(run));
        m_arrived.notify_one();
    }

    void RunFor(steady_clock::duration time) {
        const auto end = steady_clock::now() + time;
        while (RunOneUntil(end)) {
        }
    }

private:
    bool RunOneUntil(steady_clock::time_point end) {
        std::unique_lock lock(m_mutex);
        if (!m_arrived.wait_until(lock, end, [this] { return !m_posted.empty(); })) {
            return false;
        }
        const std::function<void()> run = std::move(m_posted.front());
        m_posted.pop_front();
        lock.unlock();
        run();
        return true;
    }

    std::mutex m_mutex;
    std::condition_variable m_arrived;
    std::deque<std::function<void()>> m_posted;
};

/// The library as a program of ten lines would use it.
class BarePlayer {
public:
    BarePlayer() : m_library(mpv::Library::DefaultName) {
        std::setlocale(LC_NUMERIC, "C");
        m_handle = m_library.create();
        for (const auto& [name, value] : {std::pair("vid", "no"),
                                          {"config", "no"},
                                          {"terminal", "no"},
                                          {"idle", "yes"},
                                          {"ao", "null"}}) {
            m_library.set_option_string(m_handle, name, value);
        }
        if (m_library.initialize(m_handle) < 0) {
            throw std::runtime_error("libmpv does not begin");
        }
    }
    ~BarePlayer() { m_library.terminate_destroy(m_handle); }
    BarePlayer(const BarePlayer&) = delete;
    BarePlayer& operator=(const BarePlayer&) = delete;

    void Start(const std::string& path) {
        const char* words[] = {"loadfile", path.c_str(), nullptr};
        m_library.command_async(m_handle, 0, words);
        const mpv_event* event = nullptr;
        do {
            event = m_library.wait_event(m_handle, 10);
            if (event->event_id == MPV_EVENT_NONE) {
                throw std::runtime_error("libmpv does not play " + path);
            }
        } while (event->event_id != MPV_EVENT_PLAYBACK_RESTART);
    }

private:
    mpv::Library m_library;
    mpv_handle* m_handle = nullptr;
};

class OwnPlayer {
public:
    explicit OwnPlayer(UserFiles& files)
        : m_player(CreateMpvPlayer(
              files, [this](std::function<void()> run) { m_loop.Post(std::move(run)); }, Silent())) {}

    void Start(const std::string& path) {
        m_player->SetFileName(path);
        m_player->Play();
        while (m_player->CurrentPosition() <= 0) {
            m_loop.RunFor(std::chrono::microseconds(100));
        }
    }
    void Pause() { m_player->Pause(); }
    void Watch() {
        const auto end = steady_clock::now() + Watched;
        while (steady_clock::now() < end) {
            m_loop.RunFor(Tick);
            m_player->CurrentPosition();
        }
    }

private:
    static MpvOptions Silent() {
        MpvOptions options;
        options.engine = {{"ao", "null"}};
        return options;
    }

    Loop m_loop;
    std::unique_ptr<MediaPlayer> m_player;
};

double ProcessorSeconds() {
    rusage used{};
    ::getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

double UsedBy(const std::function<void()>& run) {
    const double before = ProcessorSeconds();
    run();
    return ProcessorSeconds() - before;
}

std::vector<std::string> FirstTracks(const std::string& music) {
    std::vector<std::string> tracks;
    for (const std::string& path : WalkFiles(music)) {
        if (path.ends_with(".mp3") && tracks.size() < Tracks) {
            tracks.push_back(path);
        }
    }
    if (tracks.empty()) {
        throw std::runtime_error("no MP3 files in " + music);
    }
    return tracks;
}

void StartJob(const std::vector<std::string>& tracks, UserFiles& files, int rounds) {
    BarePlayer bare;
    OwnPlayer own(files);
    const auto forEach = [&](auto& player) {
        for (const std::string& track : tracks) {
            player.Start(track);
        }
    };
    Line line = Measure("starts of tracks", tracks.size(), {}, rounds, {nullptr, [&] { forEach(own); }},
                        {nullptr, [&] { forEach(bare); }});
    line.wanted.limit = line.floor + StartLimit * static_cast<double>(tracks.size());
    Print(line);
}

void ProcessorJobs(const std::string& track, UserFiles& files) {
    const double watched = std::chrono::duration<double>(Watched).count();
    double floor = 0;
    {
        BarePlayer bare;
        bare.Start(track);
        floor = UsedBy([] { std::this_thread::sleep_for(Watched); });
    }
    OwnPlayer own(files);
    own.Start(track);
    const double playing = UsedBy([&] { own.Watch(); });
    own.Pause();
    const double paused = UsedBy([&] { own.Watch(); });
    Print({"processor time of 10 s played", "s", playing, floor, 0, {.limit = PlayingLimit * watched}});
    Print({"processor time of 10 s paused", "s", paused, 0, 0, {.limit = PlayingLimit * watched / 10}});
}

} // namespace

void PlayerJobs(const std::string& music, int rounds) {
    const BenchServices here;
    const std::vector<std::string> tracks = FirstTracks(music);
    StartJob(tracks, *services.files, rounds);
    ProcessorJobs(tracks.front(), *services.files);
}

} // namespace quavernet::bench
