// Loads any bytes as a playlist into the player. The files that are there are a few known ones, so that a
// slow second reading can tell which entries must come, and nothing else may be looked up.
#include "app/ScopedValue.h"
#include "playback/PlayQueue.h"
#include "support/RecordingPlayerView.h"
#include "support/ScriptedPlayer.h"
#include "support/TemporaryFolder.h"
#include "tree/PlaylistFile.h"

#include "FuzzInput.h"
#include "FuzzServices.h"
#include "KnownFiles.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace quavernet;
using fuzz::Require;

std::vector<std::string> AllKnown() {
    std::vector<std::string> all = fuzz::KnownAudio;
    all.insert(all.end(), fuzz::KnownOthers.begin(), fuzz::KnownOthers.end());
    return all;
}

/// The entries of a playlist; without the check also those that name nothing that is there.
std::vector<std::string> Expected(const std::vector<fuzz::PlaylistLine>& lines, bool checkExists) {
    static const std::vector<std::string> all = AllKnown();
    std::vector<std::string> paths;
    for (const fuzz::PlaylistLine& line : lines) {
        if (line.bytes.starts_with('#')) {
            continue;
        }
        std::string path = line.FileAmong(all);
        if (path.empty() && !checkExists) {
            path = line.decoded;
        }
        if (!path.empty()) {
            paths.push_back(path);
        }
    }
    paths.resize(std::min(paths.size(), static_cast<std::size_t>(PlayQueue::MostEntries)));
    return paths;
}

class OneFile : public test::ChosenVolumes {
public:
    explicit OneFile(const std::string& path) : m_path(path) {}
    bool FileExists(const std::string& path) override { return path == m_path; }

private:
    const std::string& m_path;
};

/// Whatever bytes a file's path has: it is written on one line, which names it and nothing else.
void RequireThatItsLineNamesIt(const std::string& path) {
    OneFile file(path);
    const ScopedValue<FileSystemObject*> known(services.fileSystem, &file);
    const std::string line = LineOfFile(path);
    Require(line.find_first_of("\r\n") == std::string::npos);
    const bool isWritten = path.find('\0') == std::string::npos && path.find("//") == std::string::npos &&
                           path.find("/./") == std::string::npos;
    Require(FileOfLine(line) == (isWritten ? path : std::string()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    const std::string_view playlist = fuzz::TextOf(data, size);
    fuzz::WriteWhole(folder / "List.m3u", playlist);
    const std::vector<fuzz::PlaylistLine> lines = fuzz::SlowReading(std::string(playlist));
    fuzz::FuzzServices fresh;
    RequireThatItsLineNamesIt("/" + std::string(playlist));
    static fuzz::KnownFiles files;
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
