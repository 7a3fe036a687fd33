// The print command: asks for a printer, and prints the list on it. Called by the menu items and the toolbar.
#pragma once

namespace quavernet {

class Controls;
class LongWork;
class PrintableGrid;

/// Nothing is printed if the user cancels the dialog, if it can't come up, or if the printer does not take
/// the number of copies or the orientation. While the list prints, the toolbar's "cancel" ends it. A printer
/// that fails is told in a box; a printed or cancelled list is told to `work`. Lets events run.
void PrintList(PrintableGrid& grid, LongWork& work, Controls& controls);

} // namespace quavernet
