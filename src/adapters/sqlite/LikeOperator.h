// The like operator of the library: "%" stands for any run of characters, "_" for one, nothing else is
// special; letters compare by the case rule of the collation.
#pragma once

#include <string>
#include <string_view>

struct sqlite3;

namespace quavernet::sqlite {

/// A pattern made ready: its code points folded, the wildcards as values beyond all code points.
class LikePattern {
public:
    /// `escape` makes the character behind it stand for itself; 0 for none.
    explicit LikePattern(std::string_view pattern, char32_t escape = 0);

    bool Matches(std::string_view text) const;

private:
    std::u32string m_pattern;
};

void RegisterLikeOperator(sqlite3* database);

} // namespace quavernet::sqlite
