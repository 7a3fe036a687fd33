// One statement of bare SQLite, prepared. The floors bind, step and read with it.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quavernet::bench {

class Statement {
public:
    Statement(sqlite3* database, std::string_view text) {
        if (sqlite3_prepare_v2(database, text.data(), static_cast<int>(text.size()), &m_statement, nullptr) !=
            SQLITE_OK) {
            throw std::runtime_error(std::string(sqlite3_errmsg(database)) + ": " + std::string(text));
        }
    }
    ~Statement() { sqlite3_finalize(m_statement); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    void Bind(int position, std::string_view text) {
        sqlite3_bind_text(m_statement, position, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
    }
    void Bind(int position, std::int64_t value) { sqlite3_bind_int64(m_statement, position, value); }

    /// True while there are rows.
    bool Step() {
        const int code = sqlite3_step(m_statement);
        if (code != SQLITE_ROW && code != SQLITE_DONE) {
            throw std::runtime_error(sqlite3_errmsg(sqlite3_db_handle(m_statement)));
        }
        return code == SQLITE_ROW;
    }
    void Run() {
        Step();
        sqlite3_reset(m_statement);
    }
    std::string Text(int column) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
        return text == nullptr ? std::string() : std::string(text);
    }
    std::int64_t Integer(int column) { return sqlite3_column_int64(m_statement, column); }
    sqlite3_stmt* Handle() { return m_statement; }
    void Reset() { sqlite3_reset(m_statement); }

private:
    sqlite3_stmt* m_statement = nullptr;
};

} // namespace quavernet::bench
