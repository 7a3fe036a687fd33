// Opening a file with the program that the system has for it, and the boxes that tell why that failed. List,
// tree and every other place that plays in an external program come here.
#pragma once

#include <cstdint>
#include <string>

namespace quavernet {

/// A box with an exclamation mark and one button, by the numbers of its texts.
void ShowExclamation(std::int32_t textId, std::int32_t titleId);

/// The box of a file that the system could not open, under its one title.
void ShowOpenFailure(std::int32_t textId);

/// Tells a missing file in a box; every other result counts as success. The box lets events run.
void OpenWithShell(const std::string& path);

} // namespace quavernet
