#include "ScanJobs.h"

#include "Floors.h"

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <vector>

namespace quavernet::bench {

namespace {

constexpr Wanted FirstScan{.ratio = 2, .rate = 30000};
constexpr Wanted QuickScan{.rate = 150000};

/// The files that are inspected in the program's own process: all but Ogg.
std::vector<std::string> WantedFiles(const std::string& folder) {
    std::vector<std::string> files = WalkFiles(folder);
    std::erase_if(files, [](const std::string& path) { return path.ends_with(".ogg"); });
    return files;
}

/// What a scan stores; every wanted file must be among it, or the times mean nothing.
std::vector<StoredRow> RowsOfAScan(const ScanSetting& setting, Scanner& scanner) {
    scanner.OpenEmpty();
    scanner.Scan(false);
    scanner.Close();
    std::vector<StoredRow> rows = BareLibrary(scanner.LibraryPath()).Rows();
    const std::size_t files = WantedFiles(setting.music).size();
    if (rows.size() != files) {
        throw std::runtime_error("the scan stored " + std::to_string(rows.size()) + " of " +
                                 std::to_string(files) + " files");
    }
    return rows;
}

} // namespace

void ScanJobs(const ScanSetting& setting, Scanner& scanner) {
    const std::vector<StoredRow> rows = RowsOfAScan(setting, scanner);
    const std::string bare = setting.work + "/bare.db";
    std::unique_ptr<BareLibrary> library;
    const auto emptyBare = [&] {
        library.reset();
        RemoveLibrary(bare);
        library = std::make_unique<BareLibrary>(bare);
        library->CreateTables();
    };
    const Line first = Measure("first scan" + setting.name, rows.size(), FirstScan, setting.rounds,
                               {[&] { scanner.OpenEmpty(); }, [&] { scanner.Scan(false); }},
                               {emptyBare, [&] {
                                    ReadHeadsAndTails(WantedFiles(setting.music));
                                    library->WriteRows(rows);
                                }});
    Print(first);
    Print(Measure("quick scan again" + setting.name, rows.size(), QuickScan, setting.rounds,
                  {nullptr, [&] { scanner.Scan(true); }},
                  {nullptr, [&] { library->FindPaths(WantedFiles(setting.music)); }}));
    Print(Measure("full scan again" + setting.name, rows.size(), {.limit = first.value}, setting.rounds,
                  {nullptr, [&] { scanner.Scan(false); }}, {nullptr, [&] {
                                                                ReadHeadsAndTails(WantedFiles(setting.music));
                                                                library->UpdateRows(rows);
                                                            }}));
    // What a first scan has to do beside its floor: it counts the files before it begins, and asks for rows
    // before it writes them.
    Print(Measure("bare count of the files" + setting.name, rows.size(), {}, setting.rounds,
                  {nullptr, [&] { WalkFiles(setting.music); }}, {}));
    Print(Measure("bare lookups of new rows" + setting.name, rows.size(), {}, setting.rounds,
                  {nullptr, [&] { library->FindRows(rows); }}, {}));
    if (const Timed list = scanner.ListAtEnd(); list.run) {
        Print(Measure("list at the end" + setting.name, rows.size(), {}, setting.rounds, list, {}));
    }
    scanner.Close();
    if (BareLibrary(scanner.LibraryPath()).Rows().size() != rows.size()) {
        throw std::runtime_error("scanning again changed the number of rows");
    }
}

void RemoveLibrary(const std::string& path) {
    for (const char* ending : {"", "-wal", "-shm"}) {
        std::filesystem::remove(path + ending);
    }
}

} // namespace quavernet::bench
