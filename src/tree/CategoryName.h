// A new category out of a list of files, in their order. frmCategoryName asks for the name.
#pragma once

#include <string>
#include <vector>

namespace quavernet {

class LibraryViews;

enum class CategoryFinish {
    NameMissing, ///< The user was told so.
    Duplicate,   ///< The user was told so.
    NameRefused, ///< The library takes no such name; the user was told why.
    Made
};

/// Makes a category of this name; each file that the library knows becomes an entry, at its place in the
/// list: the place of any other file stays a gap. Then loads the tree, which lets events run, as does a box.
/// Throws RuntimeError if a statement fails for another reason than the name.
CategoryFinish FinishCategory(const std::string& name, const std::vector<std::string>& files,
                              LibraryViews& views);

} // namespace quavernet
