// Help by page. Called by every form's F1 key and by the help menu; the pages are in HelpPages.h.
#pragma once

#include <string>

namespace quavernet {

/// Help file of the program's language: "help.chm" in German, "helpE.chm" in English; empty for any other
/// value of mainModule.Language.
std::string HelpFile();

/// Opens a page of the help in the program's language; an empty page opens the contents. A help file that
/// isn't there is no failure: nothing is shown and nobody is told.
void ShowHelp(const std::string& page);

} // namespace quavernet
