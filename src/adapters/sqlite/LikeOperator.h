// The like operator of the library: "%" stands for any run of characters, "_" for one, nothing else is
// special; letters compare by the case rule of the collation. The engine's own knows the case of ASCII alone.
#pragma once

#include <string>
#include <string_view>

struct sqlite3;

namespace quavernet::sqlite {

/// A pattern made ready: its code points folded, the wildcards as values beyond all code points.
class LikePattern {
public:
    /// `escape` makes the character after it stand for itself; 0 for none.
    explicit LikePattern(std::string_view pattern, char32_t escape = 0);

    /// Whether the whole text is of this form.
    bool Matches(std::string_view text) const;

private:
    std::u32string m_pattern;
};

/// On one connection, with and without "escape". Throws RuntimeError if the engine refuses.
void RegisterLikeOperator(sqlite3* database);

} // namespace quavernet::sqlite
