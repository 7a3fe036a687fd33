// The categories that an import has made so far, and which of them an entry of the exchange file belongs to.
// The import owns the one list of its run.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quavernet {

struct NewCategory {
    std::string Id;
    std::string Name;
};

class NewCategories {
public:
    void Add(NewCategory category);

    /// Number of categories.
    std::size_t Count() const { return m_categories.size(); }

    /// By number, from 1.
    const NewCategory& At(std::size_t number) const { return m_categories[number - 1]; }

    /// Number of the first one whose name contains the text, ASCII letters compared without regard to case;
    /// one more than there are if none does. The first search for a text takes a time that
    /// goes with the length of all names.
    std::size_t FirstWith(std::string_view part) const;

private:
    std::vector<NewCategory> m_categories;
    std::string m_names; ///< Each with a line end before it, in lower case: one search goes over all.
    std::vector<std::size_t> m_ends;                                ///< Of each name in m_names.
    mutable std::unordered_map<std::string, std::size_t> m_answers; ///< By what was searched; emptied by Add.
};

} // namespace quavernet
