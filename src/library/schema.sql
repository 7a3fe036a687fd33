-- The library file: one row per audio file, pointing by number into small lookup tables, beside the user's
-- category tree, covers and the scan reminder. The template that ships with the program is made from this file
-- and seed.sql; the program itself only reads and writes rows.
--
-- Text columns compare by the program's own collation. Columns of type DATETEXT hold ISO dates and are shown in
-- the regional form. Keys of tables whose rows are deleted are never given out twice (autoincrement), since
-- rows of other tables may still point to them.

pragma application_id = 0x51764E74;
pragma user_version = 1;

create table Files (
    File_id integer primary key autoincrement,
    Title_id integer,
    Inter_id integer,
    Name text collate QUAVERNET,
    Path text collate QUAVERNET,
    Sizeinbytes integer,
    DateLastModified DATETEXT,
    Drive_id integer,
    Quality_id integer,
    Length integer,
    Extension_id integer,
    Genre_id integer,
    Album_id integer,
    Hits integer default 0
);

create table Titel (Title_id integer primary key, Name text collate QUAVERNET);
create table Interpret (Inter_id integer primary key, Interpret text collate QUAVERNET);
create table Albums (Album_id integer primary key, Name text collate QUAVERNET);
create table Drive (Drive_id integer primary key, Drive text collate QUAVERNET);
create table Quality (Quality_id integer primary key, Quality integer);
create table Extensions (Extension_id integer primary key, Extension text collate QUAVERNET);
create table Genres (Genre_id integer primary key, Genre text collate QUAVERNET);

create table Categories (Category_id integer primary key autoincrement, Category text collate QUAVERNET);
create table FileCategories (
    FileCategory_id integer primary key autoincrement,
    File_id integer,
    Category_id integer,
    Position integer,
    Parent text collate QUAVERNET,
    Filename text collate QUAVERNET
);

create table Covers (
    Cover_id integer primary key,
    Album_id integer,
    Interpret_id integer,
    Front text collate QUAVERNET,
    Back text collate QUAVERNET,
    CD text collate QUAVERNET,
    CD2 text collate QUAVERNET,
    Inlay text collate QUAVERNET,
    Inlet text collate QUAVERNET
);

create table Reminder (RemindFlag integer, RemindDate DATETEXT, ScanPeriode text collate QUAVERNET);

-- Every lookup by file goes by its path; the combos look for a file of each drive, genre and album; the
-- counters of a whole library go along the keys of performers, titles and albums.
create index FilesByPath on Files (Path);
create index FilesByDrive on Files (Drive_id);
create index FilesByGenre on Files (Genre_id);
create index FilesByAlbum on Files (Album_id);
create index FilesByPerformer on Files (Inter_id);
create index FilesByTitle on Files (Title_id);

create index TitelByName on Titel (Name);
create index InterpretByName on Interpret (Interpret);
create index AlbumsByName on Albums (Name);
create index DriveByName on Drive (Drive);
create index QualityByValue on Quality (Quality);
create index ExtensionsByName on Extensions (Extension);
create index GenresByName on Genres (Genre);

create index CategoriesByName on Categories (Category);
create index EntriesByCategory on FileCategories (Category_id, Position);
create index EntriesByParent on FileCategories (Parent, Position);
create index EntriesByFile on FileCategories (File_id);
create index CoversByAlbum on Covers (Album_id, Interpret_id);

-- The planner's statistics are given, not gathered: one plan for every library. With nothing told of the tables'
-- sizes the list starts at Files, or at the filter's index, and finds the rest by key; its order is made from the
-- rows when they have been read.
analyze sqlite_schema;
insert into sqlite_stat1 (tbl, idx, stat) values ('Files', 'FilesByPath', '1000000 1');
