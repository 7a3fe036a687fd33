// The categories that an import has made so far, and which of them an entry of the exchange file belongs to.
// The import owns the one list of its run.
#pragma once

#include "tree/NameIndex.h"

#include <cstddef>
#include <memory>
#include <optional>
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

    /// Number of the first one whose name contains the text, case ignored as the library does; one more than
    /// there are if none does. However many different texts are searched in however long names, it doesn't
    /// take the product of both.
    std::size_t FirstWith(std::string_view part);

private:
    /// Names that follow each other.
    struct Block {
        std::string Text;              ///< Each name with a line end before it, case folded.
        std::vector<std::size_t> Ends; ///< Of each name in the text.
        std::size_t Searches = 0;
        std::unique_ptr<NameIndex> Index; ///< Made when a long text has been searched often.
    };
    static std::optional<std::size_t> FirstIn(Block& block, const std::string& part);
    void JoinLastBlocks();
    std::size_t Search(const std::string& part);

    std::vector<NewCategory> m_categories;
    std::vector<Block> m_blocks;
    std::unordered_map<std::string, std::size_t> m_answers; ///< By what was searched; emptied by Add.
};

} // namespace quavernet
