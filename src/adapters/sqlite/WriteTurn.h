// Takes the library for writing, in turn with other running programs. Called where a transaction begins.
#pragma once

struct sqlite3;

namespace quavernet::sqlite {

/// Begins a transaction that may write. While another program writes, this waits as long as the connection's
/// busy handler does, and then throws LibraryError.
///
/// The engine's lock is free for an instant only between two transactions of a program that writes without a
/// pause, and one that waits asks for it now and then: it would never meet that instant. So whoever wants to
/// write holds the turn until it has the lock, and one that has just written has to wait for the turn.
void BeginWriting(sqlite3* database);

/// The connection waits for locks of others in small steps, 5 seconds at most.
void WaitForOthers(sqlite3* database);

} // namespace quavernet::sqlite
