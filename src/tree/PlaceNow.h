// Where the nodes of the tree are by now, if another program has changed the library since the tree was
// built: a place that was read then would be written over what that program has done. Called by drops,
// deletion and editor inside their WriteLock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace quavernet {

/// Notices changes by another program: true at each call that is the first one after such a change.
class OthersWatch {
public:
    /// `seen`: what Connection::ChangesOfOthers was when everything was read that is to be watched.
    explicit OthersWatch(std::int64_t seen) : m_seen(seen) {}
    bool HasNews();

private:
    std::int64_t m_seen;
};

/// The position of an entry, as text. Nothing if it is gone, or has gone to another category than this one.
std::optional<std::string> PositionNow(const std::string& fileCategoryId, const std::string& category);

bool IsCategory(const std::string& name);

/// Whether entries can still be added to a category that has been made: its key is there, and a category of
/// the name that they give as their Parent. Without the latter the next load of the tree would fail.
bool TakesEntries(const std::string& categoryId, const std::string& parent);

/// How many entries the tree would show under the category. Nothing if it is gone.
std::optional<std::size_t> ChildrenNow(const std::string& category);

} // namespace quavernet
