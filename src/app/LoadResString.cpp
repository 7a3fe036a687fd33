#include "app/LoadResString.h"

#include "app/MainModule.h"
#include "app/Registry.h"

#include <algorithm>
#include <utility>

namespace quavernet {

std::optional<std::string_view> clsResources::GetResourceString(std::int32_t id) const {
    const Entry* entry = std::lower_bound(begin(), end(), id,
                                          [](const Entry& e, std::int32_t wanted) { return e.id < wanted; });
    if (entry == end() || entry->id != id) {
        return std::nullopt;
    }
    return entry->text;
}

std::string LoadResString(std::int32_t id) {
    return std::move(LoadResStrings({id}).front());
}

std::vector<std::string> LoadResStrings(std::initializer_list<std::int32_t> ids) {
    mainModule.Language = Setting("Language", "GER");
    const clsResources* resources = nullptr;
    if (mainModule.Language == "GER") {
        resources = &QuavernetGER;
        mainModule.HelpDocument = "Hilfe zum Quavernet.doc";
    } else if (mainModule.Language == "ENG") {
        resources = &QuavernetENG;
        mainModule.HelpDocument = "Help for Quavernet.doc";
    }
    std::vector<std::string> texts;
    texts.reserve(ids.size());
    for (const std::int32_t id : ids) {
        if (resources == nullptr) {
            texts.emplace_back("Error : No Local Data");
        } else if (const auto text = resources->GetResourceString(id)) {
            texts.emplace_back(*text);
        } else {
            texts.push_back("Not found:" + std::string(id < 0 ? "" : " ") + std::to_string(id));
        }
    }
    return texts;
}

} // namespace quavernet
