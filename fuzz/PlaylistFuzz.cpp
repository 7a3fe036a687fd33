// Drops any bytes as a playlist on the category tree of a real library. The files that are there are a few
// known ones, so that a slow second reading can tell which entries must come.
#include "adapters/sqlite/SqliteConnection.h"
#include "app/DragState.h"
#include "library/SqlQuote.h"
#include "platform/CodePage.h"
#include "platform/Paths.h"
#include "scanner/ScanDriver.h"
#include "support/LongWorkDouble.h"
#include "support/ScanDoubles.h"
#include "support/TemporaryFolder.h"
#include "tree/TreeDrop.h"
#include "tree/TreeModel.h"

#include "FuzzInput.h"
#include "FuzzServices.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace quavernet;
using fuzz::Require;

/// Paths by File_id - 1. The third one is not UTF-8.
const std::vector<std::string> Known = {"/m/a.mp3", "/m/it's.OGG", "/m/\xFC.wav", "/m/\xC3\xA4.mp3",
                                        "/m/#.mp3"};

class KnownFiles : public test::ChosenVolumes {
public:
    bool FileExists(const std::string& path) override {
        // The real one asks the system, which ends a path at a NUL.
        const std::string asked = path.substr(0, path.find('\0'));
        return std::find(Known.begin(), Known.end(), asked) != Known.end();
    }
};

std::unique_ptr<ADODB::Connection> OpenLibrary(const test::TemporaryFolder& folder) {
    const std::string path = folder / "Quavernet.db";
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    std::filesystem::copy_file(program.parent_path() / "Quavernet.db", path);
    auto opened = CreateSqliteConnection({});
    opened->Open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path);
    for (const std::string& known : Known) {
        opened->Execute("Insert into Files (Name, Path, Length) values ('" +
                        SqlQuote(FileNameFromPath(known)) + "', '" + SqlQuote(known) + "', 1)");
    }
    opened->Execute("Insert into Categories (Category) values ('Mine')");
    opened->Execute(
        "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (1, "
        "1, 1, 'Mine', 'a.mp3')");
    return opened;
}

/// File_ids of the lines that name a known file.
std::vector<std::string> SlowReading(std::string bytes) {
    std::vector<std::string> ids;
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        bytes.erase(0, 3);
    }
    while (!bytes.empty()) {
        const std::size_t end = bytes.find('\n');
        std::string line = bytes.substr(0, end);
        bytes = end == std::string::npos ? "" : bytes.substr(end + 1);
        if (end != std::string::npos && line.ends_with('\r')) {
            line.pop_back();
        }
        const std::string other = IsValidUtf8(line) ? line : FromWindows1252(line);
        for (const std::string& path : {line, other}) {
            const auto found = std::find(Known.begin(), Known.end(), path);
            if (found != Known.end()) {
                ids.push_back(std::to_string(found - Known.begin() + 1));
                break;
            }
        }
    }
    return ids;
}

std::vector<std::string> FirstColumn(const std::string& select) {
    const ADODB::RowBlock rows = mainModule.Connection->Query(select);
    std::vector<std::string> texts;
    for (std::size_t row = 0; row < rows.Rows(); ++row) {
        texts.push_back(rows.At(row, 0).Text());
    }
    return texts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    static std::unique_ptr<ADODB::Connection> library = OpenLibrary(folder);
    const std::string_view playlist = fuzz::TextOf(data, size);
    const std::vector<std::string> expected = SlowReading(std::string(playlist));
    constexpr std::size_t Positions = 32767; // An entry more is a failure of the program.
    if (expected.size() > Positions) {
        return 0;
    }
    fuzz::WriteWhole(folder / "List.m3u", playlist);
    fuzz::FuzzServices fresh;
    static KnownFiles files;
    services.fileSystem = &files;
    mainModule.Connection = std::move(library);

    test::CallList calls;
    test::LongWorkDouble work{calls};
    test::RecordingScanView view{calls};
    test::RecordingScanLog log{calls};
    ScanDriver driver{work, view, log};
    DragState drag;
    const TreeModel tree;
    const DropOutcome outcome = TreeDrop({{folder / "List.m3u"}, "", false}, drag, tree, driver, work);

    Require(outcome.Rebuild && !outcome.FileAdded && !outcome.HadFileTarget);
    Require(FirstColumn("Select Category from Categories") == std::vector<std::string>{"Mine", "List"});
    Require(FirstColumn("Select File_id from FileCategories where Parent = 'List' order by [Position]") ==
            expected);
    const std::vector<std::string> positions =
        FirstColumn("Select [Position] from FileCategories where Parent = 'List' order by [Position]");
    for (std::size_t i = 0; i < positions.size(); ++i) {
        Require(positions[i] == std::to_string(i + 1));
    }
    Require(FirstColumn("Select Filename from FileCategories where Parent = 'Mine'").size() == 1);
    Require(FirstColumn("Select Path from Files") == Known);

    mainModule.Connection->Execute("Delete from FileCategories where Parent = 'List'");
    mainModule.Connection->Execute("Delete from Categories where Category = 'List'");
    library = std::move(mainModule.Connection);
    return 0;
}
