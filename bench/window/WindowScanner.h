// Scans with the main window open and the scan log on, from the menu command to the painted list. main runs
// it.
#pragma once

#include "ScanJobs.h"
#include "window/RealWindow.h"

namespace quavernet::bench {

class WindowScanner : public Scanner {
public:
    WindowScanner(RealWindow& window, const std::string& music);

    void OpenEmpty() override;
    void Scan(bool quick) override;
    void Close() override;
    std::string LibraryPath() const override;
    Timed ListAtEnd() override;

private:
    void CloseLog();

    RealWindow& m_window;
};

} // namespace quavernet::bench
