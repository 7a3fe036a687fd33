// What stands in for the command-line tool that describes Ogg files. The adapter lives in platform/vorbis and
// reads in process; the scanner and the details dialog parse the text that comes back.
#pragma once

#include <string>
#include <vector>

namespace quavernet {

class OggInfoTool {
public:
    virtual ~OggInfoTool() = default;

    /// The tool's output for the files, in their order: lines that end in LF, texts in UTF-8 (paths in their
    /// own bytes). A file that can't be opened gives one line that says so, a file that holds no Ogg data
    /// its "Processing file" line and an error line. Never fails.
    virtual std::string Run(const std::vector<std::string>& paths) = 0;
};

} // namespace quavernet
