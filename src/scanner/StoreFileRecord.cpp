#include "scanner/StoreFileRecord.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "app/TextNumbers.h"
#include "library/SqlQuote.h"
#include "scanner/Lookups.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace quavernet {

namespace {

// Keys are texts on their way from one statement into the next.
struct LookupKeys {
    std::string Title_id;
    std::string Inter_id;
    std::string Album_id;
    std::string Quality_id;
    std::string Drive_id;
    std::string Extension_id;
};

// The key of the row that `select` finds; without one the row is made first. The new row is asked for until
// it can be seen, however long that takes: here the first question finds it.
std::string FindOrInsert(const std::string& select, const std::string& insert) {
    std::string key = FirstValue(select).value_or("");
    if (key.empty()) {
        mainModule.Connection->Execute(insert);
        services.events->DoEvents();
        do {
            key = FirstValue(select).value_or("");
        } while (key.empty());
    }
    return key;
}

void FillMissingNames(CurrentFile& file) {
    if (file.FileArtist.empty()) {
        file.FileArtist = LoadResString(Texts::Unknown);
    }
    if (file.FileTitle.empty()) {
        file.FileTitle = LoadResString(Texts::Unknown);
    }
}

std::string PerformerKey(CurrentFile& file) {
    file.FileArtist = SqlQuote(file.FileArtist);
    std::string key =
        FindOrInsert("Select Inter_id from Interpret where Interpret = '" + file.FileArtist + "'",
                     "Insert into Interpret (Interpret) values ('" + file.FileArtist + "')");
    file.FileArtist = SqlUnquote(file.FileArtist);
    return key;
}

std::string AlbumKey(CurrentFile& file) {
    std::erase(file.FileAlbum, '\0');
    if (file.FileAlbum.empty()) {
        file.FileAlbum = LoadResString(Texts::NoAlbum);
    }
    file.FileAlbum = SqlQuote(file.FileAlbum);
    std::string key = FindOrInsert("Select Album_id from Albums where Name = '" + file.FileAlbum + "'",
                                   "Insert into Albums (Name) values ('" + file.FileAlbum + "')");
    file.FileAlbum = SqlUnquote(file.FileAlbum);
    return key;
}

std::string QualityKey(CurrentFile& file) {
    if (file.FileQuality.empty()) {
        file.FileQuality = "0";
    }
    return FindOrInsert("Select Quality_id from Quality where Quality = " + file.FileQuality,
                        "Insert into Quality (Quality) values (" + file.FileQuality + ")");
}

// A drive is stored without its final "/", unless nothing else would be left.
std::string DriveKey(CurrentFile& file) {
    const bool endsInSeparator = file.FileDrive.ends_with('/') || file.FileDrive.ends_with('\\');
    if (endsInSeparator && file.FileDrive.size() > 1) {
        file.FileDrive.pop_back();
    }
    const std::string drive = SqlQuote(file.FileDrive);
    return FindOrInsert("Select Drive_id from Drive where Drive = '" + drive + "'",
                        "Insert into Drive (Drive) values ('" + drive + "')");
}

std::string TitleKey(CurrentFile& file) {
    file.FileTitle = SqlQuote(file.FileTitle);
    std::string key = FindOrInsert("Select Title_id from Titel where Name = '" + file.FileTitle + "'",
                                   "Insert into Titel (Name) values ('" + file.FileTitle + "')");
    file.FileTitle = SqlUnquote(file.FileTitle);
    return key;
}

// The three formats are rows of every library; a file of another one has no business here and fails.
std::string ExtensionKey(CurrentFile& file) {
    file.FilePath = SqlQuote(file.FilePath);
    ADODB::Recordset rows;
    rows.Open("Select Extension_Id from Extensions where Extension = '" +
                  LowerAscii(RightCharacters(file.FilePath, 3)) + "'",
              *mainModule.Connection);
    std::string key = rows.Fields(0).Text();
    rows.Close();
    file.FilePath = SqlUnquote(file.FilePath);
    return key;
}

std::string DayOf(const std::string& fileDate) {
    const auto date = ParseDate(fileDate, services.regional);
    return date ? DayMonthYearText(*date, services.regional) : fileDate;
}

// The longest statements of a scan, joined in one piece of memory.
std::string Join(std::initializer_list<std::string_view> pieces) {
    std::size_t size = 0;
    for (const std::string_view piece : pieces) {
        size += piece.size();
    }
    std::string text;
    text.reserve(size);
    for (const std::string_view piece : pieces) {
        text += piece;
    }
    return text;
}

std::string InsertStatement(const CurrentFile& file, const LookupKeys& keys, const std::string& length) {
    return Join(
        {"Insert Into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, DateLastModified, Drive_id, "
         "Quality_id, Length, Extension_id, Genre_id, Album_id) values (",
         keys.Title_id,
         ", ",
         keys.Inter_id,
         ",'",
         file.FileName,
         "', '",
         file.FilePath,
         "', ",
         file.FileSize,
         ", '",
         DayOf(file.FileDate),
         "', ",
         keys.Drive_id,
         ", ",
         keys.Quality_id,
         ", ",
         length,
         ", ",
         keys.Extension_id,
         ", ",
         file.FileGenre,
         ", ",
         keys.Album_id,
         ")"});
}

std::string UpdateStatement(const CurrentFile& file, const LookupKeys& keys, const std::string& length,
                            const std::string& fileId) {
    return Join({"Update Files Set Title_id = ",
                 keys.Title_id,
                 ", Inter_id = ",
                 keys.Inter_id,
                 ", Name = '",
                 file.FileName,
                 "', Path = '",
                 file.FilePath,
                 "', Sizeinbytes = ",
                 file.FileSize,
                 ", DateLastModified = '",
                 DayOf(file.FileDate),
                 "', Drive_id = ",
                 keys.Drive_id,
                 ", Quality_id = ",
                 keys.Quality_id,
                 ", Length = ",
                 length,
                 ", Extension_id = ",
                 keys.Extension_id,
                 ", Genre_id = ",
                 file.FileGenre,
                 ", Album_id = ",
                 keys.Album_id,
                 " where File_id = ",
                 fileId});
}

} // namespace

bool StoreFileRecord(CurrentFile& file, SavedLog& log) {
    // Another running program may look for the same performer or the same path at this moment.
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    FillMissingNames(file);
    LookupKeys keys;
    keys.Inter_id = PerformerKey(file);
    keys.Album_id = AlbumKey(file);
    keys.Quality_id = QualityKey(file);
    keys.Drive_id = DriveKey(file);
    keys.Title_id = TitleKey(file);
    keys.Extension_id = ExtensionKey(file);

    std::string* const quoted[] = {&file.FileTitle, &file.FileArtist, &file.FileName, &file.FilePath};
    for (std::string* text : quoted) {
        *text = SqlQuote(*text);
    }
    ADODB::Recordset row;
    row.Open("Select File_id from Files where Path = '" + file.FilePath + "'", *mainModule.Connection);
    const std::string length = std::to_string(file.AudioInfo.Length);
    const bool isNew = row.RecordCount() == 0;
    if (!isNew) {
        const std::string fileId(Trim(row.Fields(0).Text()));
        mainModule.Connection->Execute(UpdateStatement(file, keys, length, fileId));
    } else {
        mainModule.Connection->Execute(InsertStatement(file, keys, length));
    }
    for (std::string* text : quoted) {
        *text = SqlUnquote(*text);
    }
    log.Add(file.FilePath, file.FileSize, length);
    row.Close();
    return isNew;
}

} // namespace quavernet
