#include "tree/NewCategories.h"

#include "platform/Ascii.h"

#include <algorithm>
#include <utility>

namespace quavernet {

void NewCategories::Add(NewCategory category) {
    m_names += '\n' + LowerAscii(category.Name);
    m_ends.push_back(m_names.size());
    m_categories.push_back(std::move(category));
    m_lastAnswer = 0;
}

// Neither a name nor a part of a line holds a line end, so that no find goes from one name into the next.
std::size_t NewCategories::FirstWith(std::string_view part) const {
    if (m_lastAnswer == 0 || part != m_lastPart) {
        m_lastPart = part;
        const std::size_t found = part.empty() ? 0 : m_names.find(LowerAscii(part));
        const auto end = std::upper_bound(m_ends.begin(), m_ends.end(), found);
        m_lastAnswer = static_cast<std::size_t>(end - m_ends.begin()) + 1;
    }
    return m_lastAnswer;
}

} // namespace quavernet
