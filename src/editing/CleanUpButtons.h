// The four buttons that clean up file names. Both dialogs that rename files have them.
#pragma once

#include <functional>
#include <string>

class QPushButton;

namespace quavernet {

using CleanUp = std::function<std::string(const std::string& name)>;

struct CleanUpButtons {
    QPushButton* Umlauts;
    QPushButton* Brackets;
    QPushButton* Numbers;
    QPushButton* Underscores;
};

/// Writes the captions, in the language of the moment. A click hands its clean-up to `act`.
void PrepareCleanUpButtons(const CleanUpButtons& buttons, const std::function<void(const CleanUp&)>& act);

} // namespace quavernet
