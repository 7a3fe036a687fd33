// The command "clean the database": removes the files that are gone from the disk, with their tree entries.
// Called by the main window's menu.
#pragma once

#include <string>

namespace quavernet {

/// What the cleaning shows and asks of the main window.
class CleanWindow {
public:
    virtual ~CleanWindow() = default;

    virtual void SetMousePointer(int pointer) = 0; ///< 0 default, 11 hourglass.
    virtual void SetScanningPanel(const std::string& text) = 0;
    virtual void LoadTree() = 0;
    virtual void LoadDatabase(const std::string& list) = 0;
};

/// Warns that files of unreachable volumes go too, and cleans on a yes.
void mnuCleanDatabase_Click(CleanWindow& window);

/// Removes every file that does not exist, closes the gaps in its categories and rebuilds tree and list. No
/// failure is caught, and what was removed until then stays so.
void CleanDatabase(CleanWindow& window);

} // namespace quavernet
