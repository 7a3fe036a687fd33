// A connection that keeps every statement sent through it, in order, and hands it on to a real one. A test
// can make a statement fail, or hide the rows that it would find.
#pragma once

#include "app/MainModule.h"
#include "platform/ADODB.h"
#include "platform/LibraryError.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quavernet::test {

class RecordingConnection : public ADODB::Connection {
public:
    explicit RecordingConnection(std::unique_ptr<ADODB::Connection> real) : m_real(std::move(real)) {}

    /// Puts a recorder in front of mainModule.Connection.
    static RecordingConnection& Install() {
        auto recorder = std::make_unique<RecordingConnection>(std::move(mainModule.Connection));
        RecordingConnection& result = *recorder;
        mainModule.Connection = std::move(recorder);
        return result;
    }

    void Open(std::string_view connectionString) override { m_real->Open(connectionString); }
    void Execute(std::string_view statement) override {
        Keep(statement);
        m_real->Execute(statement);
    }
    ADODB::RowBlock QueryFirst(std::string_view statement, std::size_t most) override {
        Keep(statement);
        return m_real->QueryFirst(statement, most);
    }
    ADODB::RowBlock Query(std::string_view statement) override {
        Keep(statement);
        ADODB::RowBlock rows = m_real->Query(statement);
        if (!hide.empty() && statement.starts_with(hide) && hideRounds > 0) {
            --hideRounds;
            return ADODB::RowBlock(rows.Columns());
        }
        return rows;
    }
    void Commit() override {
        ++commits;
        m_real->Commit();
    }
    void CommitIfDue() override { m_real->CommitIfDue(); }
    void Backup() override {
        statements.push_back("(backup)");
        if (failBackup) {
            throw RuntimeError(1, "no space");
        }
        if (backupFault) {
            throw LibraryError(*backupFault, "Quavernet.db", 1, "a fault of the library");
        }
        m_real->Backup();
    }

    std::int64_t ChangesOfOthers() override { return m_real->ChangesOfOthers(); }

    void LockWrites() override {
        if (failLock) {
            throw RuntimeError(2, "another program writes");
        }
        m_real->LockWrites();
    }
    void UnlockWrites() noexcept override { m_real->UnlockWrites(); }

    /// Statements that begin with `start`.
    std::vector<std::string> StatementsOf(std::string_view start) const {
        std::vector<std::string> result;
        std::copy_if(statements.begin(), statements.end(), std::back_inserter(result),
                     [&](const std::string& statement) { return statement.starts_with(start); });
        return result;
    }

    std::vector<std::string> statements;
    std::function<void(const std::string&)> onStatement; ///< Runs before the statement is passed on.
    int commits = 0;
    bool failBackup = false;
    bool failLock = false;
    std::optional<LibraryFault> backupFault;
    std::string failOn; ///< Statements that begin with this text fail; empty: none.
    std::string hide;   ///< Queries that begin with this text find nothing
    int hideRounds = 0; ///< for so many rounds.

private:
    void Keep(std::string_view statement) {
        statements.emplace_back(statement);
        if (onStatement) {
            onStatement(statements.back());
        }
        if (!failOn.empty() && statement.starts_with(failOn)) {
            throw RuntimeError(19, "constraint failed");
        }
    }

    std::unique_ptr<ADODB::Connection> m_real;
};

} // namespace quavernet::test
