// The type of what tests compare most: a row, a column or a list of texts.
#pragma once

#include <string>
#include <vector>

namespace quavernet::test {

using Texts = std::vector<std::string>;

} // namespace quavernet::test
