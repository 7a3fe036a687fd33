// The engine's errors as the program's one failure type.
#pragma once

#include <string>

struct sqlite3;

namespace quavernet::sqlite {

/// Throws RuntimeError with the engine's code and the text of the connection's last error.
[[noreturn]] void ThrowError(sqlite3* database, int code);

/// Throws unless the code says that the call succeeded.
void Check(sqlite3* database, int code);

/// Runs statements that are the adapter's own.
void RunInternal(sqlite3* database, const char* statements);

} // namespace quavernet::sqlite
