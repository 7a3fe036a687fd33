// The results of the last lookups, so that the same question costs nothing while its answer can't have
// changed: the files of an album ask for one performer, one album and one drive again and again. Used by the
// connection while a transaction of its own is open, when nobody else can write; it says what it writes
// itself, and clears the cache before the next transaction.
#pragma once

#include "adapters/sqlite/TableUse.h"
#include "platform/ADODB.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quavernet::sqlite {

class LookupCache {
public:
    /// The kept result of this very statement; null if there is none. Valid until the next call.
    const ADODB::RowBlock* Find(std::string_view statement) const;

    /// Keeps the result of a statement that reads these tables and depends on nothing else, if it is one
    /// field and the statement is short. It takes the place of another statement's.
    void Keep(std::string_view statement, const ADODB::RowBlock& rows, TableSet tables);

    /// Results that rest on one of these tables hold no longer.
    void Forget(TableSet written);

    /// No kept result holds any longer.
    void Clear();

private:
    static constexpr std::size_t slotCount = 256;
    static constexpr std::size_t maximumLength = 1024; ///< Of a statement and of a field, in bytes.

    struct Slot {
        std::string statement;
        ADODB::RowBlock rows;
        TableSet tables = 0;
        std::uint64_t time = 0; ///< 0: empty.
    };

    static std::size_t PlaceOf(std::string_view statement);

    std::vector<Slot> m_slots;
    std::uint64_t m_time = 0;                  ///< Counts what is kept and what is written.
    std::array<std::uint64_t, 64> m_written{}; ///< Times of the last writes, by the table's bit.
};

} // namespace quavernet::sqlite
