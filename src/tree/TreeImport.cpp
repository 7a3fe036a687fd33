#include "tree/TreeImport.h"

#include "app/AudioKind.h"
#include "app/EndWord.h"
#include "app/LibraryViews.h"
#include "app/LoadResString.h"
#include "app/LongWork.h"
#include "app/MainModule.h"
#include "app/ShowBox.h"
#include "app/TextNumbers.h"
#include "library/SqlQuote.h"
#include "platform/RuntimeError.h"
#include "platform/TextLines.h"
#include "platform/Utf8.h"
#include "scanner/AddDroppedFiles.h"
#include "scanner/Lookups.h"
#include "scanner/PutBack.h"
#include "scanner/WaitForRead.h"
#include "tree/ExchangeFile.h"
#include "tree/NewCategories.h"
#include "tree/PlaceNow.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace quavernet {

namespace {

// A dialog that can't come up counts as one that was cancelled.
std::optional<std::string> AskForSource() {
    try {
        return services.dialogs->ShowOpen(LoadResString(Texts::ExchangeFilter),
                                          GetSpecialFolderPath(Shell::DocumentsFolder));
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

// An audio file under its full path.
bool IsPresent(const std::string& path, NewFilesAhead& ahead) {
    if (!path.starts_with('/') || !IsAudio(path)) {
        return false;
    }
    ahead.WaitForFacts(path);
    return services.fileSystem->FileExists(path);
}

class Import {
public:
    explicit Import(ScanDriver& driver) : m_driver(driver), m_ahead([this] { return FilesToCome(); }) {}

    void Read(const std::string& path);
    bool HasAdded() const { return m_filesAdded; }
    bool HasMissed() const { return m_filesMissing; }
    void CountInto(EndWord& word) const;

private:
    /// Where an entry goes.
    struct Place {
        std::string_view Position;
        const NewCategory& Category;
    };

    void CategoryLine(const std::string& line);
    void FileLine(const std::string& line);
    const NewCategory& CategoryOf(const std::string& parent);
    bool InsertIfKnown(const Place& place, const std::string& path, const std::string& filename);
    bool Store(const std::string& path);
    std::vector<std::string> FilesToCome() const;

    ScanDriver& m_driver;
    std::string m_path;      ///< Of the exchange file.
    std::size_t m_lines = 0; ///< Read so far.
    NewFilesAhead m_ahead;
    CurrentFile m_file = mainModule.CurrentFile;
    OthersWatch m_watch{mainModule.Connection->ChangesOfOthers()};
    bool m_isShared = false; ///< Another program has written since.
    NewCategories m_categories;
    const NewCategory m_none; ///< What entries get if there is no category: their statement fails.
    std::size_t m_suffix = 0; ///< Number after a taken name; also the place in the list of new categories.
    bool m_filesAdded = false;
    bool m_filesMissing = false;
    std::size_t m_made = 0;    ///< Categories.
    std::size_t m_entries = 0; ///< Entries that were inserted.
    std::size_t m_stored = 0;  ///< Files that joined the library.
    std::size_t m_missed = 0;  ///< Lines that became no entry.
};

void Import::CountInto(EndWord& word) const {
    word.Count(m_made, Texts::NewCategory, Texts::NewCategories);
    word.Count(m_entries, Texts::NewEntry, Texts::NewEntries);
    word.Count(m_stored, Texts::NewFiles);
    word.Count(m_missed, Texts::SkippedFiles);
}

void Import::Read(const std::string& path) {
    m_path = path;
    TextLines lines(*services.files, path);
    ExchangeSections sections;
    for (std::string line; lines.Next(line);) {
        ++m_lines;
        switch (sections.Of(line)) {
        case ExchangeSection::Categories:
            CategoryLine(DecodeText(line));
            break;
        case ExchangeSection::Files:
            FileLine(line);
            break;
        case ExchangeSection::None:
            break;
        }
    }
}

// The number is one for the whole file and never goes back: after the first name that is taken every
// following category has one, even if its name is free. Nothing is merged with categories that are
// there.
void Import::CategoryLine(const std::string& line) {
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    std::string name = m_suffix > 0 ? line + std::to_string(m_suffix) : line;
    while (FindsRow("Select * from Categories where Category = '" + std::string(SqlPlain(name)) + "'")) {
        name = line + std::to_string(++m_suffix);
    }
    mainModule.Connection->Execute("Insert into Categories (Category) values ('" + name + "')");
    ++m_made;
    if (const auto id = FirstValue("Select Category_id from Categories where Category = '" + name + "'")) {
        m_categories.Add({*id, name});
    }
}

// Bytes that are not UTF-8 are the name of a file here if the library or the disk knows it by them, else
// text in the encoding of another machine.
void Import::FileLine(const std::string& line) {
    const std::optional<ExchangeEntry> entry = SplitEntry(line);
    if (!entry) {
        m_filesMissing = true;
        ++m_missed;
        return;
    }
    const Place place{entry->Position, CategoryOf(DecodeText(entry->Parent))};
    std::string path(entry->Path);
    const bool isText = IsValidUtf8(path);
    std::string filename = isText ? DecodeText(entry->Filename) : std::string(entry->Filename);
    if (InsertIfKnown(place, path, filename)) {
        return;
    }
    if (!isText && !IsPresent(path, m_ahead)) {
        path = DecodeText(entry->Path);
        filename = DecodeText(entry->Filename);
        if (InsertIfKnown(place, path, filename)) {
            return;
        }
    }
    if (!Store(path)) {
        m_filesMissing = true;
        ++m_missed;
        return;
    }
    m_filesAdded = true;
    ++m_stored;
    // A path that is not in its normal form ("/m//a.mp3") is stored in it.
    (void)InsertIfKnown(place, m_file.CurrentPath, filename);
}

// A part of the name is enough: "Rock" is satisfied by "Hard Rock" if that comes earlier, and so it is by its
// own form with a number, "Rock1". Without a match the last one made is taken. The search counts in the
// number that names get, so that a second section of categories goes on from there.
const NewCategory& Import::CategoryOf(const std::string& parent) {
    m_suffix = m_categories.FirstWith(parent);
    if (m_categories.Count() == 0) {
        return m_none;
    }
    return m_categories.At(std::min(m_suffix, m_categories.Count()));
}

// The file's name is that of the exchange file, which the library may know under another one.
bool Import::InsertIfKnown(const Place& place, const std::string& path, const std::string& filename) {
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    const std::string id =
        FirstValue("Select File_id from Files where Path = '" + SqlQuote(path) + "'").value_or("");
    if (id.empty()) {
        return false;
    }
    m_isShared = m_watch.HasNews() || m_isShared;
    if (m_isShared && !place.Category.Id.empty() && !TakesEntries(place.Category.Id, place.Category.Name)) {
        ++m_missed;
        return true;
    }
    mainModule.Connection->Execute(
        "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (" + id +
        ", " + place.Category.Id + ", " + std::string(place.Position) + ", '" + place.Category.Name + "', '" +
        SqlQuote(filename) + "')");
    ++m_entries;
    return true;
}

// False if there is no such file.
bool Import::Store(const std::string& path) {
    const PutBack putBack(m_file);
    m_file.CurrentPath = path;
    m_file.DetailsPath = path;
    mainModule.Connection->Commit(); // No other program waits while this file is looked for and read.
    if (!IsPresent(path, m_ahead)) {
        return false;
    }
    AddDroppedFileToLibrary(path, m_file, m_ahead, m_driver);
    return true;
}

// From the line on that is being read, for reading ahead: which of them are new is found out when their turn
// comes.
std::vector<std::string> Import::FilesToCome() const {
    std::vector<std::string> files;
    TextLines lines(*services.files, m_path);
    ExchangeSections sections;
    std::size_t number = 0;
    for (std::string line; lines.Next(line);) {
        const bool isFile = sections.Of(line) == ExchangeSection::Files;
        const std::optional<ExchangeEntry> entry = isFile ? SplitEntry(line) : std::nullopt;
        if (++number >= m_lines && entry && IsAudio(entry->Path)) {
            files.emplace_back(entry->Path);
        }
    }
    return files;
}

} // namespace

void ImportTree(LongWork& work, LibraryViews& views, ScanDriver& driver) {
    work.SetMousePointer(MousePointer::Hourglass);
    Import import(driver);
    const std::optional<std::string> path = AskForSource();
    EndWord word;
    if (path) {
        import.Read(*path);
    }
    views.LoadTree();
    if (import.HasAdded() && !mainModule.LoadOverSearch) {
        views.LoadDatabase("");
    }
    if (import.HasMissed()) {
        ShowBox(LoadResString(Texts::FilesNotAdded) + "\n" + LoadResString(Texts::FilesNotFound), Texts::Note,
                MsgBox::Icon::Information);
    }
    work.SetMousePointer(MousePointer::Default);
    if (path) {
        import.CountInto(word);
        work.TellEnd(word.Done());
    }
}

} // namespace quavernet
