#include "browser/SearchHistory.h"

#include "app/Registry.h"
#include "platform/CaseFold.h"

#include <algorithm>
#include <string_view>

namespace quavernet {

namespace {

constexpr const char* SettingName = "LastSearches";
constexpr char Separator = '\n';

std::string Joined(const std::vector<std::string>& searches) {
    std::string text;
    for (const std::string& search : searches) {
        text += text.empty() ? search : Separator + search;
    }
    return text;
}

} // namespace

// The setting may have been edited by hand: what the program would not have kept is left out.
std::vector<std::string> LastSearches() {
    const std::string stored = Setting(SettingName, "");
    std::vector<std::string> searches;
    std::string_view rest = stored;
    while (!rest.empty() && searches.size() < MostSearches) {
        const std::size_t end = std::min(rest.find(Separator), rest.size());
        if (end > 0) {
            searches.emplace_back(rest.substr(0, end));
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return searches;
}

void RememberSearch(const std::string& text) {
    if (text.empty() || text.find_first_of("\r\n") != std::string::npos) {
        return;
    }
    const std::vector<std::string> before = LastSearches();
    std::vector<std::string> searches = before;
    const std::string folded = FoldCase(std::string_view(text));
    std::erase_if(searches, [&folded](const std::string& search) {
        return FoldCase(std::string_view(search)) == folded;
    });
    searches.insert(searches.begin(), text);
    searches.resize(std::min(searches.size(), MostSearches));
    if (searches != before) {
        SaveSetting(SettingName, Joined(searches));
    }
}

} // namespace quavernet
