// The entry procedure: checks, opens the library, brings up the windows and fills list and tree, in a fixed
// order.
#pragma once

#include <string>

namespace quavernet {

/// The windows as the entry procedure sees them.
class StartWindows {
public:
    virtual ~StartWindows() = default;
    virtual std::string ScreenResolution() const = 0; ///< Pixels of the screen, for example "1920x1080".
    virtual void ShowMain() = 0;                      ///< Runs Form_Load of frmMain.
    virtual void ShowSplash() = 0;
    virtual void LoadDatabase(const std::string& list) = 0;
    virtual void LoadTree() = 0;
    virtual void SetScanningPanel(const std::string& text) = 0;
};

/// Runs the start sequence. On return the message loop runs until ExitProgram.
void Main(StartWindows& windows);

/// Full path of the library file in the user's documents folder; copies the template there at a first start.
/// Shows the failure box and ends the process if that can't be done.
std::string LocateDatabase();

} // namespace quavernet
