// The library engine as the logic sees it: one connection that takes literal statements, and read-only
// static recordsets. The adapter lives in adapters/sqlite; every part of the logic sends statements.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quavernet::ADODB {

class Connection;

/// One value of the current row. A view: valid until its recordset is closed or destroyed.
class Field {
public:
    /// What a value is stored as: the engine keeps types by value, not by column.
    enum class Kind : std::uint8_t { Null, Integer, Real, Text };

    /// Null; the others are made by RowBlock::At, the text as a view of its rows.
    Field() = default;
    explicit Field(std::int64_t value) : m_kind(Kind::Integer), m_integer(value) {}
    explicit Field(double value) : m_kind(Kind::Real), m_real(value) {}
    explicit Field(std::string_view value) : m_kind(Kind::Text), m_text(value) {}

    /// Which of the four it is; Text, View and the numbers below work for each.
    Kind GetKind() const { return m_kind; }

    /// Whether there is no value: a column that nobody has written, the sum of no rows.
    bool IsNull() const { return m_kind == Kind::Null; }

    /// The value as text, the way a statement would spell it: integers in decimal, reals in the shortest
    /// form with a point, dates in the regional short form, null as the empty text.
    std::string Text() const;

    /// Text without a copy; empty unless GetKind() is Text.
    std::string_view View() const { return m_text; }

    /// The value as a number; texts are read up to the first character that is no part of one (0 if none),
    /// null is 0.
    double Number() const;

    /// The same as a whole number: exact for integers, else rounded to the nearest.
    std::int64_t Integer() const;

private:
    Kind m_kind = Kind::Null;
    std::int64_t m_integer = 0;
    double m_real = 0;
    std::string_view m_text;
};

/// The rows of one statement, read to their end: row-major cells and texts, both in pieces, so that a row
/// costs no heap allocation of its own and no piece is ever copied for the sake of the next.
class RowBlock {
public:
    /// No rows yet, each of so many columns.
    explicit RowBlock(std::size_t columns = 0) : m_columns(columns) {}

    /// Adds a null as the next cell. Cells come in the order of the columns, then of the next row's.
    void AddNull();
    void AddInteger(std::int64_t value); ///< Adds a whole number as the next cell.
    void AddReal(double value);          ///< Adds a number that may have a fraction as the next cell.

    /// Adds a copy of a text, below 4 GiB, as the next cell. All texts together may take any size.
    void AddText(std::string_view value);

    /// The width of each row; 0 for a statement that gives no rows at all.
    std::size_t Columns() const { return m_columns; }

    /// Rows that are complete.
    std::size_t Rows() const { return m_columns == 0 ? 0 : m_count / m_columns; }

    /// One value, both counted from 0; there is no check that it exists. Valid until a cell is added or the
    /// block goes. Reading the rows in turn costs no wait for memory, in whatever order they were added.
    Field At(std::size_t row, std::size_t column) const;

    /// From now on row n is the one that was added as order[n]. `order` names every row once.
    void Arrange(std::vector<std::uint32_t> order) { m_order = std::move(order); }

private:
    /// A value that a cell has no room for.
    struct WideValue {
        std::uint64_t
            payload;        ///< Integer or real by its bits; text: its piece above, its offset below 32 bits.
        std::uint32_t size; ///< Length of a text in bytes.
        Field::Kind kind;
    };
    /// Its highest two bits tell what the others are; see ADODB.cpp.
    using Cell = std::uint64_t;

    static constexpr std::size_t CellsInPiece = 16384;

    const Cell& CellAt(std::size_t added, std::size_t column) const {
        const std::size_t cell = added * m_columns + column;
        return m_cells[cell / CellsInPiece][cell % CellsInPiece];
    }
    void Add(Cell cell);
    void AddWide(const WideValue& value);
    Field WideAt(std::size_t index) const;
    std::string_view TextAt(std::uint64_t piece, std::uint64_t offset, std::uint64_t size) const {
        return {m_texts[piece].data() + offset, size};
    }

    std::size_t m_columns;
    std::size_t m_count = 0;                ///< Cells.
    std::vector<std::vector<Cell>> m_cells; ///< All but the last are full.
    std::vector<WideValue> m_wide;
    std::vector<std::string> m_texts;   ///< Each with the room that it was made with.
    std::vector<std::uint32_t> m_order; ///< Empty: as added.
};

