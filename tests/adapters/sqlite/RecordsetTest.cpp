#include "platform/ADODB.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

namespace quavernet::test {

namespace {

using ADODB::Field;

/// Answers every query with the same rows.
class GivenRows : public ADODB::Connection {
public:
    explicit GivenRows(ADODB::RowBlock rows) : m_rows(std::move(rows)) {}
    void Open(std::string_view) override {}
    void Execute(std::string_view) override {}
    ADODB::RowBlock Query(std::string_view) override { return m_rows; }
    ADODB::RowBlock QueryFirst(std::string_view, std::size_t) override { return m_rows; }
    void Commit() override {}
    std::int64_t ChangesOfOthers() override { return 0; }

private:
    ADODB::RowBlock m_rows;
};

ADODB::RowBlock TwoRows() {
    ADODB::RowBlock rows(4);
    rows.AddText("Äpfel");
    rows.AddInteger(-7);
    rows.AddReal(59.5);
    rows.AddNull();
    rows.AddText("");
    rows.AddInteger(9000000000);
    rows.AddReal(0.1);
    rows.AddText("12,5");
    return rows;
}

int ErrorOfField(const ADODB::Recordset& record, std::size_t position) {
    try {
        record.Fields(position);
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

} // namespace

TEST(FieldTest, ReadsAsTextTheWayAStatementSpellsIt) {
    const ADODB::RowBlock rows = TwoRows();
    EXPECT_EQ(rows.At(0, 0).Text(), "Äpfel");
    EXPECT_EQ(rows.At(0, 1).Text(), "-7");
    EXPECT_EQ(rows.At(0, 2).Text(), "59.5");
    EXPECT_EQ(rows.At(0, 3).Text(), "");
    EXPECT_EQ(rows.At(1, 0).Text(), "");
    EXPECT_EQ(rows.At(1, 1).Text(), "9000000000");
    EXPECT_EQ(rows.At(1, 2).Text(), "0.1");
    EXPECT_EQ(Field(215.0).Text(), "215");
}

TEST(FieldTest, OnlyANullIsNull) {
    const ADODB::RowBlock rows = TwoRows();
    EXPECT_TRUE(rows.At(0, 3).IsNull());
    EXPECT_FALSE(rows.At(1, 0).IsNull());
    EXPECT_FALSE(Field(std::int64_t{0}).IsNull());
    EXPECT_EQ(rows.At(1, 0).GetKind(), Field::Kind::Text);
}

TEST(FieldTest, ReadsAsANumber) {
    EXPECT_EQ(Field(std::int64_t{-7}).Number(), -7);
    EXPECT_EQ(Field(59.5).Number(), 59.5);
    EXPECT_EQ(Field().Number(), 0);
    EXPECT_EQ(Field("12.5x").Number(), 12.5);
    EXPECT_EQ(Field("12,5").Number(), 12);
    EXPECT_EQ(Field("x").Number(), 0);
    EXPECT_EQ(Field(std::int64_t{9007199254740993}).Integer(), 9007199254740993);
    EXPECT_EQ(Field(2.5).Integer(), 2);
    EXPECT_EQ(Field(3.5).Integer(), 4);
    EXPECT_EQ(Field("17").Integer(), 17);
    EXPECT_EQ(Field().Integer(), 0);
}

TEST(RecordsetTest, WalksItsRowsFromTheFirstToTheLast) {
    GivenRows connection(TwoRows());
    ADODB::Recordset record;
    record.Open("Select", connection);
    EXPECT_EQ(record.RecordCount(), 2);
    EXPECT_EQ(record.Fields(1).Text(), "-7");
    record.MoveLast();
    EXPECT_EQ(record.Fields(1).Text(), "9000000000");
    EXPECT_FALSE(record.Eof());
    record.MoveNext();
    EXPECT_TRUE(record.Eof());
    record.MoveFirst();
    EXPECT_EQ(record.Fields(0).Text(), "Äpfel");
    record.MoveNext();
    record.Open("Select", connection);
    EXPECT_EQ(record.Fields(0).Text(), "Äpfel");
}

TEST(RecordsetTest, WithoutACurrentRowOrSuchAFieldItFails) {
    GivenRows connection(TwoRows());
    ADODB::Recordset record;
    EXPECT_EQ(ErrorOfField(record, 0), 3021);
    record.Open("Select", connection);
    EXPECT_EQ(ErrorOfField(record, 3), 0);
    EXPECT_EQ(ErrorOfField(record, 4), 3265);
    record.Close();
    EXPECT_EQ(record.RecordCount(), 0);
    EXPECT_EQ(ErrorOfField(record, 0), 3021);
    GivenRows empty(ADODB::RowBlock(4));
    record.Open("Select", empty);
    EXPECT_TRUE(record.Eof());
    record.MoveLast();
    EXPECT_EQ(ErrorOfField(record, 0), 3021);
}

} // namespace quavernet::test
