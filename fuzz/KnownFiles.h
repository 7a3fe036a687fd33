// The few files that are there while a playlist is read, and a slow reading of its lines, which tells what
// must come of them. Used by the targets that read playlists.
#pragma once

#include "platform/CodePage.h"
#include "support/ScanDoubles.h"

#include "FuzzInput.h"

#include <algorithm>
#include <string>
#include <vector>

namespace quavernet::fuzz {

/// The third one is not UTF-8; the last one is named in a playlist by its address alone.
inline const std::vector<std::string> KnownAudio = {"/m/a.mp3",        "/m/it's.OGG", "/m/\xFC.wav",
                                                    "/m/\xC3\xA4.mp3", "/m/#.mp3",    "/m/x\n/m/a.mp3"};
inline const std::vector<std::string> KnownOthers = {"/m/\xC3\xA4.txt", "/m/.#x"};
inline constexpr const char* AddressOfTheLast = "file:///m/x%0A/m/a.mp3";

inline bool IsIn(const std::vector<std::string>& paths, const std::string& path) {
    return std::find(paths.begin(), paths.end(), path) != paths.end();
}

/// Refuses to be asked for anything but a full path of this machine.
class KnownFiles : public test::ChosenVolumes {
public:
    bool FileExists(const std::string& path) override {
        Require(path.starts_with('/') && path.find("//") == std::string::npos &&
                path.find('\0') == std::string::npos);
        return IsIn(KnownAudio, path) || IsIn(KnownOthers, path);
    }
};

struct PlaylistLine {
    std::string bytes;
    std::string decoded;

    /// The file that it names among these; an empty text if there is none.
    std::string FileAmong(const std::vector<std::string>& paths) const {
        if (IsIn(paths, bytes)) {
            return bytes;
        }
        if (bytes == AddressOfTheLast) {
            return IsIn(paths, KnownAudio.back()) ? KnownAudio.back() : std::string();
        }
        return IsIn(paths, decoded) ? decoded : std::string();
    }
};

inline std::vector<PlaylistLine> SlowReading(std::string bytes) {
    std::vector<PlaylistLine> lines;
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        bytes.erase(0, 3);
    }
    while (!bytes.empty()) {
        const std::size_t end = bytes.find('\n');
        std::string line = bytes.substr(0, end);
        bytes = end == std::string::npos ? "" : bytes.substr(end + 1);
        if (end != std::string::npos && line.ends_with('\r')) {
            line.pop_back();
        }
        lines.push_back({line, IsValidUtf8(line) ? line : FromWindows1252(line)});
    }
    return lines;
}

} // namespace quavernet::fuzz
