#include "adapters/sqlite/NewRowLookup.h"

#include "adapters/sqlite/Words.h"
#include "platform/Ascii.h"

#include <optional>

#include <sqlite3.h>

namespace quavernet::sqlite {

namespace {

struct Lookup {
    std::string_view key;
    std::string_view table;
    std::string_view column;
};

// "Select Key from Table where Column = ?"
std::optional<Lookup> TakeLookup(std::string_view sql) {
    Words words(sql);
    Lookup lookup;
    if (!words.TakeWord("select") || (lookup.key = words.TakeName()).empty() || !words.TakeWord("from") ||
        (lookup.table = words.TakeName()).empty() || !words.TakeWord("where") ||
        (lookup.column = words.TakeName()).empty() || !words.TakeSign('=') || !words.TakeSign('?') ||
        !words.IsAtEnd()) {
        return std::nullopt;
    }
    return lookup;
}

// "Insert into Table (Column) values (?)"
bool IsInsertOf(std::string_view sql, const Lookup& lookup) {
    Words words(sql);
    return words.TakeWord("insert") && words.TakeWord("into") &&
           EqualsIgnoringCase(words.TakeName(), lookup.table) && words.TakeSign('(') &&
           EqualsIgnoringCase(words.TakeName(), lookup.column) && words.TakeSign(')') &&
           words.TakeWord("values") && words.TakeSign('(') && words.TakeSign('?') && words.TakeSign(')') &&
           words.IsAtEnd();
}

} // namespace

void NewRowLookup::Attach(sqlite3* database) {
    m_database = database;
    m_pairs.clear();
    Forget();
}

void NewRowLookup::NoteMiss(std::string_view statement, const StatementText& text, TableSet reads) {
    Forget();
    if (text.Literals().size() != 1 || text.Literals().front().isDate) {
        return;
    }
    m_statement = statement;
    m_sql = text.Sql();
    m_literal = text.Literals().front();
    m_value = m_literal.kind == Literal::Kind::Text ? text.Text(m_literal) : std::string_view();
    m_reads = reads;
}

bool NewRowLookup::IsInsertOfMiss(const StatementText& text, StatementCache& cache) {
    m_answered.swap(m_statement);
    Forget();
    if (m_answered.empty() || text.Literals().size() != 1) {
        return false;
    }
    const Literal& literal = text.Literals().front();
    if (literal.isDate || literal.kind != m_literal.kind || literal.integer != m_literal.integer ||
        (literal.kind == Literal::Kind::Text && text.Text(literal) != m_value)) {
        return false;
    }
    const std::string pair = std::to_string(static_cast<int>(literal.kind)) + m_sql + ";" + text.Sql();
    const auto found = m_pairs.find(pair);
    return found != m_pairs.end()
               ? found->second
               : m_pairs.emplace(pair, Belong(text.Sql(), literal.kind, cache)).first->second;
}

// Column names are compared without regard to case, as the engine does it.
bool NewRowLookup::Belong(const std::string& insert, Literal::Kind kind, StatementCache& cache) const {
    const auto lookup = TakeLookup(m_sql);
    return lookup && IsInsertOf(insert, *lookup) &&
           EqualsIgnoringCase(cache.RowKeyOf(std::string(lookup->table)), lookup->key) &&
           KeepsAsItIs(std::string(lookup->table), std::string(lookup->column), kind);
}

// Whether the column stores such a value without a change, so that it is found again by it: a fraction in a
// text column, or a text of digits in one of numbers, is stored as something else.
bool NewRowLookup::KeepsAsItIs(const std::string& table, const std::string& column,
                               Literal::Kind kind) const {
    const char* declared = nullptr;
    if (sqlite3_table_column_metadata(m_database, "main", table.c_str(), column.c_str(), &declared, nullptr,
                                      nullptr, nullptr, nullptr) != SQLITE_OK ||
        declared == nullptr) {
        return false;
    }
    return EqualsIgnoringCase(declared, kind == Literal::Kind::Text      ? "text"
                                        : kind == Literal::Kind::Integer ? "integer"
                                                                         : "no such type");
}

} // namespace quavernet::sqlite
