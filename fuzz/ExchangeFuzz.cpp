// Imports any bytes as an exchange file of the tree, and lays the rows that it makes beside what a slow
// second reading of the bytes expects. The library knows one file, "/k.mp3"; the input is the exchange file.
#include "adapters/posix/PosixFileSystem.h"
#include "adapters/sqlite/SqliteConnection.h"
#include "app/TextHelpers.h"
#include "platform/CaseFold.h"
#include "platform/CodePage.h"
#include "scanner/ScanDriver.h"
#include "support/ScanDoubles.h"
#include "support/TemporaryFolder.h"
#include "tree/TreeImport.h"

#include "FuzzInput.h"
#include "FuzzServices.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace quavernet;
using fuzz::Require;

constexpr const char* Known = "/k.mp3";
constexpr const char* KnownId = "77";

struct Library {
    Library() {
        std::filesystem::copy_file(std::filesystem::read_symlink("/proc/self/exe").parent_path() /
                                       "Quavernet.db",
                                   folder / "Quavernet.db");
        mainModule.Connection = CreateSqliteConnection({});
        mainModule.Connection->Open("Data Source=" + (folder / "Quavernet.db"));
        mainModule.Connection->Execute("Insert into Files (File_id, Path) values (77, '/k.mp3')");
        connection = std::move(mainModule.Connection);
    }
    test::TemporaryFolder folder;
    std::unique_ptr<ADODB::Connection> connection;
};

/// A row of FileCategories.
struct Entry {
    std::string position, category, filename;
};

/// What the bytes say, read line by line and byte by byte.
struct Expected {
    std::vector<std::string> categories; ///< Names with their numbers.
    std::vector<Entry> entries;
    bool isMissing = false;
    bool fails = false;
};

std::vector<std::string> SlowLines(std::string bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        bytes.erase(0, 3);
    }
    std::vector<std::string> lines;
    std::string line;
    for (const char c : bytes) {
        if (c != '\n') {
            line += c;
            continue;
        }
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        lines.push_back(line);
        line.clear();
    }
    if (!line.empty()) {
        lines.push_back(line);
    }
    return lines;
}

std::string Decoded(const std::string& bytes) {
    return IsValidUtf8(bytes) ? bytes : FromWindows1252(bytes);
}

bool HasAny(const std::string& text, std::string_view bytes) {
    return text.find_first_of(bytes) != std::string::npos;
}

/// How many digits a number has, with a sign and blanks beside it; 0 if the text is none.
std::size_t DigitsOfNumber(const std::string& text) {
    std::size_t begin = std::min(text.find_first_not_of(' '), text.size());
    begin += begin < text.size() && text[begin] == '-' ? 1 : 0;
    const std::size_t end = std::min(text.find_first_not_of("0123456789", begin), text.size());
    return text.find_first_not_of(' ', end) == std::string::npos ? end - begin : 0;
}

bool IsPosition(const std::string& text) {
    const std::size_t digits = DigitsOfNumber(text);
    return digits >= 1 && digits <= 9;
}

// Nine digits at most: longer ones may or may not be a number.
bool IsDoubtful(const std::string& text) {
    return DigitsOfNumber(text) > 9;
}

/// Gives the names their numbers, and finds the category of an entry, name by name.
class SlowReading {
public:
    explicit SlowReading(const std::string& bytes) {
        bool inCategories = false, inFiles = false;
        for (const std::string& line : SlowLines(bytes)) {
            if (ContainsIgnoringCase(line, "#Categories")) {
                inCategories = true;
                inFiles = false;
            }
            if (ContainsIgnoringCase(line, "#Files")) {
                inCategories = false;
                inFiles = true;
            }
            if (line.empty() || HasAny(line, "#")) {
                continue;
            }
            inCategories ? Category(Decoded(line)) : inFiles ? File(line) : void();
            if (result.fails) {
                return;
            }
        }
    }

    Expected result;

private:
    void Category(const std::string& name) {
        if (HasAny(name, std::string_view("'\0", 2))) {
            result.fails = true;
            return;
        }
        std::string numbered = m_number > 0 ? name + std::to_string(m_number) : name;
        while (IsTaken(numbered)) {
            numbered = name + std::to_string(++m_number);
        }
        result.categories.push_back(numbered);
    }

    bool IsTaken(const std::string& name) const {
        return std::any_of(result.categories.begin(), result.categories.end(),
                           [&](const std::string& category) { return FoldCase(category) == FoldCase(name); });
    }

