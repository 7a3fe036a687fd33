#include "app/StartFaults.h"

#include "app/TextHelpers.h"

#include <string_view>

namespace quavernet {

namespace {

constexpr std::size_t MostTold = 5;

std::string InBrackets(const RuntimeError& failure) {
    return " (" + std::to_string(failure.Number()) + " - " + failure.Description() + ")";
}

// Names of rows may be of any length, and all faults are told in one line.
std::string Shortened(std::string_view text) {
    constexpr std::size_t MostCharacters = 60;
    const std::string_view shown = LeftCharacters(text, MostCharacters);
    return std::string(shown) + (shown.size() < text.size() ? "..." : "");
}

} // namespace

void StartFaults::Note(const std::string& key, const std::string& name, const RuntimeError& failure) {
    m_told.emplace(key + InBrackets(failure), Shortened(name) + InBrackets(failure));
}

bool StartFaults::Knows(const std::string& key, const RuntimeError& failure) const {
    return m_told.contains(key + InBrackets(failure));
}

std::string StartFaults::Text(const std::string& heading) const {
    std::string text;
    std::size_t told = 0;
    for (const auto& [key, fault] : m_told) {
        if (told == MostTold) {
            return text + ", ...";
        }
        text += (told++ == 0 ? heading : ", ") + fault;
    }
    return text;
}

} // namespace quavernet
