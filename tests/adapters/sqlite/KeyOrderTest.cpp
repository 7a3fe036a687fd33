#include "adapters/sqlite/KeyOrder.h"

#include "support/QueryPlans.h"
#include "support/TestLibrary.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using sqlite::InKeyOrder;
using ::testing::ElementsAre;

TEST(InKeyOrderTest, AQueryOfOneTableGetsTheOrderOfItsKey) {
    for (const char* query :
         {"Select Category_id from Categories", "select Category from Categories",
          "Select * from Categories where Category = ?", "SELECT [Position], Parent FROM FileCategories",
          "Select File_id from FileCategories where FileName = ? and [Position] = 1 and Parent = ?",
          "Select Path from Files where File_id in (?,?) or Name Like ?"}) {
        EXPECT_EQ(InKeyOrder(query), std::string(query) + " order by rowid");
    }
}

TEST(InKeyOrderTest, EveryOtherStatementStaysAsItIs) {
    for (const char* statement : {"",
                                  "Select",
                                  "Select 1",
                                  "Select Category from Categories order By Category",
                                  "Select F.Name from Files F, Titel T where F.Title_id = T.Title_id",
                                  "Select F.Name from Files F",
                                  "Select Max(File_id) from Files",
                                  "Select Count(*) from Files where Name = ?",
                                  "Select distinct Parent from FileCategories",
                                  "Select Parent from FileCategories group by Parent",
                                  "Select Parent from FileCategories where File_id = ? Group By Parent",
                                  "Select Path from Files limit 1",
                                  "Select Path from Files where File_id = ? Limit 1",
                                  "Select Name from Files where File_id = ? union select Name from Titel",
                                  "Select Name from (Select Name from Files)",
                                  "Select name from pragma_table_info('Files')",
                                  "Delete from Files where File_id = ?",
                                  "Update Files Set Name = ? where File_id = ?",
                                  "Insert into Titel (Name) values (?)",
                                  "explain query plan Select Path from Files",
                                  "Select Path from Files;",
                                  "Select Path from Files where File_id = ? order by Path desc"}) {
        EXPECT_EQ(InKeyOrder(statement), statement);
    }
}

// Names and positions fall as the keys rise: a walk along an index would turn the rows round.
class RowsByKeyTest : public LibraryTest {
protected:
    RowsByKeyTest() {
        for (int id = 1; id <= 9; ++id) {
            const std::string number = std::to_string(10 - id);
            Execute("Insert into Categories (Category) values ('" + number + "')");
            Execute(
                "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (" +
                number + ", 1, " + number + ", 'Jazz', '" + number + "')");
            Execute("Insert into Files (Name, Path, Drive_id) values ('" + number + "', '/" + number + "', " +
                    number + ")");
        }
    }
};

TEST_F(RowsByKeyTest, RowsWithoutAnOrderComeByKeyWhateverIndexHoldsThem) {
    const auto falling = ElementsAre("9", "8", "7", "6", "5", "4", "3", "2", "1");
    EXPECT_THAT(Rows("Select Category from Categories"), falling);
    EXPECT_THAT(Rows("Select [Position] from FileCategories where Parent = 'Jazz'"), falling);
    EXPECT_THAT(Rows("Select [Position] from FileCategories where Parent = 'Jazz' and [Position] > 0"),
                falling);
    EXPECT_THAT(Rows("Select File_id from FileCategories"), falling);
    EXPECT_THAT(Rows("Select Drive_id from Files where Drive_id in (1,2,3,4,5,6,7,8,9)"), falling);
}

TEST_F(RowsByKeyTest, ANewIndexChangesNothing) {
    Execute("create index ByParent on FileCategories (Parent, Filename, [Position])");
    Execute("create index ByName on Categories (Category)");
    Execute("analyze");
    EXPECT_EQ(Rows("Select [Position] from FileCategories where Parent = 'Jazz'").front(), "9");
    EXPECT_EQ(Rows("Select Category from Categories").front(), "9");
    EXPECT_EQ(Rows("Select Category_id from Categories").back(), "9") << "the newest row comes last";
}

TEST_F(RowsByKeyTest, ALongListOfKeysIsReadByKeyToo) {
    std::string list = "9";
    for (int key = 1; key < 3000; ++key) {
        list += "," + std::to_string(key);
    }
    EXPECT_THAT(Rows("Select Drive_id from Files where Drive_id in (" + list + ")"),
                ElementsAre("9", "8", "7", "6", "5", "4", "3", "2", "1"));
}

TEST_F(RowsByKeyTest, OnlyTheEntriesOfACategoryAreSorted) {
    for (const char* query :
         {"Select Category_id from Categories", "Select Category from Categories",
          "Select [Position], Parent, Filename, File_id from FileCategories",
          "Select Category_id from Categories where Category = 'x'",
          "Select File_id from FileCategories where Parent = 'x' and Filename = 'y' and [Position] = 1",
          "Select File_id from FileCategories where [Position] = 1 and Parent = 'x'",
          "Select Parent, [Position] from FileCategories where File_id = 1",
          "Select Path from Files where File_id = 1", "Select File_id, Name from Files where Path = 'x'"}) {
        EXPECT_TRUE(ComesByKey(Connection(), query)) << query;
        EXPECT_FALSE(Sorts(Connection(), query)) << query;
    }
    EXPECT_TRUE(Sorts(Connection(), "Select File_id from FileCategories where Parent = 'x'"))
        << "found along the index, and few";
}

TEST_F(RowsByKeyTest, AReadAlongAnIndexIsSeen) {
    EXPECT_TRUE(ComesByKey(Connection(), "Select F.Path from Files F where F.File_id = 1"));
    EXPECT_FALSE(ComesByKey(Connection(), "Select F.Inter_id from Files F"));
    EXPECT_FALSE(ComesByKey(Connection(), "Select E.Parent from FileCategories E where E.Parent = 'Jazz'"));
    EXPECT_FALSE(ComesByKey(Connection(), "Select F.File_id from Files F where F.Drive_id > 1"));
}

} // namespace
} // namespace quavernet::test
