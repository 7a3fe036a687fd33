// Sorting a result outside of the engine: the order must be the engine's own.
#include "adapters/sqlite/RowOrder.h"

#include "adapters/sqlite/OrderClause.h"
#include "support/TestLibrary.h"
#include "support/Texts.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace quavernet::test {
namespace {

using sqlite::TakeOrderClause;
const std::string unfiltered =
    "Select F.Path, F.SizeInBytes, T.Name, I.Interpret, Q.Quality, F.File_id, F.Length, "
    "F.Name, E.Extension from Files F, Titel T, Interpret I, Quality Q, Extensions E "
    "where F.Title_id = T.Title_id and F.Inter_id = I.Inter_id and "
    "Q.Quality_id = F.Quality_Id and F.Extension_id = E.Extension_id";

/// What the program adds to each order of the list.
const std::string ties = ", I.Interpret, T.Name, F.File_id";

class RowOrderTest : public LibraryTest {
protected:
    int Chance(int below) { return static_cast<int>(m_chance() % static_cast<unsigned>(below)); }

    // Short texts out of few pieces: many of them are equal but for case or accents, or in their beginning.
    std::string RandomText() {
        static constexpr const char* pieces[] = {
            "a", "A", "ä",  "Ä",    "b",  "ß", "s",  "Z", "0",    "9", " ",      "!", "~", "_", "¡",
            "“", "Ω", "日", "\xff", "\t", "é", "''", ".", "the ", "[", "wordy ", "{", "`", "€", "\xC3"};
        std::string text;
        for (int count = Chance(12); count > 0; --count) {
            text += pieces[Chance(static_cast<int>(std::size(pieces)))];
        }
        return text;
    }
    std::string TextValue() { return Chance(20) == 0 ? "null" : "'" + RandomText() + "'"; }
    std::string NumberValue() {
        switch (Chance(10)) {
        case 0:
            return "null";
        case 1:
            return std::to_string(Chance(40)) + ".5";
        case 2:
            return std::to_string(9007199254740990 + Chance(6));
        case 3:
            return "9007199254740992.5";
        default:
            return std::to_string(Chance(40));
        }
    }

    void FillLibrary(int files) {
        Execute("Insert into Extensions (Extension_id, Extension) values (40, 'MP3')");
        for (int key = 100; key < 160; ++key) {
            const std::string start = " values (" + std::to_string(key) + ", ";
            Execute("Insert into Titel (Title_id, Name)" + start + TextValue() + ")");
            Execute("Insert into Interpret (Inter_id, Interpret)" + start + TextValue() + ")");
            Execute("Insert into Quality (Quality_id, Quality)" + start + NumberValue() + ")");
        }
        for (int file = 0; file < files; ++file) {
            const auto key = [this] { return std::to_string(100 + Chance(60)); };
            Execute(
                "Insert into Files (Title_id, Inter_id, Quality_id, Extension_id, Name, Path, SizeInBytes, "
                "Length) values (" +
                key() + ", " + key() + ", " + key() + ", " +
                (Chance(4) == 0 ? "40" : std::to_string(1 + Chance(3))) + ", 'n', '/" + std::to_string(file) +
                "', " + NumberValue() + ", " + NumberValue() + ")");
        }
    }

