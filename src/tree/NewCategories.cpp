#include "tree/NewCategories.h"

#include "platform/Ascii.h"

#include <algorithm>
#include <utility>

namespace quavernet {

void NewCategories::Add(NewCategory category) {
    m_names += '\n' + LowerAscii(category.Name);
    m_ends.push_back(m_names.size());
    m_categories.push_back(std::move(category));
    m_answers.clear();
}

// Neither a name nor a part of a line holds a line end, so that no find goes from one name into the next.
std::size_t NewCategories::FirstWith(std::string_view part) const {
    const auto [answer, isNew] = m_answers.try_emplace(LowerAscii(part), 0);
    if (isNew) {
        const std::size_t found = part.empty() ? 0 : m_names.find(answer->first);
        const auto end = std::upper_bound(m_ends.begin(), m_ends.end(), found);
        answer->second = static_cast<std::size_t>(end - m_ends.begin()) + 1;
    }
    return answer->second;
}

} // namespace quavernet
