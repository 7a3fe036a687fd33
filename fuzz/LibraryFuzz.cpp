// Opens a library file in which some bytes are others, and sends it the statements of the lists and the
// store. The input: changes to a fresh library, each the place in two bytes, the number of bytes and the
// bytes; a number of 255 cuts the file at that place, 254 puts what follows beside it as the log of a killed
// run.
#include "adapters/sqlite/SqliteConnection.h"
#include "platform/ADODB.h"
#include "platform/RuntimeError.h"
#include "support/TemporaryFolder.h"

#include "FuzzInput.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <string>

namespace {

using namespace quavernet;
using fuzz::Require;

constexpr unsigned Cut = 255;
constexpr unsigned Log = 254;

const std::string& FreshLibrary() {
    static const std::string bytes = fuzz::ReadWhole(
        (std::filesystem::read_symlink("/proc/self/exe").parent_path() / "Quavernet.db").string());
    return bytes;
}

struct Files {
    std::string library;
    std::optional<std::string> log;
};

Files Changed(std::string_view input) {
    Files files{FreshLibrary(), std::nullopt};
    while (!input.empty()) {
        const std::size_t high = fuzz::TakeByte(input);
        const std::size_t place = (high << 8 | fuzz::TakeByte(input)) % (files.library.size() + 1);
        const unsigned count = fuzz::TakeByte(input);
        if (count == Log) {
            files.log = input;
            break;
        }
        if (count == Cut) {
            files.library.resize(place);
            continue;
        }
        const std::size_t size = std::min({std::size_t{count}, input.size(), files.library.size() - place});
        files.library.replace(place, size, input.substr(0, size));
        input.remove_prefix(size);
    }
    return files;
}

constexpr std::array<const char*, 7> Statements = {
    "Select Count(File_id) from Files",
    "Select F.File_id, I.Interpret, T.Name, Q.Quality, E.Extension from Files F, Titel T, Interpret I, "
    "Quality "
    "Q, Extensions E where F.Title_id = T.Title_id and F.Inter_id = I.Inter_id order by I.Interpret",
    "Select Genre_id, Genre from Genres where Genre Like '%o%' Order By Genre",
    "Select RemindFlag, ScanPeriode, RemindDate from Reminder",
    "Select Category from Categories",
    "Insert into Interpret (Interpret) values ('Ärzte')",
    "Insert Into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, DateLastModified, Drive_id, Quality_id, "
    "Length, Extension_id, Genre_id, Album_id) values (1, 1, 'a.mp3', '/a.mp3', 10, '20.11.2026', 1, 1, 5, "
    "1, "
    "17, 1)"};

// Each statement works or fails as the program knows it; what is read are whole rows.
void Use(ADODB::Connection& library) {
    for (const std::string statement : Statements) {
        try {
            if (statement.starts_with("Insert")) {
                library.Execute(statement);
                continue;
            }
            const ADODB::RowBlock rows = library.Query(statement);
            for (std::size_t row = 0; row < rows.Rows(); ++row) {
                for (std::size_t column = 0; column < rows.Columns(); ++column) {
                    Require(rows.At(row, column).Text().size() < FreshLibrary().size() * 2);
                }
            }
        } catch (const RuntimeError& error) {
            Require(!error.Description().empty());
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    static const std::string path = folder / "Quavernet.db";
    const Files files = Changed(fuzz::TextOf(data, size));
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
        std::filesystem::remove_all(entry.path());
    }
    fuzz::WriteWhole(path, files.library);
    if (files.log) {
        fuzz::WriteWhole(path + "-wal", *files.log);
    }
    const auto library = CreateSqliteConnection({});
    try {
        library->Open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path);
    } catch (const RuntimeError& error) {
        // A file that is refused is the old one to the byte.
        Require(error.Description().starts_with(path));
        Require(fuzz::ReadWhole(path) == files.library);
        return 0;
    }
    Use(*library);
    return 0;
}
