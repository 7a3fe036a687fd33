// The library engine on SQLite.
#pragma once

#include "platform/ADODB.h"
#include "platform/RegionalSettings.h"

#include <memory>

namespace quavernet {

/// A connection that is not open yet. Date texts of statements are read, and date columns shown, in the forms
/// of `regional`.
std::unique_ptr<ADODB::Connection> CreateSqliteConnection(const RegionalSettings& regional);

} // namespace quavernet
