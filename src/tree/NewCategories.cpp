#include "tree/NewCategories.h"

#include "platform/CaseFold.h"

#include <algorithm>
#include <utility>

namespace quavernet {

namespace {

// A text below this length is searched as fast as its index; a longer one gets its index after so many
// searches.
constexpr std::size_t LongText = std::size_t{4} << 10;
constexpr std::size_t FewSearches = 32;
constexpr std::size_t LongestIndexed = std::size_t{1} << 30;

} // namespace

void NewCategories::Add(NewCategory category) {
    Block block;
    block.Text = '\n' + FoldCase(category.Name);
    block.Ends.push_back(block.Text.size());
    m_blocks.push_back(std::move(block));
    JoinLastBlocks();
    m_categories.push_back(std::move(category));
    m_answers.clear();
}

// Each block is at least twice as long as the next one: there are few, and a name moves to another one
// seldom, so that names that come between the searches don't cost all the indexes.
void NewCategories::JoinLastBlocks() {
    while (m_blocks.size() > 1 && m_blocks.rbegin()[1].Text.size() < 2 * m_blocks.back().Text.size()) {
        const Block last = std::move(m_blocks.back());
        m_blocks.pop_back();
        Block& joined = m_blocks.back();
        std::transform(last.Ends.begin(), last.Ends.end(), std::back_inserter(joined.Ends),
                       [offset = joined.Text.size()](std::size_t end) { return end + offset; });
        joined.Index.reset();
        joined.Searches = 0;
        joined.Text += last.Text;
    }
}

// Neither a name nor a part of a line holds a line end, so that no find goes from one name into the next.
std::optional<std::size_t> NewCategories::FirstIn(Block& block, const std::string& part) {
    const std::size_t length = block.Text.size();
    if (!block.Index && length >= LongText && length <= LongestIndexed && ++block.Searches > FewSearches) {
        block.Index = std::make_unique<NameIndex>(block.Text, block.Ends);
    }
    if (block.Index) {
        return block.Index->First(part);
    }
    const std::size_t found = block.Text.find(part);
    if (found == std::string::npos) {
        return std::nullopt;
    }
    const auto end = std::upper_bound(block.Ends.begin(), block.Ends.end(), found);
    return static_cast<std::size_t>(end - block.Ends.begin());
}

std::size_t NewCategories::Search(const std::string& part) {
    std::size_t before = 0;
    for (Block& block : m_blocks) {
        if (part.empty()) {
            break;
        }
        if (const auto found = FirstIn(block, part)) {
            return before + *found + 1;
        }
        before += block.Ends.size();
    }
    return before + 1;
}

std::size_t NewCategories::FirstWith(std::string_view part) {
    const auto [answer, isNew] = m_answers.try_emplace(FoldCase(part), 0);
    if (isNew) {
        answer->second = Search(answer->first);
    }
    return answer->second;
}

} // namespace quavernet
