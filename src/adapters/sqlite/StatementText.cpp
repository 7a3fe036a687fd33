#include "adapters/sqlite/StatementText.h"

#include <algorithm>
#include <array>
#include <charconv>

#include <sqlite3.h>

#include "adapters/sqlite/DateType.h"
#include "platform/Ascii.h"
#include "platform/RuntimeError.h"

namespace quavernet::sqlite {

namespace {

// Statements with more literals are lists of ids: each is its own, and keeps the rest of them as they stand.
constexpr std::size_t mostLifted = 64;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Looked up for nearly every character of every statement.
constexpr std::array<bool, 256> NameCharacters = [] {
    std::array<bool, 256> result{};
    for (std::size_t c = 0; c < result.size(); ++c) {
        result[c] = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
                    c == '$' || c >= 0x80;
    }
    return result;
}();

bool IsNameCharacter(char c) {
    return NameCharacters[static_cast<unsigned char>(c)];
}

} // namespace

class StatementText::Scanner {
public:
    Scanner(StatementText& target, std::string_view statement, const std::vector<std::string>& dateColumns,
            std::size_t maximumLiterals)
        : m_target(target), m_statement(statement), m_dateColumns(dateColumns),
          m_maximumLiterals(maximumLiterals) {}

    void Run() {
        if (m_statement.find('\0') != std::string_view::npos) {
            throw RuntimeError(SQLITE_ERROR, "Syntax error: a character of code 0 in the statement");
        }
        while (m_at < m_statement.size()) {
            const char c = m_statement[m_at];
            if (c == ' ') {
                ++m_at;
            } else if (c == '\'') {
                TakeText();
            } else if (c == '[') {
                TakeBrackets();
            } else if (c == '"' || c == '`') {
                Copy(EndOfQuoted(c));
            } else if (IsDigit(c)) {
                TakeNumber();
            } else if (IsNameCharacter(c)) {
                TakeName();
            } else {
                TakeSign(c);
            }
        }
        Flush();
    }

private:
    // The index after the closing quote, or the end of the statement if it is missing.
    std::size_t EndOfQuoted(char quote) const {
        const std::size_t close = m_statement.find(quote, m_at + 1);
        return close == std::string_view::npos ? m_statement.size() : close + 1;
    }

    // What stays as it is, is copied in one go when something else follows it.
    void Flush() {
        m_target.m_sql += m_statement.substr(m_copied, m_at - m_copied);
        m_copied = m_at;
    }

    void Replace(std::size_t end) {
        m_at = end;
        m_copied = end;
    }

    void Copy(std::size_t end) {
        m_at = end;
        m_lastSign = 0;
        m_comparesDate = false;
    }

    bool LiftsMore() const { return m_target.m_literals.size() < m_maximumLiterals; }

    void TakeText() {
        std::size_t end = m_at + 1;
        const std::size_t offset = m_target.m_texts.size();
        for (;; ++end) {
            const std::size_t quote = m_statement.find('\'', end);
            if (quote == std::string_view::npos) {
                Copy(m_statement.size()); // The engine names the open quote.
                return;
            }
            m_target.m_texts += m_statement.substr(end, quote - end);
            end = quote + 1;
            if (end == m_statement.size() || m_statement[end] != '\'') {
                break;
            }
            m_target.m_texts += '\'';
        }
        if (!LiftsMore() && !WritesDate()) {
            Copy(end);
            return;
        }
        Literal literal;
        literal.isDate = WritesDate();
        literal.offset = offset;
        literal.size = m_target.m_texts.size() - offset;
        Lift(literal, end);
    }

    bool WritesDate() const {
        return m_comparesDate ||
               (m_inValues && m_depth == 1 &&
                std::find(m_dateFields.begin(), m_dateFields.end(), m_field) != m_dateFields.end());
    }

    void TakeNumber() {
        std::size_t end = m_at;
        bool whole = true;
        while (end < m_statement.size() && (IsNameCharacter(m_statement[end]) || m_statement[end] == '.')) {
            whole = whole && IsDigit(m_statement[end]);
            ++end;
        }
        const char* const first = m_statement.data() + m_at;
        const char* const last = m_statement.data() + end;
        Literal literal;
        literal.kind = whole ? Literal::Kind::Integer : Literal::Kind::Real;
        const auto result = whole ? std::from_chars(first, last, literal.integer)
                                  : std::from_chars(first, last, literal.real, std::chars_format::fixed);
        // After "order by" and "group by" a number names a column.
        const bool isValue = m_lastSign == '=' || m_lastSign == '<' || m_lastSign == '>' ||
                             m_lastSign == '(' || m_lastSign == ',';
        if (LiftsMore() && isValue && !m_sorting && result.ec == std::errc() && result.ptr == last) {
            Lift(literal, end);
        } else {
            Copy(end);
        }
    }

