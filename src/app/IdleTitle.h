// The title of the main window while nothing is being done. The window sets it with its texts, and a scan
// when it has ended.
#pragma once

#include <string>

namespace quavernet {

/// The program's name and the day of the last scan, "-" before the first, in the current language.
std::string IdleTitle();

} // namespace quavernet
