// A connection that notes every statement before it passes it on to the real one.
#pragma once

#include "platform/ADODB.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quavernet::test {

class RecordingConnection : public ADODB::Connection {
public:
    explicit RecordingConnection(std::unique_ptr<ADODB::Connection> real) : m_real(std::move(real)) {}

    void Open(std::string_view connectionString) override { m_real->Open(connectionString); }
    void Execute(std::string_view statement) override {
        Note(statement);
        m_real->Execute(statement);
    }
    ADODB::RowBlock Query(std::string_view statement) override {
        Note(statement);
        return m_real->Query(statement);
    }
    void Commit() override { m_real->Commit(); }

    std::vector<std::string> statements;
    std::function<void(const std::string&)> onStatement;

private:
    void Note(std::string_view statement) {
        statements.emplace_back(statement);
        if (onStatement) {
            onStatement(statements.back());
        }
    }

    std::unique_ptr<ADODB::Connection> m_real;
};

} // namespace quavernet::test
