// Another program that writes to a library and ends without closing it.
#pragma once

#include "support/TestLibrary.h"

#include <string>

#include <sys/wait.h>
#include <unistd.h>

namespace quavernet::test {

/// Runs and commits one statement in a process of its own, which then ends at once: what it wrote stays in
/// the log beside the library. True if that process came so far.
inline bool WriteAndDie(const std::string& libraryPath, const std::string& statement) {
    const pid_t child = ::fork();
    if (child == 0) {
        try {
            const auto connection = OpenLibrary(libraryPath);
            connection->Execute(statement);
            connection->Commit();
            ::_exit(0);
        } catch (...) {
            ::_exit(1);
        }
    }
    int status = -1;
    return child > 0 && ::waitpid(child, &status, 0) == child && status == 0;
}

} // namespace quavernet::test
