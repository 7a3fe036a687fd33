#include "adapters/sqlite/FirstRows.h"

#include "support/TestLibrary.h"
#include "support/Texts.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using sqlite::FirstRows;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(FirstRowsTest, AnOrderedQueryOfOneTableGetsTheKeyAsItsLastOrderAndALimit) {
    for (const char* query :
         {"Select Name, Hits from Files order by  Hits DESC, DateLastModified DESC",
          "select * from Files Order By Name", "SELECT File_id FROM Files ORDER BY File_id ASC"}) {
        EXPECT_EQ(FirstRows(query, 10), std::string(query) + ", rowid limit 10");
        EXPECT_EQ(FirstRows(query, 4096), std::string(query) + ", rowid limit 4096");
        EXPECT_EQ(FirstRows(query, 4097), std::string(query) + ", rowid");
    }
}

TEST(FirstRowsTest, EveryOtherStatementStaysAsItIs) {
    for (const char* statement :
         {"", "Select", "Select Name from Files", "Select Name from  order by Name",
          "Select Name from Files where Name = ' order by Name' order by Name",
          "Select F.Name from Files F order by F.Name", "Select Name from Files, Titel order by Name",
          "Select distinct Name from Files order by Name", "Select Max(Name) from Files order by Name",
          "Select Name from Files order by Name limit 3", "Select Name from Files order by lower(Name)",
          "Select Name from Files group by Name order by Name", "Delete from Files order by Name"}) {
        EXPECT_EQ(FirstRows(statement, 10), statement);
    }
}

class QueryFirstTest : public LibraryTest {
protected:
    QueryFirstTest() {
        for (const char* file : {"'a', 1", "'b', 2", "'c', 2", "'d', 1", "'e', 2"}) {
            Execute("Insert into Files (Name, Hits) values (" + std::string(file) + ")");
        }
    }

    Texts First(const std::string& statement, std::size_t most) {
        ADODB::Recordset record;
        Texts names;
        for (record.OpenFirst(statement, Connection(), most); !record.Eof(); record.MoveNext()) {
            names.push_back(record.Fields(0).Text());
        }
        return names;
    }
};

TEST_F(QueryFirstTest, GivesTheFirstRowsOfTheOrderAndEqualOnesByTheirKey) {
    const std::string query = "Select Name from Files order by Hits DESC";
    EXPECT_THAT(First(query, 4), ElementsAre("b", "c", "e", "a"));
    EXPECT_THAT(First(query, 5), ElementsAre("b", "c", "e", "a", "d"));
    EXPECT_THAT(First(query, 6), ElementsAre("b", "c", "e", "a", "d"));
    EXPECT_THAT(First(query, 5000), ElementsAre("b", "c", "e", "a", "d")); // Without a limit.
    EXPECT_THAT(First(query, 1), ElementsAre("b"));
    EXPECT_THAT(First(query, 0), IsEmpty());
}

TEST_F(QueryFirstTest, AnIndexOnTheOrderChangesNothing) {
    Execute("create index ByHits on Files (Hits, Name desc)");
    EXPECT_THAT(First("Select Name from Files order by Hits DESC", 4), ElementsAre("b", "c", "e", "a"));
}

TEST_F(QueryFirstTest, OfAQueryThatTakesNoLimitTheFirstRowsAreRead) {
    EXPECT_THAT(First("Select Name from Files", 2), ElementsAre("a", "b"));
    EXPECT_THAT(First("Select Name from Files where Hits = 2 order by Name DESC", 2), ElementsAre("e", "c"));
    EXPECT_THAT(First("Select Name from Files", 0), IsEmpty());
}

TEST_F(QueryFirstTest, SeesWhatWasWrittenJustBefore) {
    Execute("Update Files Set Hits = Hits + 1 where Name = 'd'");
    Execute("Update Files Set Hits = Hits + 2 where Name = 'd'");
    EXPECT_THAT(First("Select Name from Files order by Hits DESC", 2), ElementsAre("d", "b"));
}

TEST_F(QueryFirstTest, AStatementThatWritesOrFailsIsRefused) {
    EXPECT_THROW(First("Delete from Files", 2), RuntimeError);
    EXPECT_THROW(First("Delete from Files", 0), RuntimeError);
    EXPECT_THROW(First("Select Nothing from Files order by Hits", 2), RuntimeError);
    EXPECT_EQ(Value("Select Count(*) from Files"), "5");
}

} // namespace
} // namespace quavernet::test
