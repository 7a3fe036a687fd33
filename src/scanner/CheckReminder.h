// The scan reminder at the start of the program. Called once by the main window, a second after it has
// loaded.
#pragma once

#include <functional>

namespace quavernet {

/// Asks whether to scan now if the reminder is on and its date is today, and moves the date on whatever the
/// answer is. A date that passed while the program did not run stays silent until the user sets it again.
/// `result` becomes true on a yes and is left alone otherwise: it keeps its value even if the new date
/// can't be written. `unloadSplash` closes frmSplash, which would lie over the question.
void CheckReminder(bool& result, const std::function<void()>& unloadSplash);

} // namespace quavernet