    void File(const std::string& line) {
        std::vector<std::size_t> commas;
        for (std::size_t i = 0; i < line.size(); ++i) {
            if (line[i] == ',') {
                commas.push_back(i);
            }
        }
        if (commas.size() < 3) {
            result.isMissing = true;
            return;
        }
        const std::string position = line.substr(0, commas[0]);
        const std::string parent = Decoded(line.substr(commas[0] + 1, commas[1] - commas[0] - 1));
        const std::string filename = Decoded(line.substr(commas[1] + 1, commas.back() - commas[1] - 1));
        const std::string path = line.substr(commas.back() + 1);
        if (!IsPosition(position)) {
            result.isMissing = true;
            return;
        }
        const std::string category = NameFor(parent);
        if (path.find('\0') != std::string::npos) {
            result.fails = true;
            return;
        }
        if (!EqualsIgnoringCase(path, Known)) {
            result.isMissing = true;
            return;
        }
        if (filename.find('\0') != std::string::npos || result.categories.empty()) {
            result.fails = true;
            return;
        }
        result.entries.push_back({position, category, filename});
    }

    // The place of the one that is found, or after all of them, is the number that the next name begins with.
    std::string NameFor(const std::string& parent) {
        m_number = 1;
        for (const std::string& category : result.categories) {
            if (FoldCase(category).find(FoldCase(parent)) != std::string::npos) {
                return category;
            }
            ++m_number;
        }
        return result.categories.empty() ? std::string() : result.categories.back();
    }

    std::size_t m_number = 0;
};

std::vector<std::vector<std::string>> Rows(const char* select) {
    const ADODB::RowBlock block = mainModule.Connection->Query(select);
    std::vector<std::vector<std::string>> rows(block.Rows());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < block.Columns(); ++column) {
            rows[row].push_back(block.At(row, column).Text());
        }
    }
    return rows;
}

void RequireRows(const std::string& bytes, bool failed, bool told) {
    const auto categories = Rows("Select Category from Categories Order By Category_id");
    std::vector<std::string> names;
    for (const auto& row : categories) {
        names.push_back(row[0]);
    }
    const Expected expected = SlowReading(bytes).result;
    Require(failed == expected.fails && told == (expected.isMissing && !failed));
    Require(names == expected.categories);
    const auto entries = Rows("Select [Position], Parent, Filename, File_id from FileCategories Order By "
                              "FileCategory_id");
    Require(entries.size() == expected.entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const Entry& entry = expected.entries[i];
        Require(std::stol(entries[i][0]) == std::stol(entry.position) && entries[i][1] == entry.category &&
                entries[i][2] == entry.filename && entries[i][3] == KnownId);
    }
    Require(Rows("Select File_id from Files").size() == 1);
}

// A position of ten digits and more, and a name on the disk, are no business of the second reading.
bool IsOutside(const std::string& bytes) {
    const std::vector<std::string> lines = SlowLines(bytes);
    return std::any_of(lines.begin(), lines.end(), [](const std::string& line) {
        const std::string path = line.substr(line.rfind(',') + 1);
        return IsDoubtful(line.substr(0, line.find(','))) ||
               (path.starts_with('/') && services.fileSystem->FileExists(path));
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Library library;
    static const test::TemporaryFolder folder;
    const std::string bytes(fuzz::TextOf(data, size));
    const std::string path = folder / "tree.qvn";
    fuzz::WriteWhole(path, bytes);
    fuzz::FuzzServices fuzzServices;
    const auto fileSystem = CreatePosixFileSystem();
    services.fileSystem = fileSystem.get();
    static test::RecordingShell shell;
    services.shell = &shell;
    fuzzServices.dialogs.file = path;
    mainModule.Connection = std::move(library.connection);
    if (!IsOutside(bytes)) {
        mainModule.Connection->Execute("Delete from FileCategories");
        mainModule.Connection->Execute("Delete from Categories");
        test::LongWorkDouble work;
        test::LibraryViewsDouble views;
        test::CallList calls;
        test::RecordingScanView view{calls};
        test::RecordingScanLog log{calls};
        ScanDriver driver(work, view, log);
        bool failed = false;
        try {
            ImportTree(work, views, driver);
        } catch (const RuntimeError&) {
            failed = true;
        }
        RequireRows(bytes, failed, !fuzzServices.msgBox.shown.empty());
    }
    library.connection = std::move(mainModule.Connection);
    return 0;
}
