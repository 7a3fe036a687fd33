// How a scan and a drop share the process-wide record, whose values carry over from file to file: each works
// on a copy of its own and puts that back here. Called by ScanDriver and AddDroppedFiles.
#pragma once

#include "app/MainModule.h"

namespace quavernet {

/// Puts a handler's own record back into mainModule.CurrentFile at the end of its scope, also after a
/// failure.
class PutBack {
public:
    explicit PutBack(const CurrentFile& file) : m_file(file) {}
    ~PutBack() { mainModule.CurrentFile = m_file; }
    PutBack(const PutBack&) = delete;
    PutBack& operator=(const PutBack&) = delete;

private:
    const CurrentFile& m_file;
};

} // namespace quavernet
