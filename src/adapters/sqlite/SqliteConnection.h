// The library engine on SQLite. Made by the program's services; its source is the road of a statement, which
// docs/ARCHITECTURE.md tells in words.
#pragma once

#include "platform/ADODB.h"
#include "platform/RegionalSettings.h"

#include <chrono>
#include <memory>

namespace quavernet {

/// A connection that is not open yet. Date texts of statements are read, and date columns shown, in the forms
/// of `regional`. Commits are gathered for `longestGathering` at most, seen at the next statement. Queries
/// that follow each other closely may see the library as it was `longestRead` ago, but never inside a
/// WriteLock.
std::unique_ptr<ADODB::Connection>
CreateSqliteConnection(const RegionalSettings& regional,
                       std::chrono::steady_clock::duration longestGathering = std::chrono::milliseconds(200),
                       std::chrono::steady_clock::duration longestRead = std::chrono::milliseconds(1));

} // namespace quavernet
