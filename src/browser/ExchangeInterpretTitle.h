// Swaps performer and title of the selected files in the library; the tags in the files stay as they are.
// Called by the commands of the list.
#pragma once

namespace quavernet {

class LibraryViews;

/// The names that nobody uses any more stay in their tables. The selection is lost. Lets events run while the
/// list loads. Throws RuntimeError if a statement fails; what was written stays.
void ExchangeInterpretTitle(LibraryViews& views);

} // namespace quavernet
