// All that a walk over folders finds, for tests of the walk.
#pragma once

#include "platform/FileSystemObject.h"

#include <algorithm>
#include <string>
#include <vector>

namespace quavernet::test {

/// Every file below the walk's folder, by its path without that folder. The subfolders of each folder are
/// visited in the order of the listing, or in the opposite one.
inline std::vector<std::string> AllFiles(FolderWalk& walk, bool reversed = false) {
    std::vector<std::string> waiting{walk.Path()};
    std::vector<std::string> files;
    while (!waiting.empty()) {
        const std::string next = waiting.back();
        waiting.pop_back();
        FolderContents contents = walk.List(next);
        for (const FolderFile& file : contents.files) {
            files.push_back((next + "/" + file.name).substr(walk.Path().size() + 1));
        }
        if (!reversed) {
            std::reverse(contents.subFolders.begin(), contents.subFolders.end());
        }
        waiting.insert(waiting.end(), contents.subFolders.begin(), contents.subFolders.end());
    }
    return files;
}

} // namespace quavernet::test
