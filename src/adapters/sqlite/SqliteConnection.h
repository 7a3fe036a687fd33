// The library engine on SQLite.
#pragma once

#include "platform/ADODB.h"
#include "platform/RegionalSettings.h"

#include <chrono>
#include <memory>

namespace quavernet {

/// A connection that is not open yet. Date texts of statements are read, and date columns shown, in the forms
/// of `regional`. Commits are gathered for `longestGathering` at most, seen at the next statement.
std::unique_ptr<ADODB::Connection>
CreateSqliteConnection(const RegionalSettings& regional,
                       std::chrono::steady_clock::duration longestGathering = std::chrono::milliseconds(200));

} // namespace quavernet
