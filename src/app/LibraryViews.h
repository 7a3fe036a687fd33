// The two views of the library: list and tree, rebuilt whole after each change. The main window brings them;
// commands end in one or both.
#pragma once

#include <string>

namespace quavernet {

class LibraryViews {
public:
    virtual ~LibraryViews() = default;

    /// `list` holds File_ids separated by commas for a request that shows given files; otherwise it is empty.
    /// Lets events run.
    virtual void LoadDatabase(const std::string& list) = 0;
    virtual void LoadTree() = 0; ///< Lets events run.
};

} // namespace quavernet
