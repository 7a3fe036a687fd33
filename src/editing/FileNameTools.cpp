#include "editing/FileNameTools.h"

#include "platform/Ascii.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quavernet {

namespace {

// No character of UTF-8 is found inside another one, so a search for its bytes finds it alone.
void ReplaceAll(std::string& text, std::string_view wanted, std::string_view with) {
    for (auto found = text.find(wanted); found != std::string::npos;
         found = text.find(wanted, found + with.size())) {
        text.replace(found, wanted.size(), with);
    }
}

} // namespace

std::string ChangeUmlauts(std::string name) {
    using Replacement = std::pair<std::string_view, std::string_view>;
    static constexpr std::array<Replacement, 6> Umlauts{{{"\u00e4", "ae"},
                                                         {"\u00c4", "Ae"},
                                                         {"\u00fc", "ue"},
                                                         {"\u00dc", "Ue"},
                                                         {"\u00f6", "oe"},
                                                         {"\u00d6", "Oe"}}};
    for (const auto& [umlaut, letters] : Umlauts) {
        ReplaceAll(name, umlaut, letters);
    }
    return name;
}

std::string RemoveNumbers(std::string name) {
    std::erase_if(name, [](char c) { return c >= '0' && c <= '9'; });
    if (name.size() >= 2 && EqualsIgnoringCase(std::string_view(name).substr(name.size() - 2), "mp")) {
        name += '3';
    }
    return name;
}

std::string RemoveBrackets(std::string_view name) {
    std::string kept;
    bool inside = false;
    for (const char c : name) {
        inside = inside || c == '(';
        if (!inside) {
            kept += c;
        }
        inside = inside && c != ')';
    }
    return kept;
}

std::string ReplaceUnderscores(std::string name) {
    std::replace(name.begin(), name.end(), '_', ' ');
    return name;
}

std::string FileExtension(std::string_view name) {
    return std::string(RightCharacters(name, 4));
}

std::string WithExtension(std::string text, std::string_view extension) {
    if (!text.ends_with(extension)) {
        text += extension;
    }
    return text;
}

} // namespace quavernet
