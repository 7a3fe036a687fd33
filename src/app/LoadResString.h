// Texts by number in the language of the settings. Every text that a user reads comes from here.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quavernet {

/// The text of a number in the current language. The setting "Language" (default "GER") is read at each call,
/// so that a change takes effect at once. "Error : No Local Data" if it names no language that exists; "Not
/// found:" and the number, with a blank before it, if the language has no such text.
std::string LoadResString(std::int32_t id);

/// The same for several numbers, in their order; the setting is read once. For what is asked for every file.
std::vector<std::string> LoadResStrings(std::initializer_list<std::int32_t> ids);

/// The string table of one language.
class clsResources {
public:
    struct Entry {
        std::int32_t id;
        std::string_view text; ///< UTF-8
    };

    constexpr clsResources(const Entry* entries, std::size_t count) : m_entries(entries), m_count(count) {}

    std::optional<std::string_view> GetResourceString(std::int32_t id) const;
    const Entry* begin() const { return m_entries; }
    const Entry* end() const { return m_entries + m_count; }

private:
    const Entry* m_entries; ///< In ascending order of their ids.
    std::size_t m_count;
};

extern const clsResources QuavernetGER;
extern const clsResources QuavernetENG;

} // namespace quavernet
