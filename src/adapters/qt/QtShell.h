// The system's shell: special folders, opening files with their programs, starting programs, the end of the
// process.
#pragma once

#include "platform/Services.h"

#include <QString>

#include <functional>

namespace quavernet {

class QtShell : public Shell {
public:
    /// `beforeEnd` brings to disk what is still held in memory; it runs before the process ends.
    /// `program` is what starts again; empty: this one.
    explicit QtShell(std::function<void()> beforeEnd, QString program = {})
        : m_beforeEnd(std::move(beforeEnd)), m_program(std::move(program)) {}

    std::optional<std::string> SpecialFolder(int id) override;
    std::string ProgramFolder() override;
    int ShellExecute(const std::string& path) override;
    void StartProgram(const ProgramCommand& command) override;
    int OpenAddress(const std::string& url) override;
    bool DllGetVersion(std::int32_t& major, std::int32_t& minor, std::int32_t& build) override;
    [[noreturn]] void EndProcess(int exitCode) override;
    [[noreturn]] void EndProcessAndStartAgain(int exitCode) override;

private:
    bool StartAgain() const; ///< Whether the process has begun.
    void BeforeEnd();
    [[noreturn]] static void End(int exitCode);

    std::function<void()> m_beforeEnd;
    QString m_program;
};

} // namespace quavernet
