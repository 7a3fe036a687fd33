#include "QueueJobs.h"

#include "BareStatement.h"
#include "Floors.h"
#include "Lines.h"
#include "Services.h"

#include "playback/PlayQueue.h"
#include "playback/PlayerView.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <sys/stat.h>

namespace quavernet::bench {

namespace {

constexpr std::size_t Entries = PlayQueue::MostEntries;

class SilentEngine : public MediaPlayer {
public:
    void SetEvents(MediaPlayerEvents*) override {}
    void SetFileName(const std::string& path) override { m_file = path; }
    std::string FileName() const override { return m_file; }
    void SetNextFile(const std::string&) override {}
    void Play() override {}
    void Pause() override {}
    void Stop() override {}
    bool IsPlaying() const override { return false; }
    double Duration() const override { return 60; }
    double CurrentPosition() const override { return 0; }
    void SetCurrentPosition(double) override {}
    std::int32_t Volume() const override { return FullVolume; }
    void SetVolume(std::int32_t) override {}
    std::string SilenceReason() const override { return {}; }

private:
    std::string m_file;
};

class SilentPlayerView : public PlayerView {
public:
    bool IsMinimized() const override { return false; }
    void SetCaption(const std::string&) override {}
    void SetFile(const std::string&, const std::string&) override {}
    void SetQuality(const std::string&) override {}
    void SetTime(const std::string&) override {}
    void SetLength(const std::string&) override {}
    void SetPercent(const std::string&) override {}
    void SetPositionMax(std::int32_t) override {}
    void SetPosition(std::int32_t) override {}
    void SetRepeat(bool, bool) override {}
    void EntriesReset() override {}
    void EntriesAppended(std::int32_t) override {}
    void EntryChanged(std::int32_t) override {}
    void EntryRemoved(std::int32_t) override {}
    void SelectionMoved() override {}
    void StatusChanged() override {}
};

/// A playlist, and one short file for each entry.
void WritePlaylist(const std::string& work) {
    std::filesystem::create_directories(work + "/queue");
    std::ofstream list(work + "/queue.m3u");
    list << "#EXTM3U\r\n";
    for (std::size_t i = 1; i <= Entries; ++i) {
        const std::string path = work + "/queue/" + std::to_string(i) + " a song of some name.mp3";
        std::ofstream(path).put('x');
        list << "#EXTINF:60,a song\r\n" << path << "\r\n";
    }
}

/// The lines of a playlist, each looked up.
void ReadBare(const std::string& playlist) {
    std::ifstream list(playlist);
    std::size_t count = 0;
    for (std::string line; std::getline(list, line);) {
        if (line.front() != '#') {
            line.pop_back();
            struct stat facts {};
            count += ::stat(line.c_str(), &facts) == 0 ? 1U : 0U;
        }
    }
    if (count != Entries) {
        throw std::runtime_error("the playlist has not its files");
    }
}

void AskBare(BareLibrary& bare, const std::vector<StoredRow>& rows) {
    Statement find(bare.Handle(),
                   "select I.Interpret, T.Name from Files F join Interpret I on F.Inter_id = I.Inter_id "
                   "join Titel T on T.Title_id = F.Title_id where F.Path = ?");
    for (const StoredRow& row : rows) {
        find.Bind(1, row.path);
        if (!find.Step()) {
            throw std::runtime_error("no file " + row.path);
        }
        (void)find.Text(0);
        (void)find.Text(1);
        find.Reset();
    }
}

} // namespace

void QueueJobs(const std::string& library, const std::string& work, int rounds) {
    const std::vector<StoredRow> rows = BareLibrary(library).Rows();
    BareLibrary bare(work + "/queue-bare.db");
    bare.CreateTables();
    bare.WriteRows(rows);
    WritePlaylist(work);
    BenchServices program;
    program.OpenLibrary(library);
    for (const StoredRow& row : rows) {
        mainModule.FilePaths.Add(row.path);
    }
    mainModule.SelectedRows.AddRange(1, static_cast<std::int32_t>(rows.size()));
    SilentEngine engine;
    SilentPlayerView view;
    PlayQueue queue(engine, view);
    queue.Form_Load();
    const auto requireFull = [&] {
        if (queue.PathCount() != Entries) {
            throw std::runtime_error("the queue is not full");
        }
    };

    const Timed asked{nullptr, [&] { AskBare(bare, rows); }};
    Print(Measure("queue filled from the list, floor: bare statements", Entries, {.ratio = 2, .limit = 1},
                  rounds, {nullptr, [&] { queue.FillPlaylist(); }}, asked));
    requireFull();
    Print(Measure("queue shuffled and started", Entries, {.limit = 0.1}, rounds,
                  {nullptr, [&] { queue.cmdRandomize_Click(); }}, {}));
    Print(Measure("queue loaded from a playlist, floor: its lines looked up", Entries, {.limit = 0.5}, rounds,
                  {nullptr, [&] { queue.fGetM3u(1, work + "/queue.m3u", true); }},
                  {nullptr, [&] { ReadBare(work + "/queue.m3u"); }}));
    requireFull();
}

} // namespace quavernet::bench
