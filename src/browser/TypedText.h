// Letters typed in the list look for a row by the beginning of its text in the sorted column. The grid passes
// its keys on and moves to the row that is found.
#pragma once

#include "browser/ListQuery.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace quavernet {

/// What has been typed, key by key.
class TypedText {
public:
    /// After a pause of this length the next key begins another text.
    static constexpr std::int64_t PauseMs = 1000;

    /// Takes a key; `nowMs` counts from any moment on. False if the key begins no text: a blank is a part of
    /// one only.
    bool Type(std::string_view key, std::int64_t nowMs);

    /// The text to look for. One character typed again and again is looked for as this one.
    const std::string& Text() const { return m_text; }
    /// Whether the search begins after the current row; a text that grows may still be that of the row.
    bool FromNext() const { return m_fromNext; }

private:
    std::string m_typed;
    std::string m_text;
    bool m_fromNext = true;
    std::int64_t m_lastMs = -PauseMs;
};

/// The first row from `from` on whose text in the column begins with the text, whatever the case of the
/// letters; after the last row the search goes on at the first. 0 if there is none.
std::int32_t RowStartingWith(const ListRows& rows, ListColumn column, std::string_view text,
                             std::int32_t from);

} // namespace quavernet
