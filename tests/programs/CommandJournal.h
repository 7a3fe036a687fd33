// The book that a program keeps of what it does, for the script that kills it: a line reaches the file at
// once, and a kill takes none back. Used by the programs of the reliability checks.
#pragma once

#include "platform/ADODB.h"
#include "platform/RuntimeError.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace quavernet {

/// Lines of fields between tabs.
class Journal {
public:
    explicit Journal(const std::string& path)
        : m_file(::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600)) {
        if (m_file < 0) {
            throw RuntimeError(ErrorNumber::PathFileAccess, path);
        }
    }
    ~Journal() { ::close(m_file); }
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    void Add(std::string_view mark, std::string_view text = {}) const {
        const std::string line = std::string(mark).append("\t").append(text).append("\n");
        if (::write(m_file, line.data(), line.size()) != static_cast<ssize_t>(line.size())) {
            throw RuntimeError(ErrorNumber::PathFileAccess, "journal");
        }
    }

private:
    int m_file;
};

/// The open library. A statement that writes is noted before it runs, a commit when it is over: what is in
/// the library after a kill lies between the two.
class JournalConnection : public ADODB::Connection {
public:
    JournalConnection(std::unique_ptr<ADODB::Connection> real, const Journal& journal)
        : m_real(std::move(real)), m_journal(journal) {}

    void Open(std::string_view connectionString) override { m_real->Open(connectionString); }
    void Execute(std::string_view statement) override {
        m_journal.Add("sql", statement);
        Try("failed", [&] { m_real->Execute(statement); });
    }
    ADODB::RowBlock Query(std::string_view statement) override {
        // What only a change by another program makes the commands ask.
        if (statement.starts_with("Select FC.[Position]") || statement.starts_with("Select Count(FC.")) {
            m_journal.Add("followed", statement);
        }
        return m_real->Query(statement);
    }
    ADODB::RowBlock QueryFirst(std::string_view statement, std::size_t most) override {
        return m_real->QueryFirst(statement, most);
    }
    void Commit() override {
        Try("no commit", [&] { m_real->Commit(); });
        m_journal.Add("committed");
    }
    void CommitIfDue() override { m_real->CommitIfDue(); }
    void Backup() override { m_real->Backup(); }
    std::int64_t ChangesOfOthers() override { return m_real->ChangesOfOthers(); }
    void LockWrites() override {
        Try("no turn", [&] { m_real->LockWrites(); });
    }
    void UnlockWrites() noexcept override { m_real->UnlockWrites(); }

private:
    // The commands themselves often end silently at a failure.
    template <class Work> void Try(const char* mark, const Work& work) const {
        try {
            work();
        } catch (const RuntimeError& failure) {
            m_journal.Add(mark, failure.what());
            throw;
        }
    }

    std::unique_ptr<ADODB::Connection> m_real;
    const Journal& m_journal;
};

} // namespace quavernet
