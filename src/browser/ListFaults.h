// Rows of the library that the list can't show: no size, no length, or one that is no such number. Those that
// are there at the start are looked for by the start, and passed over by the loads and texts of the list.
#pragma once

#include "app/MainModule.h"
#include "platform/RuntimeError.h"

#include <string>

namespace quavernet {

/// Notes the faults of the whole library, whatever the filters show of it (mainModule.ListFaults). Throws
/// RuntimeError if the library can't be read.
void FindListFaults();

/// What has been noted, in one line for the status bar; empty if there was none.
std::string ListFaultsText();

/// What is known of a file's faults goes by its key: it may get another name in the run.
inline std::string ListFaultKey(const ADODB::Field& fileId) {
    return fileId.Text();
}

/// Runs one step of a row. A failure that was there at the start is passed over.
template <typename Step> void PassListFault(const ADODB::Field& fileId, Step&& step) {
    try {
        step();
    } catch (const RuntimeError& failure) {
        if (!mainModule.ListFaults.Knows(ListFaultKey(fileId), failure)) {
            throw;
        }
    }
}

} // namespace quavernet
