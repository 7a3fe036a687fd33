// Every kind of statement that the program sends, once through the connection, which takes the literals out,
// and once as it is through the bare engine: both must find the same rows and leave the same tables.
#include "adapters/sqlite/LibraryFile.h"
#include "platform/RuntimeError.h"
#include "support/TestLibrary.h"
#include "support/Texts.h"

#include <sqlite3.h>

namespace quavernet::test {
namespace {

const char* const Tables[] = {"Files",  "Titel",      "Interpret",  "Albums",         "Drive",  "Quality",
                              "Genres", "Extensions", "Categories", "FileCategories", "Covers", "Reminder"};

const char* const FilesAndFriends[] = {
    "Insert into Interpret (Interpret) values ('O''Neill')",
    "Insert into Interpret (Interpret) values ('Die Ärzte')",
    "Insert into Interpret (Interpret) values ('128')",
    "Insert into Titel (Name) values ('Rock ''n'' Roll')",
    "Insert into Titel (Name) values ('50% [live.1]')",
    "Insert into Titel (Name) values ('-1')",
    "Insert into Albums (Name) values ('Kein Album...')",
    "Insert into Albums (Name) values ('20.11.2026')",
    "Insert into Drive (Drive) values ('/')",
    "Insert into Quality (Quality) values (128)",
    "Insert Into Quality (Quality) values (0)",
    "Insert Into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, DateLastModified, Drive_id, Quality_id, "
    "Length, Extension_id, Genre_id, Album_id) values (1, 1,'it''s.mp3', '/m/it''s.mp3', 3145728, "
    "'2026-11-20', 1, 1, 215, 1, 255, 1)",
    "Insert into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, DateLastModified, Drive_id, Quality_id, "
    "Length, Extension_id, Genre_id, Album_id) values (2, 2, 'b.ogg', '/m/b.ogg', 10, '2003-02-01 04:05:06', "
    "1, 2, 59.5, 3, 17, 2)",
    "Insert into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, DateLastModified, Drive_id, Quality_id, "
    "Length, Extension_id, Genre_id, Album_id) values (3, 3, 'c.wav', '/m/c.wav', 0, '', 1, 1, -5, 2, 0, 2)",
    "Insert Into Categories (Category) values ('Rock')",
    "Insert Into Categories (Category) values ('Jazz')",
    "Insert Into Categories (Category) values ('ROCK')",
    "Insert Into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (1, 1, 1, "
    "'Rock', "
    "'it''s.mp3')",
    "Insert Into FileCategories (File_id, Category_ID, Filename, [Position], Parent) values (2, 1, 'b.ogg', "
    "2, 'Rock')",
    "Insert Into FileCategories (File_id, Category_id, [Position], Parent, FileName) values (3, 2, 1, "
    "'Jazz', "
    "'c.wav')",
};

const std::string From = " from Files F, Titel T, Interpret I, Quality Q, Extensions E where F.Title_id = "
                         "T.Title_id and F.Inter_id = I.Inter_id and Q.Quality_id = F.Quality_Id and "
                         "F.Extension_id = E.Extension_id";
const std::string Core = "Select I.Interpret, T.Name from (Files F inner join Interpret I on F.Inter_id = "
                         "I.Inter_id) inner join Titel T on T.Title_id = F.Title_id";

class StatementMeaningTest : public LibraryTest {
protected:
    StatementMeaningTest() {
        // The system's date form is the stored one, so that the dates of both sides read alike.
        mainModule.Connection = OpenLibrary(libraryPath, {".", "", "-", "yyyy-MM-dd", false});
        CopyTemplate(barePath);
        bare = sqlite::OpenLibraryFile(barePath);
        for (const char* statement : FilesAndFriends) {
            Both(statement);
        }
    }

    /// The rows or the failure of a statement sent as it is, but for "[FC.".
    Texts Bare(std::string statement) {
        for (auto at = statement.find("[FC."); at != std::string::npos; at = statement.find("[FC.")) {
            statement.replace(at, 4, "FC.[");
        }
        Texts rows;
        const auto keep = [](void* target, int count, char** values, char**) {
            std::string row;
            for (int i = 0; i < count; ++i) {
                row += (i == 0 ? "" : "|") + std::string(values[i] == nullptr ? "" : values[i]);
            }
            static_cast<Texts*>(target)->push_back(row);
            return 0;
        };
        const int code = sqlite3_exec(bare.handle.get(), statement.c_str(), keep, &rows, nullptr);
        return code == SQLITE_OK ? rows : Texts{"failed: " + std::string(sqlite3_errmsg(bare.handle.get()))};
    }

    Texts Sent(const std::string& statement) {
        try {
            if (statement.starts_with("Select")) {
                return Rows(statement);
            }
            Execute(statement);
            return {};
        } catch (const RuntimeError& error) {
            return {"failed: " + error.Description()};
        }
    }