    std::mt19937 m_chance{20};
};

TEST_F(RowOrderTest, EachOrderOfTheListIsTheEnginesOwnWithTiesByPerformerTitleAndKey) {
    FillLibrary(400);
    for (const char* column :
         {"I.Interpret", "T.Name", "Q.Quality", "F.Length", "E.Extension", "F.SizeInBytes"}) {
        for (const char* direction : {"ASC", "DESC"}) {
            for (const char* filter :
                 {"", " and F.File_id in (7,3,250)", " and F.File_id < 2", " and F.File_id < 0",
                  " and (I.Interpret Like '%a%' or T.Name Like '%a%')"}) {
                const std::string order = std::string(" order by ") + column + " " + direction;
                const std::string ours = unfiltered + filter + order;
                const std::string engines = ours + ties;
                ASSERT_TRUE(TakeOrderClause(ours)) << ours;
                ASSERT_TRUE(TakeOrderClause(ours)->ties) << ours;
                ASSERT_FALSE(TakeOrderClause(engines)) << engines;
                EXPECT_EQ(Rows(ours), Rows(engines)) << ours;
            }
        }
    }
}

// The order of ties is remembered from list to list.
TEST_F(RowOrderTest, TiesFollowTheLibraryAfterEachChangeOfItsRows) {
    FillLibrary(300);
    const auto other = OpenLibrary(libraryPath, services.regional);
    const auto expectEnginesOrder = [&](const std::string& after) {
        for (const char* order : {" order by I.Interpret ASC", " order by I.Interpret DESC",
                                  " order by E.Extension ASC", " order by F.Length DESC"}) {
            for (const char* filter : {" and F.File_id > 250", "", " and F.Inter_id = 120"}) {
                const std::string statement = unfiltered + filter + order;
                ASSERT_EQ(Rows(statement), Rows(statement + ties)) << after << statement;
            }
        }
    };
    const std::string ownChanges[] = {
        "Update Titel Set Name = 'zz' where Title_id < 130",
        "Update Interpret Set Interpret = 'aa' where Inter_id = 120",
        "Update Files Set Title_id = 150, Inter_id = 120 where File_id < 50",
        "Delete from Files where File_id < 20",
        "Insert into Files (Title_id, Inter_id, Quality_id, Extension_id, Name, Path, SizeInBytes, Length) "
        "values (101, 120, 101, 1, 'n', '/new', 1, 1)"};
    expectEnginesOrder("at first");
    for (const std::string& change : ownChanges) {
        Execute(change);
        expectEnginesOrder(change);
        mainModule.Connection->Commit();
        expectEnginesOrder("committed: " + change);
    }
    for (const char* change : {"Update Titel Set Name = 'b' where Title_id > 140",
                               "Update Files Set Title_id = 110, Inter_id = 125 where File_id > 200"}) {
        other->Execute(change);
        other->Commit();
        expectEnginesOrder(std::string("by another program: ") + change);
    }
}

TEST_F(RowOrderTest, HugeKeysAreNoReasonToUseMuchMemory) {
    FillLibrary(20);
    Execute("Update Files Set File_id = 9000000000000000000 where File_id = 3");
    Execute("Update Files Set File_id = -5 where File_id = 4");
    const std::string statement = unfiltered + " order by E.Extension ASC";
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(Rows(statement), Rows(statement + ties));
    }
}

TEST_F(RowOrderTest, WholeNumbersOfEverySizeAndSignAreInTheEnginesOrder) {
    for (int file = 0; file < 300; ++file) {
        const std::string size = file % 7 == 0 ? "-9223372036854775807"
                                 : file % 11 == 0
                                     ? "9223372036854775807"
                                     : std::to_string((Chance(9) - 4) * 1000003LL * Chance(5000));
        Execute("Insert into Files (Path, SizeInBytes) values ('/" + std::to_string(file) + "', " + size +
                ")");
    }
    for (const char* direction : {"ASC", "DESC"}) {
        const std::string order =
            std::string("Select F.Path, F.SizeInBytes from Files F order by F.SizeInBytes ") + direction;
        EXPECT_EQ(Rows(order), Rows(order + ", F.File_id"));
    }
}

TEST_F(RowOrderTest, TextsThatDifferFarAfterTheirBeginningAreInTheEnginesOrder) {
    const std::string pieces[] = {"abcdefgh", "ABCDEFGH", "äbcdefgh", "abc", "x", "Ω", "ω", "“", ""};
    for (int file = 0; file < 500; ++file) {
        std::string path;
        for (int count = 0; count < 4; ++count) {
            path += pieces[Chance(static_cast<int>(std::size(pieces)))];
        }
        Execute("Insert into Files (Path, Name) values ('/" + std::to_string(file) + "', '" + path + "')");
    }
    for (const char* direction : {"ASC", "DESC"}) {
        const std::string order =
            std::string("Select F.Path, F.Name from Files F order by F.Name ") + direction;
        EXPECT_EQ(Rows(order), Rows(order + ", F.File_id"));
    }
}

