// Gathers the commits of a run of writes. A statement is in force at once for this connection; the file gets
// it at the next commit.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <utility>

struct sqlite3;

namespace quavernet::sqlite {

class LibraryPlace;

/// The transaction of the connection: it opens before the first write and closes at a commit.
class CommitGathering {
public:
    using Clock = std::chrono::steady_clock;

    /// `maximumAge`: how long the oldest gathered statement may wait, seen at the next one. `now` is the
    /// clock.
    explicit CommitGathering(Clock::duration maximumAge, std::function<Clock::time_point()> now = &Clock::now)
        : m_maximumAge(maximumAge), m_now(std::move(now)) {}

    /// From now on each transaction looks at this place, when it has begun and before it is committed.
    void Attach(LibraryPlace& place) { m_place = &place; }

    /// Throws LibraryError if the library is not in its place any more. What has been gathered is then
    /// undone: nobody would find it.
    void CheckPlace(sqlite3* database);

    /// Before a statement that writes. Opens the transaction if there is none.
    void BeforeWrite(sqlite3* database);

    /// After a statement that wrote, or failed to. A failing statement undoes only itself, but for a full
    /// disk or a failing device, where the engine takes back the whole transaction: then this throws
    /// RuntimeError and says how many earlier statements went with it.
    void AfterWrite(sqlite3* database, int code);

    /// Commits if the oldest gathered statement is older than the maximum age. Called before every statement.
    void CommitIfDue(sqlite3* database);

    /// The same, called before each file or folder of a run. If the one before was slow, the next one may be
    /// so too, and even what has just been written must not be held open over it.
    void CommitBetweenFiles(sqlite3* database);

    /// Throws RuntimeError if the file can't be written or is not in its place any more; the gathered
    /// statements are then undone.
    void Commit(sqlite3* database);

private:
    Clock::duration m_maximumAge;
    std::function<Clock::time_point()> m_now;
    LibraryPlace* m_place = nullptr;
    std::size_t m_gathered = 0; ///< Statements since the last commit.
    Clock::time_point m_firstWrite;
    Clock::time_point m_lastFile; ///< When CommitBetweenFiles was called last.
};

} // namespace quavernet::sqlite
