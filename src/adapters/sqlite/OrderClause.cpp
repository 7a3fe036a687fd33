#include "adapters/sqlite/OrderClause.h"

#include "platform/Ascii.h"

#include <algorithm>

namespace quavernet::sqlite {

namespace {

std::size_t FindLower(std::string_view text, std::string_view lower) {
    for (std::size_t at = 0; at + lower.size() <= text.size(); ++at) {
        if (EqualsIgnoringCase(text.substr(at, lower.size()), lower)) {
            return at;
        }
    }
    return std::string_view::npos;
}

bool IsQualifiedName(std::string_view text) {
    return std::count(text.begin(), text.end(), '.') == 1 &&
           std::all_of(text.begin(), text.end(), [](char c) {
               return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                      c == '_' || c == '.';
           });
}

// Words that give the rows after "from" another meaning than a plain join's.
bool IsPlainJoin(std::string_view statement) {
    return FindLower(statement, " group by ") == std::string_view::npos &&
           FindLower(statement, " union ") == std::string_view::npos &&
           FindLower(statement, " limit ") == std::string_view::npos;
}

std::optional<std::size_t> PlaceInList(std::string_view list, std::string_view name) {
    std::optional<std::size_t> place;
    for (std::size_t column = 0; !list.empty(); ++column) {
        const std::size_t comma = std::min(list.find(", "), list.size());
        const std::string_view item = list.substr(0, comma);
        if (!IsQualifiedName(item)) {
            return std::nullopt;
        }
        if (item == name && !place) {
            place = column;
        }
        list.remove_prefix(std::min(comma + 2, list.size()));
    }
    return place;
}

std::optional<TieColumns> Ties(std::string_view list) {
    const auto performer = PlaceInList(list, "I.Interpret");
    const auto title = PlaceInList(list, "T.Name");
    const auto file = PlaceInList(list, "F.File_id");
    if (!performer || !title || !file) {
        return std::nullopt;
    }
    return TieColumns{*performer, *title, *file};
}

} // namespace

std::optional<OrderedStatement> TakeOrderClause(std::string_view statement) {
    constexpr std::string_view Select = "select ", From = " from ", OrderBy = " order by ";
    const std::size_t blank = statement.rfind(' ');
    if (blank == std::string_view::npos || !EqualsIgnoringCase(statement.substr(0, Select.size()), Select)) {
        return std::nullopt;
    }
    OrderedStatement result;
    const std::string_view direction = statement.substr(blank + 1);
    result.descending = EqualsIgnoringCase(direction, "desc");
    if (!result.descending && !EqualsIgnoringCase(direction, "asc")) {
        return std::nullopt;
    }
    const std::string_view rest = statement.substr(0, blank);
    const std::string_view name = rest.substr(rest.rfind(' ') + 1);
    const std::string_view before = rest.substr(0, rest.size() - name.size());
    const std::size_t from = FindLower(before, From);
    if (!IsQualifiedName(name) || before.size() < OrderBy.size() || from == std::string_view::npos ||
        !EqualsIgnoringCase(before.substr(before.size() - OrderBy.size()), OrderBy)) {
        return std::nullopt;
    }
    result.unordered = before.substr(0, before.size() - OrderBy.size());
    const std::string_view list = before.substr(Select.size(), from - Select.size());
    const auto place = PlaceInList(list, name);
    if (!place || !IsPlainJoin(result.unordered)) {
        return std::nullopt;
    }
    result.name = name.substr(name.find('.') + 1);
    result.column = *place;
    result.ties = Ties(list);
    return result;
}

} // namespace quavernet::sqlite
