#include "Floors.h"
#include "Jobs.h"
#include "Services.h"

#include "scanner/ScanDriver.h"

#include <filesystem>
#include <memory>
#include <stdexcept>

namespace quavernet::bench {

namespace {

void RemoveLibrary(const std::string& path) {
    for (const char* ending : {"", "-wal", "-shm"}) {
        std::filesystem::remove(path + ending);
    }
}

void Scan(bool quick) {
    SilentScanWindow window;
    SilentScanLog log;
    window.options.QuickScan = quick;
    window.options.ScanOgg = false;
    ScanDriver driver(window, log);
    driver.StartScan();
    mainModule.Connection->Commit();
}

/// The files that are inspected in the program's own process: all but Ogg, whose pass is not measured here.
std::vector<std::string> WantedFiles(const std::string& folder) {
    std::vector<std::string> files = WalkFiles(folder);
    std::erase_if(files, [](const std::string& path) { return path.ends_with(".ogg"); });
    return files;
}

} // namespace

std::vector<Line> ScanJobs(const Setting& setting) {
    const std::string ours = setting.work + "/scan.db";
    const std::string bare = setting.work + "/bare.db";
    BenchServices program;
    program.settings.Set("", "", "ScanpathValue", "1");
    program.settings.Set("", "", "Scanpath", setting.music);

    const auto openEmpty = [&] {
        program.CloseLibrary();
        RemoveLibrary(ours);
        std::filesystem::copy_file(setting.library, ours);
        program.OpenLibrary(ours);
    };
    openEmpty();
    Scan(false);
    program.CloseLibrary();
    const std::vector<StoredRow> rows = BareLibrary(ours).Rows();
    const std::vector<std::string> paths = WantedFiles(setting.music);
    if (rows.size() != paths.size()) {
        throw std::runtime_error("the scan stored " + std::to_string(rows.size()) + " of " +
                                 std::to_string(paths.size()) + " files");
    }

    std::unique_ptr<BareLibrary> library;
    const auto emptyBare = [&] {
        library.reset();
        RemoveLibrary(bare);
        library = std::make_unique<BareLibrary>(bare);
        library->CreateTables();
    };
    const std::size_t count = rows.size();
    std::vector<Line> lines;
    lines.push_back(Measure("first scan", count, 2, setting.rounds, {openEmpty, [] { Scan(false); }},
                            {emptyBare, [&] {
                                 ReadHeadsAndTails(WantedFiles(setting.music));
                                 library->WriteRows(rows);
                             }}));
    lines.push_back(Measure("scan again, quick", count, 2.5, setting.rounds, {nullptr, [] { Scan(true); }},
                            {nullptr, [&] { library->FindPaths(WantedFiles(setting.music)); }}));
    lines.push_back(Measure("scan again, full", count, 2, setting.rounds, {nullptr, [] { Scan(false); }},
                            {nullptr, [&] {
                                 ReadHeadsAndTails(WantedFiles(setting.music));
                                 library->UpdateRows(rows);
                             }}));
    program.CloseLibrary();
    if (BareLibrary(ours).Rows().size() != count) {
        throw std::runtime_error("scanning again changed the number of rows");
    }
    return lines;
}

} // namespace quavernet::bench
