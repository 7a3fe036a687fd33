// Rows of the library that the list can't show: no size, no length, or one that is no such number. Those that
// are there at the start are noted by the first load of the list, or looked for by the start if it loads
// none; later loads and the texts of the list pass over them.
#pragma once

#include "app/MainModule.h"
#include "platform/RuntimeError.h"

#include <cstdint>
#include <string>

namespace quavernet {

/// Notes the faults of the whole library, whatever the filters show of it (mainModule.ListFaults). Throws
/// RuntimeError if the library can't be read.
void FindListFaults();

/// The same where it still has to be done (mainModule.ListFaultsDue), for a load of the list that has just
/// read these rows: if they are all files of the library, nothing is read again.
void NoteListFaults(const ADODB::RowBlock& rows, std::int64_t allFiles);

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
