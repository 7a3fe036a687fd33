// The entry procedure: checks, opens the library, brings up the windows and fills list and tree, in a fixed
// order.
#pragma once

#include "app/LibraryViews.h"
#include "app/LongWork.h"

#include <string>

namespace quavernet {

/// What the entry procedure brings up.
class StartView {
public:
    virtual ~StartView() = default;
    virtual std::string ScreenResolution() const = 0; ///< Pixels of the screen, for example "1920x1080".
    virtual void ShowMain() = 0;                      ///< Runs Form_Load of frmMain.
    virtual void ShowSplash() = 0;
    virtual LongWork& Work() = 0; ///< This and the next belong to frmMain, once it is shown.
    virtual LibraryViews& Views() = 0;
};

/// Runs the start sequence, and lets events run at three points. On return the message loop runs until
/// ExitProgram.
void Main(StartView& start);

/// Full path of the library file in the user's documents folder; copies the template there at a first start.
/// Shows the failure box and ends the process if that can't be done.
std::string LocateDatabase();

} // namespace quavernet
