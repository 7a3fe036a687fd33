// A library connection that writes statements down and answers queries from a table.
#pragma once

#include "platform/ADODB.h"
#include "platform/RuntimeError.h"

#include <initializer_list>
#include <map>
#include <string>
#include <vector>

namespace quavernet::test {

class AnsweringConnection : public ADODB::Connection {
public:
    explicit AnsweringConnection(std::vector<std::string>& calls) : m_calls(calls) {}

    void Open(std::string_view) override {}
    void Execute(std::string_view statement) override {
        m_calls.emplace_back(statement);
        FailIfTold(statement);
    }
    /// A statement without an answer has no rows.
    ADODB::RowBlock Query(std::string_view statement) override {
        m_calls.emplace_back(statement);
        FailIfTold(statement);
        const auto answer = answers.find(std::string(statement));
        return answer == answers.end() ? ADODB::RowBlock(1) : answer->second;
    }
    ADODB::RowBlock QueryFirst(std::string_view statement, std::size_t) override { return Query(statement); }
    void Commit() override {}
    std::int64_t ChangesOfOthers() override { return 0; }

    /// An answer of one row of texts.
    void Answer(const std::string& statement, std::initializer_list<std::string_view> row) {
        ADODB::RowBlock block(row.size());
        for (const std::string_view cell : row) {
            block.AddText(cell);
        }
        answers.insert_or_assign(statement, block);
    }

    std::map<std::string, ADODB::RowBlock> answers;
    std::string failing; ///< A statement that holds this text fails; empty: none does.

private:
    void FailIfTold(std::string_view statement) const {
        if (!failing.empty() && statement.find(failing) != std::string_view::npos) {
            throw RuntimeError(1, "statement");
        }
    }

    std::vector<std::string>& m_calls;
};

} // namespace quavernet::test
