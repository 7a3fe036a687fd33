// The files that a playlist names, line by line. Called by the play queue.
#pragma once

#include "platform/TextLines.h"

#include <string>

namespace quavernet {

/// What lines that begin with "#" tell of a file is never used. A line is looked up only if it is a full path
/// (FileOfLine): nobody else's machine is asked for an address.
class M3uReader {
public:
    /// Opens the playlist. Without `checkExists` every line counts, also one that names no file that is
    /// there. Throws OpenError.
    M3uReader(const std::string& path, bool checkExists);

    /// Reads the next line; `path` is the file that it names, empty if it names none. False at the end.
    /// Throws RuntimeError 57 if the device fails.
    bool Next(std::string& path);

private:
    TextLines m_lines;
    bool m_checkExists;
    std::string m_line;
};

} // namespace quavernet
