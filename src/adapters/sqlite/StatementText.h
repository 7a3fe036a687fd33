// The one rewriting between the program's statements and the engine: "[A.B]" becomes "[A].[B]", and literals
// become parameters, so that statements that differ only in their values share one prepared form. Our own
// scanner, since the engine offers none: it prepares a text as it stands, and has no word for "[A.B]".
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quavernet::sqlite {

struct Literal {
    enum class Kind : std::uint8_t { Text, Integer, Real };

    Kind kind = Kind::Text;
    bool isDate = false; ///< Written to a date column, or compared with one.
    std::int64_t integer = 0;
    double real = 0;
    std::size_t offset = 0; ///< Of a text: where StatementText::Text() finds it, unquoted,
    std::size_t size = 0;   ///< and its bytes.
};

/// One statement, scanned. Reused from statement to statement to save allocations.
class StatementText {
public:
    /// Scans a statement. `dateColumns` are names in lower case. Throws RuntimeError for what would change
    /// the statement silently when it is outside of quotes: an embedded NUL or a comment cuts it, a
    /// parameter of its own would take the value of a literal.
    void Scan(std::string_view statement, const std::vector<std::string>& dateColumns);

    /// The same statement with its literals in place, but for the dates, which have to be converted.
    void ScanKeepingLiterals(std::string_view statement, const std::vector<std::string>& dateColumns);

    const std::string& Sql() const { return m_sql; }
    const std::vector<Literal>& Literals() const { return m_literals; }
    std::string_view Text(const Literal& literal) const;

private:
    class Scanner;

    void ScanLifting(std::string_view statement, const std::vector<std::string>& dateColumns,
                     std::size_t maximumLiterals);

    std::string m_sql;
    std::string m_texts; ///< Text literals, unquoted, one after the other.
    std::vector<Literal> m_literals;
};

} // namespace quavernet::sqlite
