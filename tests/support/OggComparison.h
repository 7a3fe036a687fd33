// The comparison that the Ogg reader rests on: the same files described by the real ogginfo and in process.
#pragma once

#include "support/OggFiles.h"
#include "support/RealFiles.h"
#include "support/TemporaryFolder.h"

#include "adapters/vorbis/OggInfoReader.h"
#include "inspect/OggInfoText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace quavernet {

inline void PrintTo(const OggFileInfo& file, std::ostream* out) {
    *out << "{path " << file.path << ", bit rate " << file.bitRate << ", title " << file.title
         << ", performer " << file.performer << ", album " << file.album << ", genre " << file.genre
         << ", size " << file.size << ", length " << file.length << ", comment " << file.comment << ", year "
         << file.year << ", frequency " << file.frequency << ", channels " << file.channels << ", failure "
         << file.failure << "}";
}

} // namespace quavernet

namespace quavernet::test {

/// The output's lines but for the warnings about the order of pages, which carry no text of the file and hold
/// no key, and the average rate of a stream without a length, which is no number.
inline std::vector<std::string> TellingLines(const std::string& output) {
    static constexpr std::array<std::string_view, 13> untold = {
        "WARNING: Hole in data",          "WARNING: sequence number gap",
        "WARNING: discontinuity",         "WARNING: Could not decode Vorbis header",
        "WARNING: illegally placed page", "WARNING: stream start flag",
        "WARNING: granulepos in stream",  "WARNING: Invalid header page",
        "WARNING: Vorbis stream",         "This indicates a corrupt Ogg file",
        "Negative or zero granulepos",    "Note: Stream",
        "\tAverage bitrate: -nan",
    };
    std::vector<std::string> lines;
    std::size_t at = 0;
    while (at < output.size()) {
        const auto end = std::min(output.find('\n', at), output.size());
        const std::string line = output.substr(at, end - at);
        at = end + 1;
        if (std::none_of(untold.begin(), untold.end(),
                         [&](std::string_view start) { return line.starts_with(start); })) {
            lines.push_back(line);
        }
    }
    return lines;
}

class OggComparison : public ::testing::Test {
protected:
    std::string Write(const std::string& name, const std::string& bytes) {
        const std::string path = folder / name;
        WriteWhole(path, bytes);
        return path;
    }

    /// Expects line for line what the real tool prints for the files, and the same parsed values. The
    /// result is those values.
    std::vector<OggFileInfo> ExpectAsTheTool(const std::vector<std::string>& paths) {
        const std::string real = RealOggInfo(paths);
        EXPECT_NE(real, "") << "ogginfo is missing";
        const std::string own = OggInfoReader(RealFiles()).Run(paths);
        EXPECT_EQ(TellingLines(own), TellingLines(real));
        EXPECT_EQ(ReadOggInfo(own), ReadOggInfo(real));
        return ReadOggInfo(own);
    }

    /// The same for one file, of which the tool prints a path.
    OggFileInfo ExpectAsTheTool(const std::string& name, const std::string& bytes) {
        const auto files = ExpectAsTheTool({Write(name, bytes)});
        EXPECT_FALSE(files.empty());
        return files.empty() ? OggFileInfo() : files.back();
    }

    TemporaryFolder folder;
};

} // namespace quavernet::test
