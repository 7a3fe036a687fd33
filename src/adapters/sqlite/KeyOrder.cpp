#include "adapters/sqlite/KeyOrder.h"

#include "platform/Ascii.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace quavernet::sqlite {

namespace {

constexpr std::string_view Query = "select ", TableWord = " from ", ConditionWord = " where ";

// Words that give the rows another order or another meaning. In a text that stands in the statement they are
// taken for words, too: such a query keeps the engine's order.
constexpr std::array<std::string_view, 6> OtherWords{" order ", " group ",     " limit ",
                                                     " union ", " intersect ", " except "};

bool IsTableName(std::string_view lower) {
    return !lower.empty() && std::all_of(lower.begin(), lower.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
    });
}

// A call in the list may be an aggregate, and "distinct" makes rows of several.
bool IsPlainList(std::string_view lower) {
    return lower.find('(') == std::string_view::npos && !lower.starts_with("distinct ");
}

} // namespace

std::string InKeyOrder(const std::string& sql) {
    const std::string lower = LowerAscii(sql);
    const std::string_view text = lower;
    const std::size_t from = text.find(TableWord);
    if (!text.starts_with(Query) || from == std::string_view::npos ||
        !IsPlainList(text.substr(Query.size(), from - Query.size()))) {
        return sql;
    }
    const std::string_view rest = text.substr(from + TableWord.size());
    const std::size_t end = std::min(rest.find(' '), rest.size());
    const std::string_view condition = rest.substr(end);
    const bool hasOther = std::any_of(OtherWords.begin(), OtherWords.end(), [&](std::string_view word) {
        return condition.find(word) != std::string_view::npos;
    });
    if (!IsTableName(rest.substr(0, end)) || hasOther ||
        !(condition.empty() || condition.starts_with(ConditionWord))) {
        return sql;
    }
    return sql + " order by rowid";
}

} // namespace quavernet::sqlite
