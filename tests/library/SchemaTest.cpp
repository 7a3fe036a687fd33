// The template library: what it holds, and the plans that its indexes and statistics give.
#include "platform/RuntimeError.h"
#include "support/TestLibrary.h"
#include "support/Texts.h"

namespace quavernet::test {
namespace {

class SchemaTest : public LibraryTest {
protected:
    // The steps of the plan: "SCAN F", "SEARCH F USING INDEX FilesByGenre (Genre_id=?)" and so on.
    Texts Plan(const std::string& statement) {
        const ADODB::RowBlock rows = Connection().Query("explain query plan " + statement);
        Texts steps;
        for (std::size_t row = 0; row < rows.Rows(); ++row) {
            steps.push_back(rows.At(row, 3).Text());
        }
        return steps;
    }
    std::string PlanText(const std::string& statement) {
        std::string text;
        for (const std::string& step : Plan(statement)) {
            text += step + "\n";
        }
        return text;
    }
    static std::string List(const std::string& rest) {
        return "Select F.Path, F.SizeInBytes, T.Name, I.Interpret, Q.Quality, F.File_id, F.Length, F.Name, "
               "E.Extension from Files F, Titel T, Interpret I, Quality Q, Extensions E where F.Title_id = "
               "T.Title_id and F.Inter_id = I.Inter_id and Q.Quality_id = F.Quality_Id and F.Extension_id = "
               "E.Extension_id" +
               rest;
    }
};

TEST_F(SchemaTest, TheTwelveTablesHaveTheirColumns) {
    const auto columns = [&](const std::string& table) {
        std::string names;
        for (const std::string& name : Rows("Select name from pragma_table_info('" + table + "')")) {
            names += (names.empty() ? "" : " ") + name;
        }
        return names;
    };
    EXPECT_EQ(columns("Files"),
              "File_id Title_id Inter_id Name Path Sizeinbytes DateLastModified Drive_id Quality_id "
              "Length Extension_id Genre_id Album_id Hits");
    EXPECT_EQ(columns("Titel"), "Title_id Name");
    EXPECT_EQ(columns("Interpret"), "Inter_id Interpret");
    EXPECT_EQ(columns("Albums"), "Album_id Name");
    EXPECT_EQ(columns("Drive"), "Drive_id Drive");
    EXPECT_EQ(columns("Quality"), "Quality_id Quality");
    EXPECT_EQ(columns("Extensions"), "Extension_id Extension");
    EXPECT_EQ(columns("Genres"), "Genre_id Genre");
    EXPECT_EQ(columns("Categories"), "Category_id Category");
    EXPECT_EQ(columns("FileCategories"), "FileCategory_id File_id Category_id Position Parent Filename");
    EXPECT_EQ(columns("Covers"), "Cover_id Album_id Interpret_id Front Back CD CD2 Inlay Inlet");
    EXPECT_EQ(columns("Reminder"), "RemindFlag RemindDate ScanPeriode");
    EXPECT_EQ(Value("Select Count(name) from sqlite_schema where type = 'table' and name not like 'sqlite%'"),
              "12");
}

TEST_F(SchemaTest, OnlyExtensionsAndGenresHoldRows) {
    EXPECT_EQ(Rows("Select Extension_id, Extension from Extensions Order By Extension_id"),
              (Texts{"1|mp3", "2|wav", "3|ogg"}));
    EXPECT_EQ(Value("Select Count(Genre_id) from Genres"), "149");
    for (const char* table : {"Albums", "Titel", "Interpret", "Quality", "Drive", "Categories",
                              "FileCategories", "Files", "Covers", "Reminder"}) {
        EXPECT_EQ(Count("Select * from " + std::string(table)), 0) << table;
    }
}

TEST_F(SchemaTest, GenresCarryTheirNumberInTags) {
    std::string names;
    const Texts genres = Rows("Select Genre from Genres where Genre_id < 255 Order By Genre_id");
    for (const std::string& name : genres) {
        names += name + "|";
    }
    EXPECT_EQ(names, "Blues|Classic Rock|Country|Dance|Disco|Funk|Grunge|Hip-Hop|Jazz|Metal|New Age|Oldies|"
                     "Other|Pop|R&B|Rap|Reggae|Rock|Techno|Industrial|Alternative|Ska|Death Metal|Pranks|"
                     "Soundtrack|Euro-Techno|Ambient|Trip Hop|Vocal|Jazz+Funk|Fusion|Trance|Classical|"
                     "Instrumental|Acid|House|Game|Sound Clip|Gospel|Noise|Alt. Rock|Bass|Soul|Punk|Space|"
                     "Meditative|Instrumental Pop|Instrumental Rock|Ethnic|Gothic|Darkwave|Techno-Industrial|"
                     "Electronic|Pop-Folk|Eurodance|Dream|Southern Rock|Comedy|Cult|Gangsta Rap|Top 40|"
                     "Christian Rap|Pop/Punk|Jungle|Native American|Cabaret|New Wave|Phychedelic|Rave|"
                     "Showtunes|Trailer|Lo-Fi|Tribal|Acid Punk|Acid Jazz|Polka|Retro|Musical|Rock & Roll|"
                     "Hard Rock|Folk|Folk/Rock|National Folk|Swing|Fast-Fusion|Bebob|Latin|Revival|Celtic|"
                     "Blue Grass|Avantegarde|Gothic Rock|Progressive Rock|Psychedelic Rock|Symphonic Rock|"
                     "Slow Rock|Big Band|Chorus|Easy Listening|Acoustic|Humour|Speech|Chanson|Opera|"
                     "Chamber Music|Sonata|Symphony|Booty Bass|Primus|Porn Groove|Satire|Slow Jam|Club|Tango|"
                     "Samba|Folklore|Ballad|power Ballad|Rhythmic Soul|Freestyle|Duet|Punk Rock|Drum Solo|"
                     "A Capella|Euro-House|Dance Hall|Goa|Drum & Bass|Club-House|Hardcore|Terror|indie|"
                     "Brit Pop|Negerpunk|Polsk Punk|Beat|Christian Gangsta Rap|Heavy Metal|Black Metal|"
                     "Crossover|Comteporary Christian|Christian Rock|Merengue|Salsa|Trash Metal|Anime|JPop|"
                     "Synth Pop|");
    EXPECT_EQ(Value("Select Max(Genre_id) from Genres where Genre_id < 255"), "147");
    EXPECT_EQ(Value("Select Genre from Genres where Genre_id = 255"), "Kein Genre...");
    EXPECT_EQ(Value("Select Genre_id from Genres where Genre = 'hip-hop'"), "7");
    EXPECT_EQ(Count("Select Genre from Genres where Genre is null or Genre = ''"), 0);
}

TEST_F(SchemaTest, HitsBeginAtZero) {
    Execute("Insert into Files (Path) values ('/a.mp3')");
    EXPECT_EQ(Value("Select Hits from Files"), "0");
    Execute("Update Files Set Hits = Hits + 1 where Path = '/A.MP3'");
    EXPECT_EQ(Value("Select Hits from Files"), "1");
    Execute("Update Files Set Hits = 0");
    EXPECT_EQ(Value("Select Hits from Files"), "0");
}

TEST_F(SchemaTest, KeysOfDeletedRowsAreNotGivenOutAgain) {
    for (const char* table : {"Files (Name)", "Categories (Category)", "FileCategories (Parent)"}) {
        const std::string name = std::string(table).substr(0, std::string(table).find(' '));
        const std::string insert = "Insert into " + std::string(table) + " values ('x')";
        Execute(insert);
        Execute("Delete from " + name);
        Execute(insert);
        EXPECT_EQ(Rows("Select rowid from " + name), Texts{"2"}) << name;
    }
}

TEST_F(SchemaTest, AFileWithoutItsQualityRowIsCountedButNotListed) {
    Execute({"Insert into Titel (Name) values ('t')", "Insert into Interpret (Interpret) values ('i')",
             "Insert into Files (Title_id, Inter_id, Quality_id, Extension_id) values (1, 1, 9, 1)"});
    EXPECT_EQ(Value("Select Count(File_id) from Files"), "1");
    EXPECT_EQ(Count(List("")), 0);
}

TEST_F(SchemaTest, TheFirstSaveOfTheReminderFindsNoRow) {
    EXPECT_EQ(Count("Select RemindFlag, RemindDate from Reminder"), 0);
    EXPECT_EQ(Count("Select ScanPeriode from Reminder"), 0);
    Execute("Insert Into Reminder (RemindFlag, RemindDate, Scanperiode) values (1, '20.11.2026', 'm')");
    EXPECT_EQ(Rows("Select RemindFlag, Scanperiode from Reminder"), Texts{"1|m"});
}

TEST_F(SchemaTest, EveryLookupGoesByAnIndex) {
    for (const char* statement :
         {"Select File_id from Files where Path = 'x'", "Select Path from Files where Path = 'x'",
          "Select Drive_id from Files where Drive_id = 1", "Select Genre_id from Files where Genre_id = 1",
          "Select Album_id from Files where Album_id = 1", "Select Title_id from Titel where Name = 'x'",
          "Select Inter_id from Interpret where Interpret = 'x'",
          "Select Album_id from Albums where Name = 'x'", "Select Drive_id from Drive where Drive = 'x'",
          "Select Quality_id from Quality where Quality = 128",
          "Select Extension_Id from Extensions where Extension = 'mp3'",
          "Select Genre_id from Genres where Genre = 'x'",
          "Select Category_id from Categories where Category = 'x'",
          "Select File_id from FileCategories where Parent = 'x' and Filename = 'y' and [Position] = 1",
          "Select File_id from FileCategories where Category_id = 1 order by [Position]",
          "Select Parent, [Position] from FileCategories where File_id = 1",
          "Select Cover_id from Covers where Album_id = 1 and Interpret_id = 1",
          // One statement over two lines. NOLINTNEXTLINE(bugprone-suspicious-missing-comma)
          "Select I.Interpret, T.Name from (Files F inner join Interpret I on F.Inter_id = I.Inter_id) "
          "inner join Titel T on T.Title_id = F.Title_id where Path = 'x'",
          "Select Max(Title_id) from Titel", "Select Max(Inter_id) from Interpret"}) {
        const std::string plan = PlanText(statement);
        EXPECT_EQ(plan.find("SCAN"), std::string::npos) << statement << "\n" << plan;
        EXPECT_EQ(plan.find("TEMP B-TREE"), std::string::npos) << statement << "\n" << plan;
    }
}

TEST_F(SchemaTest, EveryListStartsAtFiles) {
    for (const char* rest :
         {"", " and I.Interpret Like '%x%'", " and (I.Interpret Like '%x%' or T.Name Like '%x%')",
          " order by T.Name ASC", " order by Q.Quality DESC", " order by F.Length ASC",
          " order by E.Extension ASC", " order by F.SizeInBytes ASC",
          " and T.Name Like '%x%' order by T.Name ASC",
          " and I.Interpret Like '%x%' order by F.SizeInBytes ASC"}) {
        EXPECT_EQ(Plan(List(rest)).at(0), "SCAN F") << rest;
    }
}

TEST_F(SchemaTest, AFilteredListStartsAtTheFilter) {
    EXPECT_EQ(Plan(List(" and F.Genre_id = 17 order by I.Interpret ASC")).at(0),
              "SEARCH F USING INDEX FilesByGenre (Genre_id=?)");
    EXPECT_EQ(Plan(List(" and F.Album_id = 17 order by I.Interpret ASC")).at(0),
              "SEARCH F USING INDEX FilesByAlbum (Album_id=?)");
    EXPECT_EQ(Plan(List(" and F.Drive_id = 17 order by T.Name ASC")).at(0),
              "SEARCH F USING INDEX FilesByDrive (Drive_id=?)");
    EXPECT_EQ(Plan(List(" and File_id in (5, 17, 30000) order by I.Interpret ASC")).at(0),
              "SEARCH F USING INTEGER PRIMARY KEY (rowid=?)");
}

TEST_F(SchemaTest, TheKeysOfAWholeLibraryAreCountedAlongTheirIndexes) {
    for (const char* column : {"Inter_id", "Title_id", "Album_id"}) {
        const std::string plan = PlanText("Select Count(distinct " + std::string(column) + ") from Files");
        EXPECT_NE(plan.find("SCAN Files USING COVERING INDEX"), std::string::npos) << plan;
        EXPECT_EQ(plan.find("TEMP B-TREE"), std::string::npos) << plan;
    }
}

TEST_F(SchemaTest, TheCountersStartAtFilesAndNeedNoTable) {
    for (const char* column : {"inter_id", "Title_id", "Album_id"}) {
        const std::string statement = List("");
        const std::string plan =
            PlanText("Select Count(Seperate) from (select distinct F." + std::string(column) +
                     " As Seperate" + statement.substr(statement.find(" from ")) + " )");
        EXPECT_NE(plan.find("SCAN F USING"), std::string::npos) << plan;
        EXPECT_EQ(plan.find("TEMP B-TREE"), std::string::npos) << plan;
    }
}

} // namespace
} // namespace quavernet::test
