// The program's scan without any window, for scans beside those that show their work. main runs it.
#pragma once

#include "ScanJobs.h"
#include "Services.h"

namespace quavernet::bench {

class SilentScanner : public Scanner {
public:
    SilentScanner(const std::string& music, const std::string& library, std::string emptyLibrary,
                  bool takesOgg = false);

    /// Whether files are read ahead from now on.
    void ReadAhead(bool on) { m_program.ReadAhead(on); }

    void OpenEmpty() override;
    void Scan(bool quick) override;
    void Close() override { m_program.CloseLibrary(); }
    std::string LibraryPath() const override { return m_library; }

private:
    BenchServices m_program;
    std::string m_library;
    std::string m_emptyLibrary;
    bool m_takesOgg;
};

} // namespace quavernet::bench
