// The row and key collections that the list, the tree and their commands meet in.
#pragma once

#include "platform/RuntimeError.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quavernet {

/// One text per listed row, rows counted from 1.
class RowTexts {
public:
    void Add(std::string text) { m_texts.push_back(std::move(text)); }
    void Clear() { m_texts.clear(); }
    std::size_t Count() const { return m_texts.size(); }

    /// Throws RuntimeError 5 if there is no such row.
    const std::string& Item(long row) const {
        if (row < 1 || static_cast<std::size_t>(row) > m_texts.size()) {
            throw RuntimeError(ErrorNumber::InvalidProcedureCall, "Invalid procedure call or argument");
        }
        return m_texts[static_cast<std::size_t>(row) - 1];
    }

private:
    std::vector<std::string> m_texts;
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
