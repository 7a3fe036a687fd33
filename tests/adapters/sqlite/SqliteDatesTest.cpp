#include "adapters/sqlite/DateColumns.h"
#include "platform/RuntimeError.h"
#include "support/TestLibrary.h"
#include "support/Texts.h"

#include <fstream>

namespace quavernet::test {
namespace {

RegionalSettings American() {
    return {".", ",", "/", "M/d/yyyy", true};
}
RegionalSettings Iso() {
    return {".", "", "-", "yyyy-MM-dd", false};
}

class SqliteDatesTest : public LibraryTest {
protected:
    void OpenWith(const RegionalSettings& regional) {
        mainModule.Connection.reset();
        mainModule.Connection = OpenLibrary(libraryPath, regional);
    }
    void AddFile(const std::string& name, const std::string& date) {
        Execute("Insert into Files (Title_id, Name, DateLastModified, Drive_id) values (1, '" + name +
                "', '" + date + "', 1)");
    }
    // The text in the file; an expression is no date column.
    Texts Stored() { return Rows("Select DateLastModified || '' from Files Order By File_id"); }
    Texts Shown() { return Rows("Select DateLastModified from Files Order By File_id"); }
};

TEST_F(SqliteDatesTest, GermanTextsAreStoredInIsoFormAndShownInGerman) {
    AddFile("a", "20.11.2026");
    AddFile("b", "01.01.1900 00:00:00");
    AddFile("c", "1.2.2003 04:05:06");
    EXPECT_EQ(Stored(), (Texts{"2026-11-20", "1900-01-01", "2003-02-01 04:05:06"}));
    EXPECT_EQ(Shown(), (Texts{"20.11.2026", "01.01.1900", "01.02.2003 04:05:06"}));
}

TEST_F(SqliteDatesTest, AmericanTextsAreReadMonthFirst) {
    OpenWith(American());
    AddFile("a", "2/1/2003 2:03:22 PM");
    AddFile("b", "01.01.1900 00:00:00");
    AddFile("c", "20/11/2026");
    EXPECT_EQ(Stored(), (Texts{"2003-02-01 14:03:22", "1900-01-01", "2026-11-20"}));
    EXPECT_EQ(Shown(), (Texts{"2/1/2003 2:03:22 PM", "1/1/1900", "11/20/2026"}));
}

TEST_F(SqliteDatesTest, IsoSettingsReadAndShowIso) {
    OpenWith(Iso());
    AddFile("a", "2003-02-01 14:03:22");
    EXPECT_EQ(Stored(), Texts{"2003-02-01 14:03:22"});
    EXPECT_EQ(Shown(), Texts{"2003-02-01 14:03:22"});
}

TEST_F(SqliteDatesTest, ADateKeepsItsDayWhenTheSettingsChange) {
    AddFile("a", "03.04.2026");
    OpenWith(American());
    EXPECT_EQ(Shown(), Texts{"4/3/2026"});
    OpenWith(Iso());
    EXPECT_EQ(Shown(), Texts{"2026-04-03"});
}

TEST_F(SqliteDatesTest, UpdatesAndComparisonsTakeRegionalTexts) {
    AddFile("a", "20.11.2026");
    Execute("Update Files Set Name = '03.04.2026', DateLastModified = '03.04.2026', Drive_id = 2 where "
            "File_id = 1");
    EXPECT_EQ(Rows("Select Name, DateLastModified from Files where DateLastModified = '3.4.2026'"),
              Texts{"03.04.2026|03.04.2026"});
    EXPECT_EQ(Count("Select Name from Files where DateLastModified < '01.05.2026'"), 1);
    EXPECT_EQ(Count("Select Name from Files where DateLastModified > '01.05.2026'"), 0);
}

TEST_F(SqliteDatesTest, NewestFilesComeFirst) {
    AddFile("old", "31.12.1999");
    AddFile("newest", "01.02.2026 10:00:00");
    AddFile("new", "01.02.2026");
    AddFile("none", "");
    EXPECT_EQ(Rows("Select Name, DateLastModified, Path, File_id from Files order by DateLastModified DESC"),
              (Texts{"newest|01.02.2026 10:00:00||2", "new|01.02.2026||3", "old|31.12.1999||1", "none|||4"}));
}

TEST_F(SqliteDatesTest, TheReminderKeepsItsDate) {
    Execute("Insert Into Reminder (RemindFlag, RemindDate, Scanperiode) values (1, '20.11.2026', 'd')");
    EXPECT_EQ(Rows("Select RemindFlag, RemindDate from Reminder"), Texts{"1|20.11.2026"});
    Execute("Update Reminder Set RemindFlag = 0, RemindDate = '21.11.2026', ScanPeriode = 'w'");
    EXPECT_EQ(Rows("Select RemindFlag, ScanPeriode, RemindDate from Reminder"), Texts{"0|w|21.11.2026"});
    Execute("Update Reminder Set RemindDate = '22.11.2026'");
    EXPECT_EQ(Value("Select RemindDate || '' from Reminder"), "2026-11-22");
}

TEST_F(SqliteDatesTest, ATextThatIsNoDateFailsAndChangesNothing) {
    AddFile("a", "20.11.2026");
    for (const char* text : {"yesterday", "32.01.2026", "2026", "1.2"}) {
        try {
            AddFile("b", text);
            FAIL() << text << " was stored";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Description(), "Data type mismatch: '" + std::string(text) + "' is no date");
        }
        EXPECT_THROW(Execute("Update Files Set DateLastModified = '" + std::string(text) + "'"),
                     RuntimeError);
    }
    EXPECT_EQ(Shown(), Texts{"20.11.2026"});
}

TEST_F(SqliteDatesTest, NoDateStaysNoDate) {
    AddFile("a", "");
    Execute("Insert into Files (Name, DateLastModified) values ('b', Null)");
    const ADODB::RowBlock rows = Connection().Query("Select DateLastModified from Files Order By File_id");
    EXPECT_EQ(rows.At(0, 0).GetKind(), ADODB::Field::Kind::Text);
    EXPECT_EQ(rows.At(0, 0).Text(), "");
    EXPECT_TRUE(rows.At(1, 0).IsNull());
}

TEST_F(SqliteDatesTest, AStoredTextInAnotherFormIsShownAsItIs) {
    const RegionalSettings regional;
    EXPECT_EQ(sqlite::ShownDate("2026-11-20", regional), "20.11.2026");
    EXPECT_EQ(sqlite::ShownDate("2026-11-20 04:05:06", regional), "20.11.2026 04:05:06");
    for (const char* text :
         {"", "x", "2026-13-45", "2026-02-30", "2026/11/20", "20-11-2026", "2026-1-20x",
          "2026-11-20 25:00:00", "2026-11-20 04:05", "+026-11-20", "2026-11-20 aa:00:00"}) {
        EXPECT_EQ(sqlite::ShownDate(text, regional), text);
    }
}

TEST_F(SqliteDatesTest, ADateInATextColumnIsAText) {
    Execute("Insert into Titel (Name) values ('20.11.2026')");
    EXPECT_EQ(Value("Select Name from Titel where Name = '20.11.2026'"), "20.11.2026");
}

} // namespace
} // namespace quavernet::test
