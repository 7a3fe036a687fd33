// Where the build put the template library. Called by the fixtures that copy it.
#pragma once

#include <string>

namespace quavernet::test {

std::string TemplatePath();

} // namespace quavernet::test
