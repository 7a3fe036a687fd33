// Updates that change nothing write nothing; every other one writes as it is.
#include "adapters/sqlite/SkipUnchangedRows.h"

#include "support/TestLibrary.h"

#include <string>

#include <gtest/gtest.h>

namespace quavernet::test {
namespace {

using sqlite::SkipUnchangedRows;

TEST(SkipUnchangedRowsTest, AnUpdateOfOneRowIsNarrowedToAnotherValue) {
    EXPECT_EQ(SkipUnchangedRows("Update Files Set Name = ?, Length = ? where File_id = ?"),
              "Update Files Set Name = ?, Length = ? where File_id = ? and not "
              "(Name collate binary is ?1 and Length collate binary is ?2)");
}

TEST(SkipUnchangedRowsTest, BlanksBetweenTheWordsMakeNoDifference) {
    for (const char* statement : {"update Files set Name=?,Length=? where File_id=?",
                                  "Update Files set Name = ?,Length = ?  where Path = ? ",
                                  " UPDATE  Files  SET  Name = ? , Length =? WHERE  File_id = ?"}) {
        EXPECT_EQ(SkipUnchangedRows(statement),
                  std::string(statement) +
                      " and not (Name collate binary is ?1 and Length collate binary is ?2)");
    }
}

TEST(SkipUnchangedRowsTest, EveryOtherStatementStaysAsItIs) {
    for (const char* statement :
         {"", "Update Files Set Hits = Hits + ? where File_id = ?", "Update Files Set Name = ?",
          "Update Files Set [Name] = ? where File_id = ?", "Update Files Set Name = ? where A = ? or B = ?",
          "Update Files Set Name = ? where A = ? and B = ?", "Update Files Set Name = 'x' where A = 1",
          "Update or ignore Files Set Name = ? where A = ?", "Delete from Files where File_id = ?",
          "Update Files Set Name = ?, where File_id = ?", "UpdateFiles Set Name = ? where File_id = ?",
          "Update Files Set Name = ? where File_id = ?;", "Update Files Set Name = ? + ? where File_id = ?",
          "Update Files Set Name = ? whereFile_id = ?", "Update Files Set Name ? where File_id = ?"}) {
        EXPECT_EQ(SkipUnchangedRows(statement), statement);
    }
}

class GuardedUpdateTest : public LibraryTest {
protected:
    GuardedUpdateTest() {
        Execute("Insert into Files (Name, Path, SizeInBytes, DateLastModified, Length) values "
                "('Lied.mp3', '/Lied.mp3', 5, '20.11.2026', null)");
    }
    /// Rows that an update writes.
    int Written(const std::string& assignments) {
        const int before = std::stoi(Value("Select total_changes()"));
        Execute("Update Files Set " + assignments + " where File_id = 1");
        return std::stoi(Value("Select total_changes()")) - before;
    }
};

TEST_F(GuardedUpdateTest, TheSameValuesWriteNothing) {
    EXPECT_EQ(
        Written("Name = 'Lied.mp3', Path = '/Lied.mp3', SizeInBytes = 5, DateLastModified = '20.11.2026'"),
        0);
    EXPECT_EQ(Written("SizeInBytes = '5'"), 0) << "stored as the number that it is";
}

TEST_F(GuardedUpdateTest, OneOtherValueWritesTheRow) {
    EXPECT_EQ(Written("Name = 'Lied.mp3', Path = '/Lied.mp3', SizeInBytes = 6"), 1);
    EXPECT_EQ(Written("DateLastModified = '21.11.2026', SizeInBytes = 6"), 1);
    EXPECT_EQ(Written("Length = 0, SizeInBytes = 6"), 1) << "in place of null";
    EXPECT_EQ(Rows("Select Name, SizeInBytes, DateLastModified, Length from Files"),
              std::vector<std::string>{"Lied.mp3|6|21.11.2026|0"});
}

TEST_F(GuardedUpdateTest, ANewCaseIsANewValueThoughTheTextsCompareEqual) {
    EXPECT_EQ(Written("Name = 'LIED.mp3', Path = '/Lied.mp3'"), 1);
    EXPECT_EQ(Value("Select Name from Files"), "LIED.mp3");
}

} // namespace
} // namespace quavernet::test
