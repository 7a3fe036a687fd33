// Loads any bytes as a playlist into the player. The files that are there are a few known ones, so that a
// slow second reading can tell which entries must come, and nothing else may be looked up.
#include "platform/CodePage.h"
#include "playback/PlayQueue.h"
#include "support/RecordingPlayerView.h"
#include "support/ScanDoubles.h"
#include "support/ScriptedPlayer.h"
#include "support/TemporaryFolder.h"

#include "FuzzInput.h"
#include "FuzzServices.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace quavernet;
using fuzz::Require;

const std::vector<std::string> Known = {"/m/a.mp3", "/m/it's.OGG", "/m/\xFC.wav", "/m/\xC3\xA4.txt",
                                        "/m/.#x"};

/// Refuses to be asked for anything but a full path of this machine.
class KnownFiles : public test::ChosenVolumes {
public:
    bool FileExists(const std::string& path) override {
        Require(path.starts_with('/') && path.find("//") == std::string::npos &&
                path.find('\0') == std::string::npos);
        return std::find(Known.begin(), Known.end(), path) != Known.end();
    }
};

struct Line {
    std::string bytes;
    std::string decoded;
};

/// The lines that are no comments.
std::vector<Line> SlowReading(std::string bytes) {
    std::vector<Line> lines;
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
        if (line.empty() || line.front() != '#') {
            lines.push_back({line, IsValidUtf8(line) ? line : FromWindows1252(line)});
        }
    }
    return lines;
}

/// The entries of a playlist; without the check also those that name nothing that is there.
std::vector<std::string> Expected(const std::vector<Line>& lines, bool checkExists) {
    std::vector<std::string> paths;
    for (const Line& line : lines) {
        const auto isKnown = [](const std::string& path) {
            return std::find(Known.begin(), Known.end(), path) != Known.end();
        };
        if (isKnown(line.bytes)) {
            paths.push_back(line.bytes);
        } else if (isKnown(line.decoded) || (!checkExists && !line.decoded.empty())) {
            paths.push_back(line.decoded);
        }
    }
    paths.resize(std::min(paths.size(), static_cast<std::size_t>(PlayQueue::MostEntries)));
    return paths;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    const std::string_view playlist = fuzz::TextOf(data, size);
    fuzz::WriteWhole(folder / "List.m3u", playlist);
    const std::vector<Line> lines = SlowReading(std::string(playlist));
    fuzz::FuzzServices fresh;
    static KnownFiles files;
    services.fileSystem = &files;

    std::vector<std::string> calls;
    test::ScriptedPlayer player{calls};
    test::RecordingPlayerView view{calls};
    PlayQueue queue{player, view};
    view.Show(queue);
    queue.Form_Load();
    for (const bool checkExists : {true, false}) {
        const std::vector<std::string> expected = Expected(lines, checkExists);
        queue.fGetM3u(1, folder / "List.m3u", checkExists);
        Require(queue.PathCount() == expected.size() && view.texts.size() == expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const std::string& path = queue.Path(static_cast<std::int32_t>(i + 1));
            Require(path == expected[i]);
            Require(view.texts[i] == path.substr(path.rfind('/') + 1));
        }
    }
    return 0;
}
