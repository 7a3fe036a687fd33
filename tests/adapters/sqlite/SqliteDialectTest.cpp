// The traits of the engine that the program's statements rest on, shown with these statements.
#include "library/SqlQuote.h"
#include "platform/RuntimeError.h"
#include "support/TestLibrary.h"
#include "support/Texts.h"

#include <random>

namespace quavernet::test {
namespace {

class SqliteDialectTest : public LibraryTest {
protected:
    SqliteDialectTest() {
        Execute({"Insert into Interpret (Interpret) values ('Die Ärzte')",
                 "Insert into Interpret (Interpret) values ('Abba')",
                 "Insert into Titel (Name) values ('Westerland')",
                 "Insert into Titel (Name) values ('Waterloo')", "Insert into Quality (Quality) values (128)",
                 "Insert into Quality (Quality) values (0)",
                 "Insert into Albums (Name) values ('Kein Album...')"});
        AddFile(1, 1, "Westerland.mp3", 1);
        AddFile(2, 2, "Waterloo.ogg", 2);
    }
    void AddFile(int title, int performer, const std::string& name, int quality) {
        Execute("Insert Into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, DateLastModified, Drive_id, "
                "Quality_id, Length, Extension_id, Genre_id, Album_id) values (" +
                std::to_string(title) + ", " + std::to_string(performer) + ",'" + name + "', '/music/" +
                name + "', 3145728, '20.11.2026', 1, " + std::to_string(quality) + ", 215, 1, 255, 1)");
    }
};

const std::string listFrom = " from Files F, Titel T, Interpret I, Quality Q, Extensions E";
const std::string listWhere = " where F.Title_id = T.Title_id and F.Inter_id = I.Inter_id and Q.Quality_id = "
                              "F.Quality_Id and F.Extension_id = E.Extension_id";

TEST_F(SqliteDialectTest, EqualityIgnoresCase) {
    EXPECT_EQ(Value("Select Inter_id from Interpret where Interpret = 'DIE ÄRZTE'"), "1");
    EXPECT_EQ(Value("Select Inter_id from Interpret where Interpret = 'Die Arzte'"), "no row");
    EXPECT_EQ(Value("Select File_id from Files where Path = '/MUSIC/waterloo.OGG'"), "2");
}

TEST_F(SqliteDialectTest, LikeIgnoresCaseAndTakesAnyRunOfCharacters) {
    EXPECT_EQ(Rows("Select I.Interpret from Interpret I where I.Interpret Like '%ÄRZ%'"), Texts{"Die Ärzte"});
    EXPECT_EQ(Rows("Select T.Name from Titel T where T.Name Like '%_E%o%'"), Texts{"Waterloo"});
    EXPECT_EQ(Count("Select T.Name from Titel T where T.Name Like '%%'"), 2);
    EXPECT_EQ(Count("Select T.Name from Titel T where T.Name Like '%[a-z]%'"), 0);
    EXPECT_EQ(Count("Select T.Name from Titel T where T.Name Like '%!%%' escape '!'"), 0);
}

TEST_F(SqliteDialectTest, TheTreesStatementReadsAnAliasInsideTheBrackets) {
    Execute({"Insert into Categories (Category) values ('Rock')",
             "Insert into FileCategories (File_id, Category_ID, Filename, [Position], Parent) values (1, 1, "
             "'Westerland.mp3', 2, 'Rock')",
             "Insert into FileCategories (File_id, Category_ID, Filename, [Position], Parent) values (2, 1, "
             "'Waterloo.ogg', 1, 'Rock')"});
    EXPECT_EQ(
        Rows("Select F.Name, C.Category, F.Path, F.File_id, [FC.Position], FC.FileCategory_id from Files F, "
             "Categories C, FileCategories FC  where F.File_id = FC.File_id and C.Category_id = "
             "FC.Category_id Order By [FC.Position]"),
        (Texts{"Waterloo.ogg|Rock|/music/Waterloo.ogg|2|1|2",
               "Westerland.mp3|Rock|/music/Westerland.mp3|1|2|1"}));
    EXPECT_EQ(Rows("Select Sum(F.Length), FC.Parent from Files F Inner Join FileCategories FC on F.File_id = "
                   "FC.File_id Group By FC.Parent"),
              Texts{"430|Rock"});
    Execute(
        "Update FileCategories set [Position] = [Position] - 1 where ([Position] > 1 and Parent = 'ROCK')");
    EXPECT_EQ(Rows("Select [Position] from FileCategories Order By FileCategory_id"), (Texts{"1", "1"}));
}

TEST_F(SqliteDialectTest, TheListsStatementTakesAliasesWithoutAs) {
    EXPECT_EQ(
        Rows("Select F.Path, F.SizeInBytes, T.Name, I.Interpret, Q.Quality, F.File_id, F.Length, F.Name, "
             "E.Extension" +
             listFrom + listWhere + " order by I.Interpret ASC"),
        (Texts{"/music/Waterloo.ogg|3145728|Waterloo|Abba|0|2|215|Waterloo.ogg|mp3",
               "/music/Westerland.mp3|3145728|Westerland|Die Ärzte|128|1|215|Westerland.mp3|mp3"}));
}

TEST_F(SqliteDialectTest, ADerivedTableCloses) {
    AddFile(1, 1, "again.mp3", 1);
    EXPECT_EQ(Value("Select Count(Seperate) from (select distinct F.inter_id As Seperate" + listFrom +
                    listWhere + " and (I.Interpret Like '%a%' or T.Name Like '%a%') )"),
              "2");
}

TEST_F(SqliteDialectTest, JoinsNestInBrackets) {
    EXPECT_EQ(
        Rows("Select I.Interpret, T.Name from (Files F inner join Interpret I on F.Inter_id = I.Inter_id) "
             "inner join Titel T on T.Title_id = F.Title_id where Path = '/music/Waterloo.ogg'"),
        Texts{"Abba|Waterloo"});
    EXPECT_EQ(
        Rows("Select distinct A.Name, A.Album_id, I.Interpret, I.Inter_id from (Albums A Inner Join Files F "
             "On A.Album_id = F.Album_id) Inner Join Interpret I On F.Inter_id = I.Inter_id Order By "
             "I.Interpret"),
        (Texts{"Kein Album...|1|Abba|2", "Kein Album...|1|Die Ärzte|1"}));
    EXPECT_EQ(
        Rows("Select Q.Quality, F.Length from Quality Q Inner Join Files F on Q.Quality_id = F.Quality_id "
             "where F.Path = '/music/Westerland.mp3'"),
        Texts{"128|215"});
}

TEST_F(SqliteDialectTest, ASelectionHoldsAScalarSubquery) {
    EXPECT_EQ(
        Value("Select Extension from Extensions where Extension_id = (Select Extension_id from Files where "
              "Path = '/music/Waterloo.ogg')"),
        "mp3");
}

TEST_F(SqliteDialectTest, OneStatementATextWithoutATerminator) {
    EXPECT_THROW(Execute("Delete from Files; Delete from Titel"), RuntimeError);
    EXPECT_THROW(Execute(""), RuntimeError);
    EXPECT_THROW(Execute("   "), RuntimeError);
    EXPECT_EQ(Value("Select Count(File_id) from Files;"), "2"); // One that comes all the same is passed over.
    EXPECT_EQ(Count("Select * from Files"), 2);
    EXPECT_EQ(Count("Select * from Titel"), 2);
}

TEST_F(SqliteDialectTest, AStarReadsAllColumnsAndTheCountIsExact) {
    ADODB::Recordset record;
    record.Open("Select * from Files", Connection());
    EXPECT_EQ(record.RecordCount(), 2);
    EXPECT_EQ(record.Fields(13).Text(), "0");
    EXPECT_THROW(record.Fields(14), RuntimeError);
}

TEST_F(SqliteDialectTest, OrderByTextPutsUmlautsBesideTheirBaseLetters) {
    Execute({"Insert into Interpret (Interpret) values ('Zorn')",
             "Insert into Interpret (Interpret) values ('Äbte')",
             "Insert into Interpret (Interpret) values ('abc')",
             "Insert into Interpret (Interpret) values ('2 Unlimited')",
             "Insert into Interpret (Interpret) values ('...And You')"});
    EXPECT_EQ(Rows("Select Interpret from Interpret Order By Interpret"),
              (Texts{"...And You", "2 Unlimited", "Abba", "abc", "Äbte", "Die Ärzte", "Zorn"}));
}

TEST_F(SqliteDialectTest, AnEmptyListFails) {
    EXPECT_THROW(Rows("Select F.Path" + listFrom + listWhere + " and File_id in ( order by T.Name ASC"),
                 RuntimeError);
    EXPECT_THROW(Execute("Delete from Files where File_id in ("), RuntimeError);
    EXPECT_EQ(Rows("Select F.File_id" + listFrom + listWhere + " and File_id in (2,1) order by T.Name DESC"),
              (Texts{"1", "2"}));
}

TEST_F(SqliteDialectTest, AListOfAHundredThousandIdsWorks) {
    std::string list = "1";
    for (int id = 2; id <= 100000; ++id) {
        list += "," + std::to_string(id);
    }
    EXPECT_EQ(Count("Select F.File_id" + listFrom + listWhere + " and File_id in (" + list + ")"), 2);
}

TEST_F(SqliteDialectTest, NamesAreMatchedWithoutRegardToCase) {
    EXPECT_EQ(Value("Select SIZEINBYTES from FILES where FILE_ID = 1"), "3145728");
    EXPECT_EQ(Value("Select Extension_Id from Extensions where Extension = 'ogg'"), "3");
}

TEST_F(SqliteDialectTest, ATextInDoubleQuotesIsNoText) {
    EXPECT_THROW(Rows("Select File_id from Files where Name = \"Waterloo.ogg\""), RuntimeError);
}

TEST_F(SqliteDialectTest, AMissingValueFails) {
    EXPECT_THROW(Rows("Select Quality_id from Quality where Quality = "), RuntimeError);
    EXPECT_THROW(Execute("Insert Into Quality (Quality) values ()"), RuntimeError);
    EXPECT_THROW(Rows("Select Quality_id from Quality where Quality = ?"), RuntimeError);
    EXPECT_THROW(Rows("Select Quality_id from Quality where Quality = abc"), RuntimeError);
    EXPECT_THROW(Execute("Insert Into Quality (Quality) values (VBR)"), RuntimeError);
}

TEST_F(SqliteDialectTest, AFailureCarriesTheEnginesCodeAndTextForTheStatementAsSent) {
    try {
        Execute("Update Files set Nonsense = 17 whre File_id = 1");
        FAIL() << "the statement succeeded";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 1);
        EXPECT_EQ(error.Description(), "near \"whre\": syntax error");
    }
}

TEST_F(SqliteDialectTest, AFailingStatementUndoesOnlyItself) {
    Execute("Create unique index Only on Titel (Name)");
    Execute("Insert into Titel (Name) values ('new')");
    EXPECT_THROW(Execute("Insert into Titel (Name) select 'x' || Title_id from Titel union all select 'NEW'"),
                 RuntimeError);
    Execute("Insert into Titel (Name) values ('behind')");
    Connection().Commit();
    EXPECT_EQ(Rows("Select Name from Titel Order By Title_id"),
              (Texts{"Westerland", "Waterloo", "new", "behind"}));
}

TEST_F(SqliteDialectTest, AHostileTitleIsATitle) {
    const std::string title = "'); Drop table Files; --";
    Execute("Insert into Titel (Name) values ('" + SqlQuote(title) + "')");
    EXPECT_EQ(Value("Select Name from Titel where Name = '" + SqlQuote(title) + "'"), title);
    EXPECT_EQ(Count("Select * from Files"), 2);
}

TEST_F(SqliteDialectTest, AnUnquotedHostileTextFailsAndChangesNothing) {
    EXPECT_THROW(Execute("Insert into Categories (Category) values ('x'); Drop table Files; --')"),
                 RuntimeError);
    EXPECT_THROW(Execute("Insert into Categories (Category) values ('O'Neill')"), RuntimeError);
    EXPECT_EQ(Count("Select * from Categories"), 0);
    EXPECT_EQ(Count("Select * from Files"), 2);
}

TEST_F(SqliteDialectTest, ATitleWithAnApostropheIsStoredFoundAndShownWithOne) {
    Execute("Insert into Titel (Name) values ('" + SqlQuote("Don't Stop") + "')");
    EXPECT_EQ(Value("Select Name from Titel where Name = '" + SqlQuote("don't stop") + "'"), "Don't Stop");
}

TEST_F(SqliteDialectTest, NumbersAndTextsOfTheSameSpellingStayWhatTheyAre) {
    Execute("Insert into Titel (Name) values ('1999')");
    EXPECT_EQ(Value("Select Title_id from Titel where Name = '1999'"), "3");
    EXPECT_EQ(Connection().Query("Select Name from Titel where Title_id = 3").At(0, 0).GetKind(),
              ADODB::Field::Kind::Text);
    EXPECT_EQ(Connection().Query("Select Length from Files").At(0, 0).GetKind(), ADODB::Field::Kind::Integer);
}

TEST_F(SqliteDialectTest, ABytesOnlyPathIsFoundAgain) {
    Execute("Insert into Files (Path) values ('/music/\xE4\xFF.mp3')");
    EXPECT_EQ(Value("Select Path from Files where Path = '/music/\xE4\xFF.mp3'"), "/music/\xE4\xFF.mp3");
    EXPECT_EQ(Value("Select Path from Files where Path = '/music/ä\xFF.mp3'"), "no row");
}

TEST_F(SqliteDialectTest, ARecordsetDoesNotSeeLaterDeletes) {
    ADODB::Recordset record;
    record.Open("Select Path, File_id from Files", Connection());
    Execute("Delete from Files");
    EXPECT_EQ(record.RecordCount(), 2);
    EXPECT_EQ(record.Fields(0).Text(), "/music/Westerland.mp3");
}

TEST_F(SqliteDialectTest, AWritingStatementIsNoRecordset) {
    EXPECT_THROW(Rows("Delete from Files"), RuntimeError);
    EXPECT_EQ(Count("Select * from Files"), 2);
}

TEST_F(SqliteDialectTest, TablesWithoutASortAreReadInTheirOwnOrder) {
    for (const char* name : {"zz", "Ä", "mm", "b", "0"}) {
        Execute("Insert into Titel (Name) values ('" + std::string(name) + "')");
        Execute("Insert into Interpret (Interpret) values ('" + std::string(name) + "')");
        Execute("Insert into Albums (Name) values ('" + std::string(name) + "')");
        Execute("Insert into Drive (Drive) values ('" + std::string(name) + "')");
        Execute("Insert into Categories (Category) values ('" + std::string(name) + "')");
    }
    EXPECT_EQ(Rows("Select Title_id from Titel"), (Texts{"1", "2", "3", "4", "5", "6", "7"}));
    EXPECT_EQ(Rows("Select Inter_id from Interpret"), (Texts{"1", "2", "3", "4", "5", "6", "7"}));
    EXPECT_EQ(Rows("Select Album_id from Albums"), (Texts{"1", "2", "3", "4", "5", "6"}));
    EXPECT_EQ(Rows("Select Drive, Drive_id from Drive"), (Texts{"zz|1", "Ä|2", "mm|3", "b|4", "0|5"}));
    Execute("Update Files Set Path = '/zzz' where File_id = 1");
    EXPECT_EQ(Rows("Select Path, File_id from Files"), (Texts{"/zzz|1", "/music/Waterloo.ogg|2"}));
    EXPECT_EQ(Rows("Select Category from Categories"), (Texts{"zz", "Ä", "mm", "b", "0"}));
}

TEST_F(SqliteDialectTest, AClosedConnectionFails) {
    const auto connection = CreateSqliteConnection(services.regional);
    EXPECT_THROW(connection->Query("Select 1"), RuntimeError);
    EXPECT_THROW(connection->Execute("Delete from Files"), RuntimeError);
    EXPECT_NO_THROW(connection->Commit());
}

TEST_F(SqliteDialectTest, EveryTextComesBackAsItWasQuoted) {
    std::mt19937 random(17);
    const std::string alphabet = "'\"[].;-/*%_?:@#ab1 \\\xC3\xA4\xFF`,()=";
    for (int round = 1; round <= 2000; ++round) {
        std::string text;
        for (auto i = random() % 20; i > 0; --i) {
            text += alphabet[random() % alphabet.size()];
        }
        Execute("Update Titel Set Name = '" + SqlQuote(text) + "' where Title_id = 1");
        ASSERT_EQ(Value("Select Name from Titel where Title_id = 1"), text);
        ASSERT_EQ(Value("Select '" + SqlQuote(text) + "'"), text);
        ASSERT_EQ(Count("Select Name from Titel where Name = '" + SqlQuote(text) + "'"), 1) << text;
    }
}

TEST_F(SqliteDialectTest, AnAlbumOutlivesItsLastFileButNoLongerCountsAsUsed) {
    Execute("Delete from Files where Album_id = 1");
    EXPECT_EQ(Count("Select Album_id from Files where Album_id = 1"), 0);
    EXPECT_EQ(Rows("Select Name, Album_id from Albums Order By Name"), Texts{"Kein Album...|1"});
}

TEST_F(SqliteDialectTest, APerformerDifferingOnlyInCaseIsTheExistingOne) {
    EXPECT_EQ(Value("Select Inter_id from Interpret where Interpret = 'ABBA'"), "2");
    EXPECT_EQ(Value("Select Interpret from Interpret where Inter_id = 2"), "Abba");
}

} // namespace
} // namespace quavernet::test
