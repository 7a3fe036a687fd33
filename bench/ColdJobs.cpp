#include "ColdJobs.h"

#include "Floors.h"
#include "Lines.h"
#include "SilentScanner.h"

#include <unistd.h>

#include <atomic>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <thread>
#include <vector>

namespace quavernet::bench {

namespace {

constexpr std::size_t BareReaders = 32;
constexpr Wanted Cold{.ratio = 2};
constexpr Wanted Warm{.ratio = 1.02};
constexpr Wanted Share{.ratio = 0.125};

bool IsOgg(const std::string& path) {
    return path.ends_with(".ogg");
}

void EmptySystemMemory() {
    sync();
    std::ofstream file("/proc/sys/vm/drop_caches");
    file << "3" << std::flush;
    if (!file) {
        throw std::runtime_error("the system's memory of files can't be emptied: that takes root");
    }
}

/// As many threads as the program has take one file after the other.
void ReadByMany(const std::vector<std::string>& files, bool wholeOgg) {
    std::atomic<std::size_t> next = 0;
    std::vector<std::jthread> readers;
    for (std::size_t i = 0; i < BareReaders; ++i) {
        readers.emplace_back([&] {
            for (std::size_t file = 0; (file = next++) < files.size();) {
                if (wholeOgg && IsOgg(files[file])) {
                    ReadWhole({files[file]});
                } else {
                    ReadHeadsAndTails({files[file]});
                }
            }
        });
    }
}

/// The program's scan, with or without reading ahead.
class Scans {
public:
    explicit Scans(const ColdSetting& setting)
        : m_scanner(setting.music, setting.work + "/cold.db", setting.emptyLibrary, true) {}

    Timed First(const std::function<void()>& prepare, bool readsAhead = true) {
        return {[this, prepare, readsAhead] {
                    m_scanner.ReadAhead(readsAhead);
                    m_scanner.OpenEmpty();
                    prepare();
                },
                [this] { m_scanner.Scan(false); }};
    }
    Timed Again(const std::function<void()>& prepare, bool readsAhead = true, bool isQuick = false) {
        return {[this, prepare, readsAhead] {
                    m_scanner.ReadAhead(readsAhead);
                    prepare();
                },
                [this, isQuick] { m_scanner.Scan(isQuick); }};
    }
    /// Every file must be stored, or the times mean nothing.
    void Check(std::size_t files) {
        m_scanner.Close();
        if (BareLibrary(m_scanner.LibraryPath()).Rows().size() != files) {
            throw std::runtime_error("the scan did not store every file");
        }
    }

private:
    SilentScanner m_scanner;
};

void TwoLines(const ColdSetting& setting, const Wanted& wanted, const std::function<void()>& prepare,
              const std::function<void()>& floor) {
    const std::size_t count = WalkFiles(setting.music).size();
    Scans scans(setting);
    Print(Measure("first scan" + setting.name, count, wanted, setting.rounds, scans.First(prepare),
                  {prepare, floor}));
    Print(Measure("full scan again" + setting.name, count, wanted, setting.rounds, scans.Again(prepare),
                  {prepare, floor}));
    scans.Check(count);
}

} // namespace

void ColdJobs(const ColdSetting& setting) {
    const std::vector<std::string> files = WalkFiles(setting.music);
    TwoLines(setting, Cold, EmptySystemMemory, [&] { ReadByMany(WalkFiles(setting.music), true); });
    std::vector<std::string> ogg = files;
    std::erase_if(ogg, [](const std::string& path) { return !IsOgg(path); });
    if (!ogg.empty()) {
        Print(Measure("bare reading of " + std::to_string(ogg.size()) + " whole Ogg files" + setting.name +
                          ", floor: heads and tails",
                      ogg.size(), {}, setting.rounds, {EmptySystemMemory, [&] { ReadByMany(ogg, true); }},
                      {EmptySystemMemory, [&] { ReadByMany(ogg, false); }}));
    }
}

void WarmJobs(const ColdSetting& setting) {
    const std::size_t count = WalkFiles(setting.music).size();
    const auto nothing = [] {};
    Scans scans(setting);
    Print(Measure("first scan" + setting.name, count, Warm, setting.rounds, scans.First(nothing),
                  scans.First(nothing, false)));
    Print(Measure("full scan again" + setting.name, count, Warm, setting.rounds, scans.Again(nothing),
                  scans.Again(nothing, false)));
    Print(Measure("quick scan again" + setting.name, count, Warm, setting.rounds,
                  scans.Again(nothing, true, true), scans.Again(nothing, false, true)));
    scans.Check(count);
}

void ShareJobs(const ColdSetting& setting) {
    TwoLines(
        setting, Share, [] {}, [&] { ReadHeadsAndTails(WalkFiles(setting.music)); });
}

} // namespace quavernet::bench
