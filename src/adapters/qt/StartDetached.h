// Starts a program whose arguments are bytes: names of files that are not UTF-8 have no place in Qt's texts.
// Called by QtShell.
#pragma once

#include <string>
#include <vector>

namespace quavernet {

/// The program runs in a session of its own and is nobody's child that would have to be waited for. Gives 0,
/// or the system's number of what kept it from running.
int StartDetached(const std::string& program, const std::vector<std::string>& arguments);

} // namespace quavernet
