// When the main window may close and when the process ends with it. Called by frmMain's Form_QueryUnload and
// Form_Unload.
#pragma once

namespace quavernet {

/// False, with a box, while a scan is running: the window then stays and nothing is saved.
bool MayCloseMain();

/// The end of Form_Unload, after the saving of the settings: lets pending events run, marks the main window
/// as closed and ends the process unless the player window is still open.
void FinishMainUnload();

} // namespace quavernet
