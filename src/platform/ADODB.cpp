#include "platform/ADODB.h"

#include "platform/RuntimeError.h"

#include <bit>
#include <charconv>
#include <cmath>

namespace quavernet::ADODB {

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

void RowBlock::AddNull() {
    m_cells.push_back({0, 0, Field::Kind::Null});
}

void RowBlock::AddInteger(std::int64_t value) {
    m_cells.push_back({std::bit_cast<std::uint64_t>(value), 0, Field::Kind::Integer});
}

void RowBlock::AddReal(double value) {
    m_cells.push_back({std::bit_cast<std::uint64_t>(value), 0, Field::Kind::Real});
}

void RowBlock::AddText(std::string_view value) {
    m_cells.push_back({m_text.size(), static_cast<std::uint32_t>(value.size()), Field::Kind::Text});
    m_text.append(value);
}

Field RowBlock::At(std::size_t row, std::size_t column) const {
    // In the order of a column the rows lie far apart, and memory takes as long to answer as it takes to read
    // some others. As added, the processor sees by itself what comes next.
    constexpr std::size_t RowsAhead = 16;
    if (row + RowsAhead < m_order.size()) {
        __builtin_prefetch(&m_cells[m_order[row + RowsAhead] * m_columns + column]);
    }
    const std::size_t added = m_order.empty() ? row : m_order[row];
    const Cell& cell = m_cells[added * m_columns + column];
    switch (cell.kind) {
    case Field::Kind::Integer:
        return Field(std::bit_cast<std::int64_t>(cell.payload));
    case Field::Kind::Real:
        return Field(std::bit_cast<double>(cell.payload));
    case Field::Kind::Text:
        return Field(std::string_view(m_text).substr(cell.payload, cell.size));
    case Field::Kind::Null:
        break;
    }
    return {};
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
