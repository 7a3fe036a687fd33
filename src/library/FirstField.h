// The one value that a statement reads: an id, a name, a count. Called by the procedures that send such a
// statement.
#pragma once

#include <string>

namespace quavernet {

/// Field 0 of the first row, as text. Throws RuntimeError if the statement fails or finds no row.
std::string FirstField(const std::string& select);

} // namespace quavernet
