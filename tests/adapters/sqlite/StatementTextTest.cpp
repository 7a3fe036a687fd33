#include "adapters/sqlite/StatementText.h"

#include "platform/RuntimeError.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace quavernet::sqlite {
namespace {

using Texts = std::vector<std::string>;

class StatementTextTest : public ::testing::Test {
protected:
    std::string Scan(std::string_view statement) {
        text.Scan(statement, {"datelastmodified", "reminddate"});
        return text.Sql();
    }
    // Text literals in their order; dates with a leading "@".
    Texts Values() const {
        Texts values;
        for (const Literal& literal : text.Literals()) {
            if (literal.kind == Literal::Kind::Text) {
                values.push_back((literal.isDate ? "@" : "") + std::string(text.Text(literal)));
            } else if (literal.kind == Literal::Kind::Integer) {
                values.push_back(std::to_string(literal.integer));
            } else {
                values.push_back(std::to_string(literal.real));
            }
        }
        return values;
    }

    StatementText text;
};

TEST_F(StatementTextTest, AnAliasInsideTheBracketsIsSplitOff) {
    EXPECT_EQ(Scan("Select [FC.Position], [Position] from FileCategories FC Order By [FC.Position]"),
              "Select [FC].[Position], [Position] from FileCategories FC Order By [FC].[Position]");
}

TEST_F(StatementTextTest, BracketsInsideATextStayAsTheyAre) {
    EXPECT_EQ(Scan("Select 1 from Files where Name = 'Live [Vol.2] ''x'''"),
              "Select 1 from Files where Name = ?");
    EXPECT_EQ(Values(), Texts{"Live [Vol.2] 'x'"});
    text.ScanKeepingLiterals("Select '[A.B]', \"[C.D]\"", {});
    EXPECT_EQ(text.Sql(), "Select '[A.B]', \"[C.D]\"");
}

TEST_F(StatementTextTest, ValuesBecomeParametersAndNamesAndSortPlacesDoNot) {
    EXPECT_EQ(Scan("Select Q1 from T2 where A = 128 and B = 1.5 and C in (1, 2) Order By 1, 2"),
              "Select Q1 from T2 where A = ? and B = ? and C in (?, ?) Order By 1, 2");
    EXPECT_EQ(Values(), (Texts{"128", "1.500000", "1", "2"}));
    EXPECT_EQ(Scan("Select A, B from T Group By A, 2"), "Select A, B from T Group By A, 2");
    EXPECT_EQ(Scan("Update F set [Position] = [Position] - 1 where A = -5"),
              "Update F set [Position] = [Position] - 1 where A = -5");
    EXPECT_EQ(Scan("Select 1 where A = 99999999999999999999"), "Select 1 where A = 99999999999999999999");
}

TEST_F(StatementTextTest, LongListsKeepTheirValues) {
    std::string list = "0";
    for (int i = 1; i < 1000; ++i) {
        list += ", " + std::to_string(i);
    }
    Scan("Select File_id from Files where File_id in (" + list + ")");
    EXPECT_EQ(text.Literals().size(), 64u);
    EXPECT_NE(text.Sql().find("998, 999)"), std::string::npos);
}

TEST_F(StatementTextTest, DatesOfAnInsertAreFoundByTheirPlace) {
    Scan("Insert Into Files (Title_id, Name, DateLastModified, Drive_id) values (1,'01.02.2003', "
         "'04.05.2006', 2)");
    EXPECT_EQ(Values(), (Texts{"1", "01.02.2003", "@04.05.2006", "2"}));
    Scan("Insert Into Reminder (RemindFlag, RemindDate, Scanperiode) values (1, '04.05.2006', 'd')");
    EXPECT_EQ(Values(), (Texts{"1", "@04.05.2006", "d"}));
    Scan("Insert Into Files ([DateLastModified], Name) values ('1.2.2003', 'a'), ('2.2.2003', 'b')");
    EXPECT_EQ(Values(), (Texts{"@1.2.2003", "a", "@2.2.2003", "b"}));
}

TEST_F(StatementTextTest, DatesOfAnUpdateOrAComparisonAreFoundByTheirColumn) {
    Scan("Update Files set Name = '01.02.2003', DateLastModified = '04.05.2006', Drive_id = 1");
    EXPECT_EQ(Values(), (Texts{"01.02.2003", "@04.05.2006", "1"}));
    Scan("Select 1 from Files F where F.DATELASTMODIFIED >= '04.05.2006' and Name = 'x'");
    EXPECT_EQ(Values(), (Texts{"@04.05.2006", "x"}));
}

TEST_F(StatementTextTest, WhatWouldCutAStatementSilentlyIsRefused) {
    EXPECT_THROW(Scan(std::string_view("Select 1\0 from Files", 20)), RuntimeError);
    EXPECT_THROW(Scan("Delete from Files -- where File_id = 1"), RuntimeError);
    EXPECT_THROW(Scan("Delete from Files /* where File_id = 1"), RuntimeError);
    EXPECT_THROW(Scan(std::string_view("Select 'a\0b'", 12)), RuntimeError);
    EXPECT_EQ(Scan("Select 'a -- b /* c'"), "Select ?");
    EXPECT_EQ(Values(), Texts{"a -- b /* c"});
}

TEST_F(StatementTextTest, AParameterOfTheStatementsOwnIsRefused) {
    EXPECT_THROW(Scan("Select 1 from Files where Name = 'x' and Path = ?1"), RuntimeError);
    EXPECT_THROW(Scan("Select 1 from Files where Name = ?"), RuntimeError);
    EXPECT_EQ(Scan("Select '?1'"), "Select ?");
}

TEST_F(StatementTextTest, DatesAreConvertedEvenWhereOtherLiteralsStay) {
    text.ScanKeepingLiterals("Update Files set Name = 'x', DateLastModified = '04.05.2006' where File_id = 1",
                             {"datelastmodified"});
    EXPECT_EQ(text.Sql(), "Update Files set Name = 'x', DateLastModified = ? where File_id = 1");
    EXPECT_EQ(Values(), Texts{"@04.05.2006"});
}

TEST_F(StatementTextTest, UnfinishedQuotesAndBracketsDoNotRunOverTheEnd) {
    for (const char* statement :
         {"Select 'x", "Select 'x''", "Select [x", "Select [x.y", "Select \"x", "'", "["}) {
        EXPECT_EQ(Scan(statement), statement);
    }
}

} // namespace
} // namespace quavernet::sqlite
