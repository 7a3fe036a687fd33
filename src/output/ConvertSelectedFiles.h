// Has the selected files of the list encoded by the program that lies in the program's folder. Called by the
// commands of the output.
#pragma once

#include "platform/Services.h"

#include <functional>
#include <string>

namespace quavernet {

class LongWork;

/// The encoder of that folder with the switches of the stored options and the files of the selected rows.
/// Tells of a target folder that is missing; the box lets events run.
ProgramCommand EncoderCommand(const std::string& programFolder);

/// Starts the encoder on the selected rows and does not wait for it. `showOptions` shows the options, if the
/// user wants to see them each time; what is stored when it returns is used. Lets events run while options or
/// a box are open. Throws RuntimeError if the encoder can't be started, and SettingError.
void ConvertSelectedFiles(LongWork& work, const std::function<void()>& showOptions);

} // namespace quavernet
