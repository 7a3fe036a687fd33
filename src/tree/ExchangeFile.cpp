#include "tree/ExchangeFile.h"

#include "app/TextHelpers.h"

#include <charconv>
#include <cstdint>

namespace quavernet {

namespace {

bool IsWholeNumber(std::string_view text) {
    std::int32_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

} // namespace

ExchangeSection ExchangeSections::Of(std::string_view line) {
    if (line.empty()) {
        return ExchangeSection::None;
    }
    if (line.find('#') == std::string_view::npos) {
        return m_section;
    }
    if (ContainsIgnoringCase(line, CategoriesLine)) {
        m_section = ExchangeSection::Categories;
    }
    if (ContainsIgnoringCase(line, FilesLine)) {
        m_section = ExchangeSection::Files;
    }
    return ExchangeSection::None;
}

std::optional<ExchangeEntry> SplitEntry(std::string_view line) {
    constexpr std::size_t None = std::string_view::npos;
    const std::size_t first = line.find(',');
    const std::size_t second = first == None ? None : line.find(',', first + 1);
    const std::size_t last = line.rfind(',');
    if (second == None || last == second || !IsWholeNumber(Trim(line.substr(0, first)))) {
        return std::nullopt;
    }
    return ExchangeEntry{line.substr(0, first), line.substr(first + 1, second - first - 1),
                         line.substr(second + 1, last - second - 1), line.substr(last + 1)};
}

std::string EntryLine(const ExchangeEntry& entry) {
    std::string line;
    for (const std::string_view field : {entry.Position, entry.Parent, entry.Filename}) {
        line.append(field) += ',';
    }
    return line.append(entry.Path) + '\n';
}

} // namespace quavernet
