// When the main window may close and when the process ends with it. Called by frmMain's Form_QueryUnload and
// Form_Unload.
#pragma once

namespace quavernet {

enum class CloseAnswer {
    Close,
    Stay, ///< A scan is running, and the user was told so: nothing is saved.
    Later ///< A command that acts alone is running: the window is to close when that is over.
};
CloseAnswer QueryCloseMain();

/// The end of Form_Unload, after the saving of the settings: lets pending events run, marks the main window
/// as closed and ends the process unless the player window is still open.
void FinishMainUnload();

} // namespace quavernet