    void Lift(const Literal& literal, std::size_t end) {
        m_target.m_literals.push_back(literal);
        Flush();
        m_target.m_sql += '?';
        Replace(end);
        m_lastSign = 0;
        m_comparesDate = false;
    }

    void TakeBrackets() {
        const std::size_t close = m_statement.find(']', m_at);
        const std::size_t end = close == std::string_view::npos ? m_statement.size() : close + 1;
        const std::string_view name = m_statement.substr(m_at, end - m_at);
        const std::size_t point = name.find('.');
        const bool rewrites = point != std::string_view::npos && close != std::string_view::npos;
        if (rewrites) {
            Flush();
            m_target.m_sql.append(name.substr(0, point)).append("].[").append(name.substr(point + 1));
            Replace(end);
        }
        const std::size_t start = rewrites ? point + 1 : 1;
        m_at = end;
        m_lastSign = 0;
        NoteName(name.substr(start, name.size() - start - 1));
    }

    void TakeName() {
        std::size_t end = m_at;
        while (end < m_statement.size() && IsNameCharacter(m_statement[end])) {
            ++end;
        }
        const std::string_view name = m_statement.substr(m_at, end - m_at);
        Copy(end);
        NoteName(name);
        if (EqualsIgnoringCase(name, "order") || EqualsIgnoringCase(name, "group")) {
            m_sorting = true;
        } else if (m_first) {
            m_isInsert = EqualsIgnoringCase(name, "insert");
        } else if (m_isInsert && EqualsIgnoringCase(name, "values")) {
            m_inValues = true;
        }
        m_first = false;
    }

    void NoteName(std::string_view name) {
        m_comparesDate = IsDateColumn(name, m_dateColumns);
        if (m_comparesDate && m_isInsert && !m_inValues && m_depth == 1) {
            m_dateFields.push_back(m_field);
        }
    }

    void TakeSign(char c) {
        const char next = m_at + 1 < m_statement.size() ? m_statement[m_at + 1] : '\0';
        if ((c == '-' && next == '-') || (c == '/' && next == '*')) {
            throw RuntimeError(SQLITE_ERROR, "Syntax error: a comment in the statement");
        }
        if (c == '?') {
            throw RuntimeError(SQLITE_ERROR, "No value given for one or more required parameters.");
        }
        if (c == '(') {
            ++m_depth;
            m_field = m_depth == 1 ? 0 : m_field;
        } else if (c == ')') {
            --m_depth;
        } else if (c == ',' && m_depth == 1) {
            ++m_field;
        }
        m_comparesDate = m_comparesDate && (c == '=' || c == '<' || c == '>');
        m_lastSign = c;
        ++m_at;
    }

    StatementText& m_target;
    std::string_view m_statement;
    const std::vector<std::string>& m_dateColumns;
    std::size_t m_maximumLiterals; ///< Literals after so many stay in place; dates are lifted all the same.
    std::size_t m_at = 0;
    std::size_t m_copied = 0; ///< So many bytes of the statement stand in the target, or their replacement.
    char m_lastSign = 0;      ///< Last character before here, if it was an operator, bracket or comma.
    bool m_first = true;
    bool m_sorting = false;
    bool m_isInsert = false;
    bool m_inValues = false;
    bool m_comparesDate = false;           ///< A date column, and at most comparison signs, stand before.
    int m_depth = 0;                       ///< Of round brackets.
    std::size_t m_field = 0;               ///< Commas since the outermost bracket opened.
    std::vector<std::size_t> m_dateFields; ///< Places of date columns in the column list of an insert.
};

void StatementText::Scan(std::string_view statement, const std::vector<std::string>& dateColumns) {
    ScanLifting(statement, dateColumns, mostLifted);
}

void StatementText::ScanKeepingLiterals(std::string_view statement,
                                        const std::vector<std::string>& dateColumns) {
    ScanLifting(statement, dateColumns, 0);
}

void StatementText::ScanLifting(std::string_view statement, const std::vector<std::string>& dateColumns,
                                std::size_t maximumLiterals) {
    m_sql.clear();
    m_texts.clear();
    m_literals.clear();
    Scanner(*this, statement, dateColumns, maximumLiterals).Run();
}

std::string_view StatementText::Text(const Literal& literal) const {
    return std::string_view(m_texts).substr(literal.offset, literal.size);
}

} // namespace quavernet::sqlite
