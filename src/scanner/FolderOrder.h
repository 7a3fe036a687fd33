// The order in which both passes of a scan visit folders: each one before what lies below it, siblings in the
// file system's order. Kept as a list of what is still to do, so that the depth of a tree has no limit.
#pragma once

#include "app/TextHelpers.h"

#include <string>
#include <string_view>
#include <vector>

namespace quavernet {

class FolderOrder {
public:
    explicit FolderOrder(const std::string& first) : m_waiting{first} {}

    bool IsDone() const { return m_waiting.empty(); }

    std::string Next() {
        std::string folder = std::move(m_waiting.back());
        m_waiting.pop_back();
        return folder;
    }

    void AddSubFolders(std::vector<std::string>&& subFolders) {
        m_waiting.insert(m_waiting.end(), std::make_move_iterator(subFolders.rbegin()),
                         std::make_move_iterator(subFolders.rend()));
    }

private:
    std::vector<std::string> m_waiting; ///< The next one last.
};

/// Whether the folder, and with it all that lies below, belongs to the system's own restore data.
inline bool IsExcludedFolder(std::string_view path) {
    return ContainsIgnoringCase(path, "System Volume Information");
}

} // namespace quavernet
