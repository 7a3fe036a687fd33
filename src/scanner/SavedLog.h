// The part of a store that the user can watch: one line a file and three running counters in the scan log.
// Called by the stores of the scan and of the Ogg pass.
#pragma once

#include <string>

namespace quavernet {

class ScanLog;

class SavedLog {
public:
    explicit SavedLog(ScanLog& log) : m_log(log) {}

    /// Adds the line and counts the file, if the scan log is enabled. `size` holds bytes, `length` seconds,
    /// as texts. Failures are passed over, statement by statement.
    void Add(const std::string& path, const std::string& size, const std::string& length);

private:
    ScanLog& m_log;

    // 32-bit floats, rounded after each file: a run of files under half a minute never adds a minute. They
    // are never set back to 0 while the program runs.
    float m_logFilesCount = 0;
    float m_logMegabytes = 0;
    float m_logMinutes = 0;
};

} // namespace quavernet
