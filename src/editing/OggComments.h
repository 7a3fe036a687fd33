// The comments of an Ogg file as the details dialog saves them. Called by SaveDetails.
#pragma once

#include "editing/FileDetails.h"

#include <string>
#include <vector>

namespace quavernet {

/// The six comments of the dialog, one "KEY=text" each, and after them those of `old` that the dialog does
/// not edit, in their order.
std::vector<std::string> EditedComments(const DetailsTexts& texts, const std::vector<std::string>& old);

} // namespace quavernet
