// The program's version, as CMake knows it, and the text of it on the splash window. Called by frmSplash and
// the about box.
#pragma once

#include <string>

namespace quavernet {

/// "1.0.3": major, minor and revision.
std::string VersionNumbers();

/// "v1.0.3": lblVersion of frmSplash.
std::string SplashVersionText();

} // namespace quavernet
