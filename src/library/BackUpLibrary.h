// The copy of the library before work that changes or removes much of it. Called by the scan and the
// cleaning.
#pragma once

#include <string>

namespace quavernet {

/// Makes the copy, once a run of the program. Gives an empty text, or the reason why there is none: a full
/// disk is no reason to refuse the work. A library that is damaged or not there any more is one, since
/// nothing may be written to it: LibraryError is thrown then.
std::string BackUpLibrary();

} // namespace quavernet
