#include "adapters/sqlite/LikeOperator.h"

#include <array>
#include <cstddef>

#include <sqlite3.h>

#include "adapters/sqlite/LetterTables.h"
#include "adapters/sqlite/SqliteError.h"

namespace quavernet::sqlite {

namespace {

constexpr char32_t anyRun = 0x200000;
constexpr char32_t anyOne = 0x200001;

const std::array<unsigned char, 128>& AsciiFolds() {
    static const std::array<unsigned char, 128> folds = [] {
        std::array<unsigned char, 128> result{};
        for (char32_t c = 0; c < 128; ++c) {
            result[c] = static_cast<unsigned char>(FoldCase(c));
        }
        return result;
    }();
    return folds;
}

std::string_view TextOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {text, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

void DeletePattern(void* pattern) {
    delete static_cast<LikePattern*>(pattern);
}

// like(pattern, text) and like(pattern, text, escape): the pattern comes first.
void Like(sqlite3_context* context, int count, sqlite3_value** values) {
    for (int i = 0; i < count; ++i) {
        if (sqlite3_value_type(values[i]) == SQLITE_NULL) {
            return;
        }
    }
    const auto* pattern = static_cast<const LikePattern*>(sqlite3_get_auxdata(context, 0));
    if (pattern == nullptr) {
        char32_t escape = 0;
        if (count == 3) {
            const std::string_view text = TextOf(values[2]);
            std::size_t end = 0;
            escape = text.empty() ? 0 : NextCodePoint(text, end);
            if (end == 0 || end != text.size()) {
                sqlite3_result_error(context, "ESCAPE expression must be a single character", -1);
                return;
            }
        }
        const LikePattern fresh(TextOf(values[0]), escape);
        sqlite3_result_int(context, fresh.Matches(TextOf(values[1])));
        sqlite3_set_auxdata(context, 0, new LikePattern(fresh), DeletePattern);
        return;
    }
    sqlite3_result_int(context, pattern->Matches(TextOf(values[1])));
}

} // namespace

LikePattern::LikePattern(std::string_view pattern, char32_t escape) {
    for (std::size_t i = 0; i < pattern.size();) {
        const char32_t c = NextCodePoint(pattern, i);
        if (escape != 0 && c == escape && i < pattern.size()) {
            m_pattern += FoldCase(NextCodePoint(pattern, i));
        } else if (c == U'%') {
            m_pattern += anyRun;
        } else {
            m_pattern += c == U'_' ? anyOne : FoldCase(c);
        }
    }
}

bool LikePattern::Matches(std::string_view text) const {
    static const std::array<unsigned char, 128>& folds = AsciiFolds();
    const char32_t* next = m_pattern.data();
    const char32_t* const end = next + m_pattern.size();
    const char32_t* retryPattern = nullptr; // After the last "%" met; going back to that one is enough.
    std::size_t retryText = 0;
    for (std::size_t i = 0; i < text.size();) {
        if (next != end && *next == anyRun) {
            retryPattern = ++next;
            retryText = i;
            if (next == end) {
                return true;
            }
            continue;
        }
        // A search goes over every character of every text: nearly all of them are ASCII.
        const auto byte = static_cast<unsigned char>(text[i]);
        char32_t c = 0;
        if (byte < 0x80) {
            c = folds[byte];
            ++i;
        } else {
            c = FoldCase(NextCodePoint(text, i));
        }
        if (next != end && (*next == c || *next == anyOne)) {
            ++next;
            continue;
        }
        if (retryPattern == nullptr) {
            return false;
        }
        if (static_cast<unsigned char>(text[retryText]) < 0x80) {
            ++retryText;
        } else {
            NextCodePoint(text, retryText);
        }
        i = retryText;
        next = retryPattern;
    }
    while (next != end && *next == anyRun) {
        ++next;
    }
    return next == end;
}

void RegisterLikeOperator(sqlite3* database) {
    for (const int count : {2, 3}) {
        Check(database, sqlite3_create_function_v2(database, "like", count,
                                                   SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                                                   nullptr, Like, nullptr, nullptr, nullptr));
    }
}

} // namespace quavernet::sqlite
