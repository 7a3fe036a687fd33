#include "adapters/sqlite/SkipUnchangedRows.h"

#include <algorithm>
#include <string_view>

namespace quavernet::sqlite {

namespace {

/// Reads a statement piece by piece; letters of the pieces compare in either case.
class Pieces {
public:
    explicit Pieces(std::string_view text) : m_rest(text) {}

    bool Take(std::string_view lower) {
        const bool matches = m_rest.size() >= lower.size() &&
                             std::equal(lower.begin(), lower.end(), m_rest.begin(), [](char wanted, char c) {
                                 return wanted == (c >= 'A' && c <= 'Z' ? c + 32 : c);
                             });
        if (matches) {
            m_rest.remove_prefix(lower.size());
        }
        return matches;
    }

    /// A plain name; empty if none stands here.
    std::string_view TakeName() {
        const auto end = std::find_if_not(m_rest.begin(), m_rest.end(), [](char c) {
            return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
        });
        const std::string_view name = m_rest.substr(0, static_cast<std::size_t>(end - m_rest.begin()));
        m_rest.remove_prefix(name.size());
        return name;
    }

    bool IsAtEnd() const { return m_rest.empty(); }

private:
    std::string_view m_rest;
};

} // namespace

std::string SkipUnchangedRows(const std::string& sql) {
    Pieces pieces(sql);
    if (!pieces.Take("update ") || pieces.TakeName().empty() || !pieces.Take(" set ")) {
        return sql;
    }
    std::string same;
    int parameter = 0;
    do {
        const std::string_view column = pieces.TakeName();
        if (column.empty() || !pieces.Take(" = ?")) {
            return sql;
        }
        same.append(same.empty() ? "" : " and ").append(column).append(" collate binary is ?");
        same.append(std::to_string(++parameter));
    } while (pieces.Take(", "));
    if (!pieces.Take(" where ") || pieces.TakeName().empty() || !pieces.Take(" = ?") || !pieces.IsAtEnd()) {
        return sql;
    }
    return sql + " and not (" + same + ")";
}

} // namespace quavernet::sqlite
