// The order of rows that the chosen order of the list leaves equal: by performer, then title, then key. It is
// remembered from list to list, since the titles of a whole library take longer to sort than a list may. Used
// by the connection for the list's statements.
#pragma once

#include "adapters/sqlite/LibraryVersion.h"
#include "platform/ADODB.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace quavernet::sqlite {

/// Places in the select list.
struct TieColumns {
    std::size_t performer = 0;
    std::size_t title = 0;
    std::size_t file = 0; ///< File_id

    bool operator==(const TieColumns&) const = default;
};

class TieOrder {
public:
    /// The rows of a result by performer, title and key. Rows are read in the order of their keys.
    std::vector<std::uint32_t> Of(const ADODB::RowBlock& rows, const TieColumns& columns,
                                  const LibraryVersion& version);

    /// Another library is open.
    void Clear() { m_ranks.clear(); }

private:
    /// From 1; 0 for a file that is not known.
    std::uint32_t RankOf(const ADODB::Field& file) const;
    std::optional<std::vector<std::uint32_t>> RememberedOfFew(const ADODB::RowBlock& rows,
                                                              std::size_t file) const;
    std::optional<std::vector<std::uint32_t>> Remembered(const ADODB::RowBlock& rows, std::size_t file) const;
    void Remember(const ADODB::RowBlock& rows, std::size_t file, const std::vector<std::uint32_t>& order);

    LibraryVersion m_version;
    std::vector<std::uint32_t> m_ranks; ///< By File_id, from 1; 0 for a file that is not known.
    std::uint32_t m_known = 0;          ///< Files with a rank.
};

} // namespace quavernet::sqlite
