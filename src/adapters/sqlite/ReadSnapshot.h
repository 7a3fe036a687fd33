// Keeps one read transaction open over a run of lookups, for as long as nobody else has committed: opening
// and closing one costs the kernel more than a lookup costs the engine. While another program writes, none is
// kept: a log that is never without a reader is never begun anew, and grows. Used by the connection.
#pragma once

#include "adapters/sqlite/StatementCache.h"

#include <array>
#include <chrono>
#include <cstdint>

struct sqlite3;

namespace quavernet::sqlite {

class ReadSnapshot {
public:
    using Clock = std::chrono::steady_clock;

    /// After a commit of somebody else no state is held for `pause`, which is longer than a program that
    /// writes gathers its commits.
    explicit ReadSnapshot(Clock::duration pause = std::chrono::seconds(1)) : m_pause(pause) {}

    /// The library in use from now on. It must have been read before, so that its log is open.
    void Attach(sqlite3* database);

    /// Before a statement that reads outside of a transaction: from here on the library's present state is
    /// read. False if it is sure to be the state of the call before.
    bool Renew();

    /// Lets go of the state. Called before a write, and before the program waits: while a state is held, the
    /// log of other programs' writes can't be taken into the file.
    void Release();

private:
    // The header of the log's index (sqlite.org/walformat.html, section 2.1), in words of the machine: the
    // first of its two copies, which is the last part of the index that a commit changes. Every commit
    // changes it.
    using IndexHeader = std::array<std::uint32_t, 12>;

    bool Take();
    bool IsCurrent() const;

    Clock::duration m_pause;
    Clock::time_point m_pauseEnds; ///< In the past: a state may be held.
    sqlite3* m_database = nullptr;
    PreparedStatement m_holder; ///< Stands on a row while a state is held, which keeps the transaction open.
    const volatile std::uint32_t* m_index = nullptr; ///< Mapped for as long as a state is held.
    IndexHeader m_header{};                          ///< As it was just before the state was taken.
    bool m_held = false;
};

} // namespace quavernet::sqlite
