#include "adapters/sqlite/SkipUnchangedRows.h"

#include "platform/Ascii.h"

#include <algorithm>
#include <string_view>

namespace quavernet::sqlite {

namespace {

/// Reads a statement word by word, whatever blanks stand between the words.
class Words {
public:
    explicit Words(std::string_view text) : m_rest(text) { PassBlanks(); }

    /// A plain name; empty if none is here.
    std::string_view TakeName() {
        const auto end = std::find_if_not(m_rest.begin(), m_rest.end(), [](char c) {
            return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
        });
        const std::string_view name = m_rest.substr(0, static_cast<std::size_t>(end - m_rest.begin()));
        m_rest.remove_prefix(name.size());
        PassBlanks();
        return name;
    }

    bool TakeWord(std::string_view lower) { return EqualsIgnoringCase(TakeName(), lower); }

    bool TakeSign(char sign) {
        if (!m_rest.starts_with(sign)) {
            return false;
        }
        m_rest.remove_prefix(1);
        PassBlanks();
        return true;
    }

    bool IsAtEnd() const { return m_rest.empty(); }

private:
    void PassBlanks() { m_rest.remove_prefix(std::min(m_rest.find_first_not_of(' '), m_rest.size())); }

    std::string_view m_rest;
};

} // namespace

std::string SkipUnchangedRows(const std::string& sql) {
    Words words(sql);
    if (!words.TakeWord("update") || words.TakeName().empty() || !words.TakeWord("set")) {
        return sql;
    }
    std::string same;
    int parameter = 0;
    do {
        const std::string_view column = words.TakeName();
        if (column.empty() || !words.TakeSign('=') || !words.TakeSign('?')) {
            return sql;
        }
        same.append(same.empty() ? "" : " and ").append(column).append(" collate binary is ?");
        same.append(std::to_string(++parameter));
    } while (words.TakeSign(','));
    if (!words.TakeWord("where") || words.TakeName().empty() || !words.TakeSign('=') ||
        !words.TakeSign('?') || !words.IsAtEnd()) {
        return sql;
    }
    return sql + " and not (" + same + ")";
}

} // namespace quavernet::sqlite