TEST_F(RowOrderTest, WithoutItsOrderTheListStartsAtFilesAndFindsTheRestByKey) {
    for (const char* filter : {"", " and I.Interpret Like '%a%'", " and F.Drive_id = 1",
                               " and F.Genre_id = 1 and F.Album_id = 2"}) {
        const std::string statement = unfiltered + filter + " order by I.Interpret ASC";
        const auto taken = TakeOrderClause(statement);
        ASSERT_TRUE(taken);
        const Texts plan = Rows("explain query plan " + std::string(taken->unordered));
        ASSERT_EQ(plan.size(), 5u) << filter;
        EXPECT_TRUE(plan[0].find("SCAN F") != std::string::npos ||
                    plan[0].find("SEARCH F ") != std::string::npos)
            << plan[0];
        for (std::size_t step = 1; step < plan.size(); ++step) {
            EXPECT_NE(plan[step].find("USING INTEGER PRIMARY KEY (rowid=?)"), std::string::npos)
                << plan[step];
        }
    }
}

TEST_F(RowOrderTest, ADateColumnIsSortedAsItIsStoredAndNotAsItIsShown) {
    services.regional.shortDatePattern = "dd.MM.yyyy";
    mainModule.Connection = OpenLibrary(libraryPath, services.regional);
    Execute({"Insert into Files (Path, DateLastModified) values ('/a', '20.01.2026')",
             "Insert into Files (Path, DateLastModified) values ('/b', '03.11.2025')",
             "Insert into Files (Path, DateLastModified) values ('/c', '11.12.2024')"});
    EXPECT_EQ(Rows("Select F.Path, F.DateLastModified from Files F order by F.DateLastModified ASC"),
              (Texts{"/c|11.12.2024", "/b|03.11.2025", "/a|20.01.2026"}));
}

TEST(TakeOrderClauseTest, TakesTheLastWordsOfAPlainSelectOfQualifiedNames) {
    const std::string statement =
        "Select A.X, B.Y from A, B where A.Z = 'order by B.Y ASC' order by B.Y DESC";
    const auto taken = TakeOrderClause(statement);
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->unordered, "Select A.X, B.Y from A, B where A.Z = 'order by B.Y ASC'");
    EXPECT_EQ(taken->name, "Y");
    EXPECT_EQ(taken->column, 1u);
    EXPECT_TRUE(taken->descending);
    EXPECT_FALSE(TakeOrderClause("Select A.X from A order by A.X asc")->descending);
    EXPECT_FALSE(taken->ties);
    EXPECT_EQ(TakeOrderClause("Select T.Name, F.File_id, I.Interpret from T, F, I order by T.Name ASC")->ties,
              (sqlite::TieColumns{2, 0, 1}));
    EXPECT_FALSE(TakeOrderClause("Select T.Name, I.Interpret from T, I order by T.Name ASC")->ties);
}

TEST(TakeOrderClauseTest, LeavesEveryOtherStatementToTheEngine) {
    for (const char* statement :
         {"", "ASC", "Select A.X from A", "Select A.X from A order by A.X",
          "Select A.X from A order by X ASC", "Select X from A order by X ASC",
          "Select A.X from A order by A.Y ASC", "Select A.X from A order by A.Y, A.X ASC",
          "Select distinct A.X from A order by A.X ASC", "Select Count(A.X) from A order by A.X ASC",
          "Select * from A order by A.X ASC", "Select A.X from A group by A.X order by A.X ASC",
          "Delete from A order by A.X ASC", "Select A.X from A union select B.X from B order by A.X ASC",
          "Select A.X from (select A.X from A order by A.X DESC limit 3) A order by A.X ASC",
          "Select A.X from A where A.X = ' order by A.X ASC'", " order by A.X ASC",
          "Select A.X order by A.X ASC"}) {
        EXPECT_FALSE(TakeOrderClause(statement)) << statement;
    }
}

} // namespace
} // namespace quavernet::test
