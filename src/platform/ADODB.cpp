#include "platform/ADODB.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>

namespace quavernet::ADODB {

namespace {

// A cell: what it is, then a whole number, or a text's piece, offset and size, or the index of a wide value.
// A list of 100,000 files has 900,000 of them.
constexpr std::uint64_t KindBits = std::uint64_t{3} << 62;
constexpr std::uint64_t ValueBits = ~KindBits;
constexpr std::uint64_t NullCell = 0;
constexpr std::uint64_t IntegerCell = std::uint64_t{1} << 62;
constexpr std::uint64_t TextCell = std::uint64_t{2} << 62;
constexpr std::uint64_t WideCell = KindBits;
constexpr int PieceBits = 26;
constexpr int OffsetBits = 18;
constexpr int SizeBits = 18;
constexpr std::int64_t LargestInteger = (std::int64_t{1} << 61) - 1;

} // namespace

std::string Field::Text() const {
    switch (m_kind) {
    case Kind::Null:
        return {};
    case Kind::Integer:
        return std::to_string(m_integer);
    case Kind::Real: {
        char buffer[32];
        const auto end = std::to_chars(buffer, buffer + sizeof buffer, m_real);
        return std::string(buffer, end.ptr);
    }
    case Kind::Text:
        break;
    }
    return std::string(m_text);
}

double Field::Number() const {
    switch (m_kind) {
    case Kind::Null:
        return 0;
    case Kind::Integer:
        return static_cast<double>(m_integer);
    case Kind::Real:
        return m_real;
    case Kind::Text:
        break;
    }
    double value = 0;
    std::from_chars(m_text.data(), m_text.data() + m_text.size(), value);
    return value;
}

std::int64_t Field::Integer() const {
    return m_kind == Kind::Integer ? m_integer : std::llrint(Number());
}

void RowBlock::Add(Cell cell) {
    if (m_count % CellsInPiece == 0) {
        m_cells.emplace_back();
        if (m_count > 0) {
            m_cells.back().reserve(CellsInPiece);
        }
    }
    m_cells.back().push_back(cell);
    ++m_count;
}

void RowBlock::AddWide(const WideValue& value) {
    Add(WideCell | m_wide.size());
    m_wide.push_back(value);
}

void RowBlock::AddNull() {
    Add(NullCell);
}

void RowBlock::AddInteger(std::int64_t value) {
    if (value >= -LargestInteger && value <= LargestInteger) {
        Add(IntegerCell | (std::bit_cast<std::uint64_t>(value) & ValueBits));
    } else {
        AddWide({std::bit_cast<std::uint64_t>(value), 0, Field::Kind::Integer});
    }
}

void RowBlock::AddReal(double value) {
    AddWide({std::bit_cast<std::uint64_t>(value), 0, Field::Kind::Real});
}

void RowBlock::AddText(std::string_view value) {
    if (m_texts.empty() || m_texts.back().capacity() - m_texts.back().size() < value.size()) {
        // Most statements give one short row, a list millions of letters.
        constexpr std::size_t LeastRoom = 64;
        constexpr std::size_t UsualRoom = std::size_t{256} * 1024;
        const std::size_t room =
            m_texts.empty() ? LeastRoom : std::min(UsualRoom, 4 * m_texts.back().capacity());
        m_texts.emplace_back();
        m_texts.back().reserve(std::max(room, value.size()));
    }
    const std::uint64_t piece = m_texts.size() - 1;
    const std::uint64_t offset = m_texts.back().size();
    if (value.size() >> SizeBits == 0 && offset >> OffsetBits == 0 && piece >> PieceBits == 0) {
        Add(TextCell | piece << (SizeBits + OffsetBits) | offset << SizeBits | value.size());
    } else {
        AddWide({piece << 32 | offset, static_cast<std::uint32_t>(value.size()), Field::Kind::Text});
    }
    m_texts.back().append(value);
}

Field RowBlock::At(std::size_t row, std::size_t column) const {
    // In the order of a column the rows lie far apart, and memory takes as long to answer as it takes to read
    // some others. As added, the processor sees by itself what comes next.
    constexpr std::size_t RowsAhead = 16;
    if (row + RowsAhead < m_order.size()) {
        __builtin_prefetch(&CellAt(m_order[row + RowsAhead], column));
    }
    const Cell cell = CellAt(m_order.empty() ? row : m_order[row], column);
    switch (cell & KindBits) {
    case IntegerCell:
        return Field(std::bit_cast<std::int64_t>(cell << 2) >> 2); // The sign comes back from the left.
    case TextCell:
        return Field(TextAt((cell & ValueBits) >> (SizeBits + OffsetBits),
                            cell >> SizeBits & ((1U << OffsetBits) - 1), cell & ((1U << SizeBits) - 1)));
    case WideCell:
        return WideAt(cell & ValueBits);
    default:
        return {};
    }
}

Field RowBlock::WideAt(std::size_t index) const {
    const WideValue& value = m_wide[index];
    switch (value.kind) {
    case Field::Kind::Integer:
        return Field(std::bit_cast<std::int64_t>(value.payload));
    case Field::Kind::Real:
        return Field(std::bit_cast<double>(value.payload));
    default:
        return Field(TextAt(value.payload >> 32, static_cast<std::uint32_t>(value.payload), value.size));
    }
}

void Recordset::Open(std::string_view statement, Connection& activeConnection) {
    m_rows = activeConnection.Query(statement);
    m_position = 0;
}

void Recordset::OpenFirst(std::string_view statement, Connection& activeConnection, std::size_t most) {
    m_rows = activeConnection.QueryFirst(statement, most);
    m_position = 0;
}

void Recordset::Close() {
    m_rows = RowBlock();
    m_position = 0;
}

void Recordset::MoveLast() {
    m_position = m_rows.Rows() == 0 ? 0 : m_rows.Rows() - 1;
}

Field Recordset::Fields(std::size_t position) const {
    if (Eof()) {
        throw RuntimeError(3021, "Either BOF or EOF is True, or the current record has been deleted.");
    }
    if (position >= m_rows.Columns()) {
        throw RuntimeError(3265, "Item cannot be found in the collection.");
    }
    return m_rows.At(m_position, position);
}

} // namespace quavernet::ADODB