/// A static, read-only recordset. Pattern of use: Open, test RecordCount, MoveFirst, loop until Eof with
/// MoveNext, read Fields by position, Close. A new object is made for each statement.
class Recordset {
public:
    /// Runs the statement and reads its rows to the end: what is written later never shows in them.
    /// Throws RuntimeError if the statement fails.
    void Open(std::string_view statement, Connection& activeConnection);

    /// As Open, for a caller that shows no more than the first `most` rows: it has no others.
    void OpenFirst(std::string_view statement, Connection& activeConnection, std::size_t most);

    /// Gives the rows up; fields that were read from them are void.
    void Close();

    /// Exact number of rows.
    long RecordCount() const { return static_cast<long>(m_rows.Rows()); }

    /// Whether the position is after the last row; at once if there are none.
    bool Eof() const { return m_position >= m_rows.Rows(); }

    void MoveFirst() { m_position = 0; } ///< To the first row, where the position is after Open.
    void MoveLast();                     ///< To the last row. Without rows Eof stays true.
    void MoveNext() { ++m_position; }    ///< To the next row; after the last one Eof becomes true.

    /// Field of the current row, counted from 0 in the order of the select list.
    /// Throws RuntimeError if there is no current row or no such field.
    Field Fields(std::size_t position) const;

private:
    RowBlock m_rows;
    std::size_t m_position = 0;
};

/// The one open library. Statements commit by themselves; a failing statement undoes only itself.
class Connection {
public:
    /// Commits what is gathered, as far as that still goes, and closes the library.
    virtual ~Connection() = default;

    /// Opens the library named by "...Data Source=" and its path in the connection string.
    /// Throws RuntimeError if the file is missing, damaged or no library; the file is then left untouched.
    virtual void Open(std::string_view connectionString) = 0;

    /// Runs an insert, update or delete. Throws RuntimeError if it fails.
    virtual void Execute(std::string_view statement) = 0;

    /// Runs a query and reads all rows. Throws RuntimeError if it fails.
    virtual RowBlock Query(std::string_view statement) = 0;

    /// As Query, but no more than the first `most` rows are read, which costs far less where a long table has
    /// to be sorted for them. Rows of one table that the statement's order leaves equal come by key.
    virtual RowBlock QueryFirst(std::string_view statement, std::size_t most) = 0;

    /// Brings statements gathered since the last commit to the file. Called before the program waits for
    /// its user, runs another program or ends. Throws RuntimeError if the file can't be written.
    virtual void Commit() = 0;

    /// Commits if it is time to, outside of a WriteLock. Called between the files and folders of a long
    /// run, which may be slow to read and need no statement: nobody shall wait meanwhile for what has been
    /// gathered, and no end shall take it back. Costs a look at the clock. Throws RuntimeError like Commit.
    virtual void CommitIfDue() {}

    /// Copies the library beside itself before a scan changes much of it; three copies are kept. Made once
    /// after each Open, and only if the run before had closed the file: a copy of doubtful content must not
    /// push out a sound one. Throws LibraryError if the library is damaged or not in its place any more,
    /// RuntimeError if the copy can't be made; the older copies then stay.
    virtual void Backup() {}

    /// A number that is another one when another program has changed the library in between; what this one
    /// writes leaves it as it is. Inside a WriteLock it stays. Throws RuntimeError if the library can't be
    /// read.
    virtual std::int64_t ChangesOfOthers() = 0;

    /// Begin and end of a WriteLock, which alone calls them, in pairs. LockWrites waits while another program
    /// writes, and throws RuntimeError if that takes too long or gathered statements can't be written.
    virtual void LockWrites() {}
    virtual void UnlockWrites() noexcept {} ///< See LockWrites.
};

/// While one lives, no other running program changes the library: what a statement has read still holds when
/// a later one writes. Each statement is in force by itself as ever, and a failure takes back none but its
/// own. They may lie in one another.
class WriteLock {
public:
    /// Waits while another program writes. Throws RuntimeError if that takes too long, or if gathered
    /// statements can't be written.
    explicit WriteLock(Connection& connection) : m_connection(connection) { m_connection.LockWrites(); }

    /// Others may write again from the next commit on: at the latest when gathered statements are due.
    ~WriteLock() { m_connection.UnlockWrites(); }
    WriteLock(const WriteLock&) = delete;
    WriteLock& operator=(const WriteLock&) = delete;

private:
    Connection& m_connection;
};

} // namespace quavernet::ADODB
