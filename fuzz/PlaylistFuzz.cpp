// Drops any bytes as a playlist on the category tree of a real library, which knows the audio files that are
// there by their ids, from 1 on.
#include "adapters/sqlite/SqliteConnection.h"
#include "app/DragState.h"
#include "library/SqlQuote.h"
#include "platform/Paths.h"
#include "scanner/ScanDriver.h"
#include "support/LongWorkDouble.h"
#include "support/TemporaryFolder.h"
#include "tree/TreeDrop.h"
#include "tree/TreeModel.h"

#include "FuzzInput.h"
#include "FuzzServices.h"
#include "KnownFiles.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace quavernet;
using fuzz::KnownAudio;
using fuzz::Require;

std::unique_ptr<ADODB::Connection> OpenLibrary(const test::TemporaryFolder& folder) {
    const std::string path = folder / "Quavernet.db";
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    std::filesystem::copy_file(program.parent_path() / "Quavernet.db", path);
    auto opened = CreateSqliteConnection({});
    opened->Open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path);
    for (const std::string& known : KnownAudio) {
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
std::vector<std::string> Expected(const std::string& playlist) {
    std::vector<std::string> ids;
    for (const fuzz::PlaylistLine& line : fuzz::SlowReading(playlist)) {
        if (const std::string path = line.FileAmong(KnownAudio); !path.empty()) {
            const auto found = std::find(KnownAudio.begin(), KnownAudio.end(), path);
            ids.push_back(std::to_string(found - KnownAudio.begin() + 1));
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
    const std::vector<std::string> expected = Expected(std::string(playlist));
    constexpr std::size_t Positions = 32767; // An entry more is a failure of the program.
    if (expected.size() > Positions) {
        return 0;
    }
    fuzz::WriteWhole(folder / "List.m3u", playlist);
    fuzz::FuzzServices fresh;
    static fuzz::KnownFiles files;
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
    Require(FirstColumn("Select Path from Files") == KnownAudio);

    mainModule.Connection->Execute("Delete from FileCategories where Parent = 'List'");
    mainModule.Connection->Execute("Delete from Categories where Category = 'List'");
    library = std::move(mainModule.Connection);
    return 0;
}
