// The paths of the selected rows for other programs. A command of the list calls it.
#pragma once

namespace quavernet {

/// Puts the paths of the selected rows on the clipboard: as lines of text and as a list of files. Nothing
/// happens if no row is selected.
void CopyPaths();

} // namespace quavernet
