// Boxes of one button by the numbers of their texts, and the run-time's message as it is shown in one. Called
// by whoever tells the user something and asks nothing.
#pragma once

#include "platform/RuntimeError.h"
#include "platform/Services.h"

#include <cstdint>
#include <string>

namespace quavernet {

/// The box lets events run.
void ShowBox(std::int32_t textId, std::int32_t titleId, MsgBox::Icon icon);

/// As above, for a text that is put together.
void ShowBox(const std::string& text, std::int32_t titleId, MsgBox::Icon icon);

/// "Error: ", number and description, in the current language.
std::string FailureText(const RuntimeError& failure);

} // namespace quavernet
