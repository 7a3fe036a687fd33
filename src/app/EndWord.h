// How a long job tells that it is over: "Done: 56 new, 3 updated, 2 skipped, 0:04". Scan, cleaning, drops,
// import, printing and renaming put theirs together here and hand it to their LongWork.
#pragma once

#include "platform/DateTime.h"

#include <cstdint>
#include <string>

namespace quavernet {

/// "0:04", "12:30", "1:02:03". Seconds; less than 0 counts as 0.
std::string DurationText(std::int64_t seconds);

class EndWord {
public:
    /// The time counts from here.
    EndWord();

    /// One piece: the number and a text after it, by the text's number.
    void Count(std::size_t count, std::int32_t textId);
    /// The same with another text for the number 1.
    void Count(std::size_t count, std::int32_t oneId, std::int32_t manyId);
    /// A piece that is a text alone.
    void Say(const std::string& text);

    std::string Done() const;       ///< The pieces, then the time.
    std::string Cancelled() const;  ///< "Cancelled after 0:04", then the pieces if there are any.
    std::string EndedEarly() const; ///< By a failure: as Done, under another word.

private:
    std::string Time() const;
    std::string PiecesAndTime() const;

    DateTime m_begin;
    std::string m_pieces;
};

} // namespace quavernet
