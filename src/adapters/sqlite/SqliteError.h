// The engine's errors as the program's failure types.
#pragma once

#include "platform/LibraryError.h"

#include <optional>
#include <string>

struct sqlite3;

namespace quavernet::sqlite {

/// What a failure of the connection says about the library; nothing if only a statement has failed. To be
/// asked before the connection does anything else.
std::optional<LibraryFault> FaultOf(sqlite3* database, int code);

/// Throws LibraryError or RuntimeError with the engine's code and the text of the connection's last error.
[[noreturn]] void ThrowError(sqlite3* database, int code);

/// The same with what has been kept of a failure.
[[noreturn]] void ThrowError(sqlite3* database, int code, std::optional<LibraryFault> fault,
                             const std::string& text);

/// Throws unless the code says that the call succeeded.
void Check(sqlite3* database, int code);

/// Runs statements that are the adapter's own.
void RunInternal(sqlite3* database, const char* statements);

} // namespace quavernet::sqlite
