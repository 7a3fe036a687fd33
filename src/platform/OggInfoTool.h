// What stands in for the command-line tool that describes Ogg files. The adapter lives in adapters/vorbis and
// reads in process; the scanner and the details dialog parse the text that comes back.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace quavernet {

/// Describes Ogg files.
class OggInfoTool {
public:
    virtual ~OggInfoTool() = default;

    /// The tool's output for the files, in their order: lines that end in LF, texts in UTF-8 (paths in their
    /// own bytes). A file that can't be opened gives one line that says so, a file that holds no Ogg data
    /// its "Processing file" line and an error line. Never fails.
    virtual std::string Run(const std::vector<std::string>& paths) = 0;

    /// A path as the output shows it. A line end in it would break its line: in its place is a NUL, which
    /// no path holds and no other line of the output.
    static std::string ShownPath(std::string path) {
        std::replace(path.begin(), path.end(), '\n', '\0');
        return path;
    }
    /// The path that ShownPath gave this for.
    static std::string PathOfShown(std::string shown) {
        std::replace(shown.begin(), shown.end(), '\0', '\n');
        return shown;
    }
};

} // namespace quavernet
