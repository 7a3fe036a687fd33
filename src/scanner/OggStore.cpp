#include "scanner/OggStore.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "app/TextNumbers.h"
#include "inspect/FileNameTags.h"
#include "library/SqlQuote.h"
#include "scanner/Lookups.h"
#include "scanner/Volumes.h"

namespace quavernet {

namespace {

struct OggKeys {
    std::string Title_id;
    std::string Inter_id;
    std::string Drive_id;
    std::string Quality_id;
    std::string Album_id;
    std::string Genre_id;
};

/// The key of the row that `select` finds; without one the row is made, and the highest key is its own.
std::string FindOrInsert(const std::string& select, const std::string& insert, const std::string& maximum) {
    if (const auto key = FirstValue(select)) {
        return *key;
    }
    mainModule.Connection->Execute(insert);
    return FirstValue(maximum).value_or("");
}

void FillNames(OggRecord& record) {
    if (record.title.empty() && record.performer.empty()) {
        const OggNames names = OggTagsFromFileName(record.path);
        record.title = names.title;
        record.performer = names.performer;
    }
    if (record.title.empty()) {
        record.title = LoadResString(Texts::Unknown);
    }
    if (record.performer.empty()) {
        record.performer = LoadResString(Texts::Unknown);
    }
}

std::string TitleKey(const OggRecord& record) {
    const std::string title = SqlQuote(record.title);
    return FindOrInsert("Select Title_id from Titel where Name = '" + title + "'",
                        "Insert Into Titel (Name) values ('" + title + "')",
                        "Select Max(Title_id) from Titel");
}

std::string PerformerKey(const OggRecord& record) {
    const std::string performer = SqlQuote(record.performer);
    return FindOrInsert("Select Inter_id from Interpret where Interpret = '" + performer + "'",
                        "Insert Into Interpret (Interpret) values ('" + performer + "')",
                        "Select Max(Inter_id) from Interpret");
}

/// Drive, stored path and date come from the file itself: here the date is that of the last change, with its
/// time.
void FillFileFacts(OggRecord& record) {
    const FileFacts facts = services.fileSystem->GetFile(record.path);
    record.drive = UNCPath(facts.drivePath, true);
    if (record.drive.empty()) {
        record.drive = facts.drivePath;
    }
    const std::string volume = facts.drivePath.ends_with('/') ? facts.drivePath : facts.drivePath + "/";
    if (volume != record.drive) {
        record.path = ReplaceAll(record.path, volume, record.drive);
    }
    record.date = GeneralDateText(facts.dateLastModified, services.regional);
}

/// The final "/" of a root stays, unlike in the store of the other files: a volume with both kinds has two
/// rows.
std::string DriveKey(const OggRecord& record) {
    const std::string drive = SqlQuote(record.drive);
    return FindOrInsert("Select Drive_id from Drive where Drive = '" + drive + "'",
                        "Insert Into Drive (Drive) values ('" + drive + "')",
                        "Select Max(Drive_id) from Drive");
}

/// A value that is in a statement as a bare number. It is read from a line that a comment of the file can
/// imitate: a comment "x=Nominal bitrate: ..." brings any text here. One that is no number fails where its
/// statement would: the rows that were made before stay.
std::string Number(const std::string& value) {
    return std::string(SqlNumber(value));
}

/// A file that tells no bit rate fails here.
std::string QualityKey(const OggRecord& record) {
    const std::string quality = Number(record.quality);
    return FindOrInsert("Select Quality_id from Quality where Quality = " + quality,
                        "Insert Into Quality (Quality) values (" + quality + ")",
                        "Select Max(Quality_id) from Quality");
}

std::string AlbumKey(OggRecord& record) {
    if (record.album.empty()) {
        record.album = LoadResString(Texts::NoAlbum);
    }
    const std::string album = SqlQuote(record.album);
    return FindOrInsert("Select Album_id from Albums where Name = '" + album + "'",
                        "Insert Into Albums (Name) values ('" + album + "')",
                        "Select Max(Album_id) from Albums");
}

/// A genre that the library does not know is none.
std::string GenreKey(const OggRecord& record) {
    return FirstValue("Select Genre_id from Genres where Genre = '" + SqlQuote(record.genre) + "'")
        .value_or(std::to_string(NoGenre));
}

// Ogg files have the extension key 3 in every library: no lookup.
std::string InsertStatement(const OggRecord& record, const OggKeys& keys) {
    return "Insert into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, DateLastModified, "
           "Drive_id, Quality_id, Length, Extension_id, Genre_id, Album_id) values (" +
           keys.Title_id + ", " + keys.Inter_id + ", '" + record.name + "', '" + record.path + "', " +
           Number(record.size) + ", '" + record.date + "', " + keys.Drive_id + ", " + keys.Quality_id + ", " +
           Number(record.length) + ", 3, " + keys.Genre_id + ", " + keys.Album_id + ")";
}

std::string UpdateStatement(const OggRecord& record, const OggKeys& keys) {
    return "Update Files set Title_id = " + keys.Title_id + ", Inter_id = " + keys.Inter_id + ", Name = '" +
           record.name + "',Path = '" + record.path + "',Sizeinbytes = " + Number(record.size) +
           ",DateLastModified = '" + record.date + "', Drive_id = " + keys.Drive_id +
           ",Quality_id = " + keys.Quality_id + ",Length = " + Number(record.length) +
           ",Extension_id = 3,Genre_id = " + keys.Genre_id + ",Album_id = " + keys.Album_id +
           " where Path = '" + record.path + "'";
}

} // namespace

OggNames OggTagsFromFileName(const std::string& path) {
    const std::string name = FileNameFromPath(path);
    try {
        const FileNameTags tags = SplitFileName(name);
        return {std::string(tags.title), std::string(tags.performer)};
    } catch (const RuntimeError&) {
        return {LoadResString(Texts::Unknown), LoadResString(Texts::Unknown)};
    }
}

bool StoreOggRecord(OggRecord& record, SavedLog& log) {
    // The highest key is the new row's own only while nobody else inserts.
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    FillNames(record);
    OggKeys keys;
    keys.Title_id = TitleKey(record);
    keys.Inter_id = PerformerKey(record);
    FillFileFacts(record);
    keys.Drive_id = DriveKey(record);
    keys.Quality_id = QualityKey(record);
    keys.Album_id = AlbumKey(record);
    keys.Genre_id = GenreKey(record);

    const std::string path = record.path;
    const std::string name = record.name;
    record.path = SqlQuote(path);
    record.name = SqlQuote(name);
    const bool isKnown = FindsRow("Select File_id from Files where Path = '" + record.path + "'");
    mainModule.Connection->Execute(isKnown ? UpdateStatement(record, keys) : InsertStatement(record, keys));
    log.Add(path, record.size, record.length); // Quoting is for statements.
    services.events->DoEvents();
    record.path = path;
    record.name = name;
    return !isKnown;
}

} // namespace quavernet
