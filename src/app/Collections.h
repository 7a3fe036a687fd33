// The row and key collections that the list, the tree and their commands meet in.
#pragma once

#include "platform/RuntimeError.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace quavernet {

/// Texts that somebody else holds, one per row, rows counted from 1. The list keeps its rows this way.
class RowTextSource {
public:
    virtual ~RowTextSource() = default;
    virtual std::size_t Count() const = 0;
    virtual std::string_view Text(std::size_t row) const = 0;
};

/// One text per listed row, rows counted from 1. Added texts lie in one block, so that a hundred thousand
/// paths cost their bytes and no heap string each; a whole column is taken over without a copy by Show.
class RowTexts {
public:
    void Add(std::string_view text) {
        m_block.append(text);
        m_ends.push_back(m_block.size());
    }
    void Clear() { *this = RowTexts(); }

    /// Replaces all texts by those of the source. Texts added later follow them.
    void Show(std::shared_ptr<const RowTextSource> source) {
        Clear();
        m_source = std::move(source);
    }

    std::size_t Count() const { return SourceCount() + m_ends.size(); }

    /// Throws RuntimeError 5 if there is no such row.
    std::string Item(long row) const {
        CheckRow(row);
        const auto wanted = static_cast<std::size_t>(row);
        if (const auto replaced = m_replaced.find(wanted); replaced != m_replaced.end()) {
            return replaced->second;
        }
        if (wanted <= SourceCount()) {
            return std::string(m_source->Text(wanted));
        }
        const std::size_t own = wanted - SourceCount() - 1;
        const std::size_t begin = own == 0 ? 0 : m_ends[own - 1];
        return m_block.substr(begin, m_ends[own] - begin);
    }

    /// Puts a text in the place of a row's. The source keeps its own. Throws RuntimeError 5 if there is no
    /// such row.
    void Replace(long row, std::string text) {
        CheckRow(row);
        m_replaced[static_cast<std::size_t>(row)] = std::move(text);
    }

private:
    void CheckRow(long row) const {
        if (row < 1 || static_cast<std::size_t>(row) > Count()) {
            throw RuntimeError(ErrorNumber::InvalidProcedureCall, "Invalid procedure call or argument");
        }
    }
    std::size_t SourceCount() const { return m_source ? m_source->Count() : 0; }

    std::shared_ptr<const RowTextSource> m_source;
    std::string m_block;
    std::vector<std::size_t> m_ends;                         ///< Where each added text ends in the block.
    std::unordered_map<std::size_t, std::string> m_replaced; ///< By row; few, if any.
};

/// Row numbers (0 or more) in the order in which they were added, each at most once. Made for whole ranges of
/// a large list: an add costs one bit and one number.
class RowNumbers {
public:
    /// A row that is a member already is passed over.
    void Add(std::int32_t row) { AddRange(row, row); }

    /// Adds the rows from `first` to `last`, in ascending order.
    void AddRange(std::int32_t first, std::int32_t last) {
        if (first < 0) {
            throw RuntimeError(ErrorNumber::InvalidProcedureCall, "Invalid procedure call or argument");
        }
        if (last < first) {
            return;
        }
        if (m_members.size() <= static_cast<std::size_t>(last)) {
            m_members.resize(static_cast<std::size_t>(last) + 1);
        }
        for (std::int64_t row = first; row <= last; ++row) {
            auto member = m_members[static_cast<std::size_t>(row)];
            if (!member) {
                member = true;
                m_order.push_back(static_cast<std::int32_t>(row));
            }
        }
    }

    /// A row that is no member is passed over.
    void Remove(std::int32_t row) {
        if (Contains(row)) {
            m_members[static_cast<std::size_t>(row)] = false;
            m_order.erase(std::find(m_order.begin(), m_order.end(), row));
        }
    }
    void Clear() {
        m_order.clear();
        m_members.clear();
    }
    bool Contains(std::int32_t row) const {
        return row >= 0 && static_cast<std::size_t>(row) < m_members.size() &&
               m_members[static_cast<std::size_t>(row)];
    }
    std::size_t Count() const { return m_order.size(); }
    const std::vector<std::int32_t>& Rows() const { return m_order; }

private:
    std::vector<std::int32_t> m_order;
    std::vector<bool> m_members; ///< By row number.
};

/// Texts in the order in which they were added, each stored under itself: a second add of the same is
/// ignored.
class KeyCollection {
public:
    void Add(const std::string& key) {
        if (std::find(m_keys.begin(), m_keys.end(), key) == m_keys.end()) {
            m_keys.push_back(key);
        }
    }
    void Remove(const std::string& key) { std::erase(m_keys, key); }
    void Clear() { m_keys.clear(); }
    const std::vector<std::string>& Keys() const { return m_keys; }

private:
    std::vector<std::string> m_keys;
};

} // namespace quavernet
