// What the engine itself runs: its own statements on every library that is opened while an EngineStatements
// lives. Shows what the connection has made of the program's statements, and which it answered without the
// engine.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include <sqlite3.h>

namespace quavernet::test {

class EngineStatements {
public:
    struct Run {
        std::string text;
        bool isKept = false; ///< The prepared form has run before.
    };

    EngineStatements() {
        s_runs.clear();
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(&EngineStatements::Watch));
    }
    ~EngineStatements() { sqlite3_reset_auto_extension(); }
    EngineStatements(const EngineStatements&) = delete;
    EngineStatements& operator=(const EngineStatements&) = delete;

    static const std::vector<Run>& Runs() { return s_runs; }
    static long CountOf(const std::string& start) {
        return std::count_if(s_runs.begin(), s_runs.end(),
                             [&](const Run& run) { return run.text.starts_with(start); });
    }

private:
    static int Watch(sqlite3* database, const char**, const void*) {
        return sqlite3_trace_v2(database, SQLITE_TRACE_STMT, &EngineStatements::Note, nullptr);
    }
    static int Note(unsigned, void*, void* statement, void* text) {
        const int runs = sqlite3_stmt_status(static_cast<sqlite3_stmt*>(statement), SQLITE_STMTSTATUS_RUN, 0);
        s_runs.push_back({static_cast<const char*>(text), runs > 0});
        return 0;
    }

    inline static std::vector<Run> s_runs;
};

} // namespace quavernet::test