    void Both(const std::string& statement) {
        EXPECT_EQ(Sent(statement), Bare(statement)) << statement;
        if (!statement.starts_with("Select")) {
            for (const char* table : Tables) {
                const std::string all = "Select * from " + std::string(table);
                EXPECT_EQ(Rows(all), Bare(all)) << statement;
            }
        }
    }
    void Both(std::initializer_list<std::string> statements) {
        for (const std::string& statement : statements) {
            Both(statement);
        }
    }

    std::string barePath = libraryFolder / "Bare.db";
    sqlite::OpenedLibrary bare;
};

} // namespace

TEST_F(StatementMeaningTest, LookupsByTextAndByNumber) {
    Both({"Select Inter_id from Interpret where Interpret = 'o''neill'",
          "Select Inter_id from Interpret where Interpret = 'DIE ÄRZTE'",
          "Select Inter_id from Interpret where Interpret = '128'",
          "Select Inter_id from Interpret where Interpret = 128",
          "Select Inter_id from Interpret where Inter_id = '2'",
          "Select Title_id from Titel where Name = '-1'",
          "Select Title_id from Titel where Name = ''",
          "Select Title_id from Titel where Name = ''''",
          "Select Album_id from Albums where Name = '2026-11-20'",
          "Select Quality_id from Quality where Quality = 0",
          "Select Quality_id from Quality where Quality = '128'",
          "Select Quality_id from Quality where Quality = 128.0",
          "Select Quality_id from Quality where Quality = 1.28e2",
          "Select Quality_id from Quality where Quality = 00128",
          "Select Quality_id from Quality where Quality = -128",
          "Select File_id from Files where Length = -5",
          "Select File_id from Files where Length = 59.5",
          "Select File_id from Files where Length = .5",
          "Select File_id from Files where Sizeinbytes = 99999999999999999999",
          "Select File_id from Files where Path = '/M/IT''S.MP3'",
          "Select Name from Files where DateLastModified = '2026-11-20'",
          "Select Name from Files where DateLastModified < '2026-01-01'",
          "Select Extension_Id from Extensions where Extension = 'mp3'",
          "Select * from Categories where Category = 'rock'",
          "Select Genre_id from Genres where Genre = 'R&B'",
          "Select Drive_id from Files where Drive_id = 1"});
}

TEST_F(StatementMeaningTest, SortsGroupsSumsAndHighestValues) {
    Both({"Select Name, Hits, Path, File_id from Files order by  Hits DESC, DateLastModified DESC",
          "Select Name, DateLastModified, Path, File_id from Files order by DateLastModified DESC",
          "Select count(Category), Category from Categories Group By Category",
          "Select Sum(F.Length), FC.Parent from Files F Inner Join FileCategories FC on F.File_id = "
          "FC.File_id "
          "Group By FC.Parent",
          "Select Category from Categories order By Category",
          "Select Category_id, Category from Categories Order by Category_id",
          "Select Max(Title_id) from Titel", "Select Max(Inter_id) from Interpret where Interpret = 'nobody'",
          "Select Max(FileCategory_id) from FileCategories",
          "Select Max([Position]) from FileCategories where Parent = 'ROCK'",
          "Select Count(File_id) from Files", "Select File_id from Files Order By File_id",
          "Select Name, Length from Files Order By 2 DESC",
          "Select Length, Count(1) from Files Group By 1 Order By 1",
          "Select Genre, Genre_id from Genres Order By Genre"});
}

TEST_F(StatementMeaningTest, JoinsAliasesSubqueriesAndDerivedTables) {
    Both(
        {"Select F.Name, C.Category, F.Path, F.File_id, [FC.Position], FC.FileCategory_id from Files F, "
         "Categories C, FileCategories FC  where F.File_id = FC.File_id and C.Category_id = FC.Category_id "
         "Order By [FC.Position]",
         Core + " where Path = '/m/it''s.mp3'", Core + " where F.Path = '/m/b.ogg'",
         Core + " where F.File_id = 2",
         "Select Extension from Extensions where Extension_id = (Select Extension_id from Files where Path = "
         "'/m/b.ogg')",
         "Select Q.Quality, F.Length from Quality Q Inner Join Files F on Q.Quality_id = F.Quality_id where "
         "F.Path = '/m/b.ogg'",
         "Select distinct A.Name, A.Album_id, I.Interpret, I.Inter_id from (Albums A Inner Join Files F On "
         "A.Album_id = F.Album_id) Inner Join Interpret I On F.Inter_id = I.Inter_id Order By I.Interpret",
         "Select C.Category_id from Files F, Categories C  where F.File_id = 3 and C.Category = 'Jazz'",
         "Select Parent, [Position] from FileCategories where File_id = 1",
         "Select File_id from FileCategories where Parent = 'Rock' and Filename = 'it''s.mp3' and [Position] "
         "= 1",
         "Select File_id from FileCategories where Category_id = 1 order by [Position]",
         "Select Front, Back, CD, CD2, Inlay, Inlet from Covers where Album_id = 1 and Interpret_id = 1"});
}

TEST_F(StatementMeaningTest, TheListAndItsCounters) {
    const std::string fields = "Select F.Path, F.SizeInBytes, T.Name, I.Interpret, Q.Quality, F.File_id, "
                               "F.Length, F.Name, E.Extension";
    for (const std::string clause :
         {"", " and (I.Interpret Like '%o''n%' or T.Name Like '%o''n%')", " and T.Name Like '%50%%'",
          " and T.Name Like '%[live.1]%'",
          " and T.Name Like '%-1%' and F.Drive_id = 1 and F.Genre_id = 0 and F.Album_id = 2",
          " and T.Name Like '%?%'", " and File_id in (3, 2,1)", " and File_id in (3)",
          " and File_id in (-1, 2)"}) {
        Both(fields + From + clause + " order by F.Length DESC");
        Both("Select Count(Seperate) from (select distinct F.Album_id As Seperate" + From + clause + " )");
    }
}

TEST_F(StatementMeaningTest, ListsOfIdsBeyondTheLiftedOnes) {
    std::string list = "3";
    for (int id = 70000; id > 4; --id) {
        list += ", " + std::to_string(id);
    }
    for (const std::string& ids : {list, list + ", 1", "2, " + list}) {
        Both("Select File_id from Files where File_id in (" + ids + ") and Name Like '%o%' Order By File_id");
    }
    Both("Delete from FileCategories where File_id in (" + list + ")");
}

TEST_F(StatementMeaningTest, WritesOfPositionsKeysAndTexts) {
    Both({"Update FileCategories set [Position] = [Position] + 3 where ([Position] >= 1 and Parent = 'rock')",
          "Update FileCategories set [Position] = 0 where [Position] = 4 and Parent = 'Rock' and "
          "FileCategory_id = 1",
          "Update FileCategories set [Position] = [Position] - 1 where ([Position] > 1 and [Position] <= 9 "
          "and "
          "Parent = 'Rock') and [Position] <> 0",
          "Update FileCategories set [Position] = 7, Category_id = 2, Parent = 'Jazz' where [Position] = 0 "
          "and "
          "Parent = 'Rock' and Filename = 'it''s.mp3' and Filecategory_id = 1",
          "Update FileCategories set [Position] = [Position]- 1 where [Position] > 1  and Category_id = 2",
          "Update FileCategories set Parent = 'Blues' where Parent = 'Jazz'",
          "Delete from FileCategories where ([Position] = 6 and File_id = 1 and Parent = 'Blues')",
          "Delete from FileCategories where FileName = 'b.ogg' and Parent = 'Rock'",
          "Delete from Categories where Category_id in (3, 2)", "Delete from FileCategories",
          "Delete from Categories"});
}

TEST_F(StatementMeaningTest, WritesOfFilesCoversAndTheReminder) {
    Both({"Update Files Set Title_id = 2, Inter_id = 1, Name = 'x''y', Path = '/m/x''y', Sizeinbytes = 5, "
          "DateLastModified = '2020-02-29', Drive_id = 1, Quality_id = 2, Length = 61, Extension_id = 1, "
          "Genre_id = 0, Album_id = 1 where File_id = 1",
          "Update Files set Title_id = 1, Inter_id = 2, Name = '2020-01-01',Path = '/m/b.ogg',Sizeinbytes = "
          "7,DateLastModified = '1900-01-01', Drive_id = 1,Quality_id = 1,Length = 3,Extension_id = "
          "3,Genre_id = 255,Album_id = 1 where Path = '/m/b.ogg'",
          "Update Files set Path = '/m/new', Name = 'new' where Path  = '/m/c.wav'",
          "Update Files Set Hits = Hits + 1 where Path = '/m/new'",
          "Update Files Set Hits = Hits + 1 where File_id = 2", "Update Files Set Hits = 0",
          "Insert Into Covers (Album_id, Interpret_id, Front, Back, CD, CD2, Inlay, Inlet) values (1, 2, "
          "'/f''.jpg', '', '', '', '', '')",
          "Update Covers Set Front = '', Back = '/b(1).jpg', CD = '', CD2 = '', Inlay = '', Inlet = '' where "
          "Cover_id = 1",
          "Insert Into Reminder (RemindFlag, RemindDate, Scanperiode) values (1, '2026-11-20', 'd')",
          "Update Reminder Set RemindFlag = 0, RemindDate = '2026-12-20', ScanPeriode = 'm'",
          "Update Reminder Set RemindDate = ''", "Delete from Files where Path = '/m/new'",
          "Delete from Files where File_id = 1"});
}

TEST_F(StatementMeaningTest, StatementsThatFailSayTheSame) {
    Both({"Select Quality_id from Quality where Quality = ", "Insert Into Quality (Quality) values ()",
          "Insert into Titel (Name) values ('O'Neill')", "Select File_id from Files where Path = 'it's'",
          "Update FileCategories set [Position] = [Position] + 1 where ([Position] >= Rock and Parent = 'x')",
          "Delete from Files where File_id in (", "Select Nothing from Files where File_id = 1",
          "Insert into Files (Length, Name) values (1, 2, 'x')"});
}

} // namespace quavernet::test
