// Opening an address of the web. The online search of covers comes here.
#pragma once

#include <string>

namespace quavernet {

/// Puts "http://" before an address that does not begin with "http", in any case of letters, and opens it as
/// it is, blanks and quotes included. An address with another scheme becomes one of the web so, and reaches
/// no other program. False if nothing was opened.
bool OpenInBrowser(const std::string& url);

} // namespace quavernet
