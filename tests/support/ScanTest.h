// Base of tests that run whole scans: a music folder, a library behind a recorder, recording window and log.
#pragma once

#include "scanner/ScanDriver.h"
#include "support/RecordingConnection.h"
#include "support/ScanDoubles.h"
#include "support/SmallAudio.h"
#include "support/TestLibrary.h"

#include <filesystem>
#include <string>
#include <vector>

namespace quavernet::test {

class ScanTest : public LibraryTest {
protected:
    ScanTest() : connection(RecordingConnection::Install()) {
        services.fileSystem = &volumes;
        dialogs.folder = music.Path();
    }

    /// Writes a file below the music folder; missing folders are made.
    void Write(const std::string& name, const std::string& bytes = "x") {
        std::filesystem::create_directories(std::filesystem::path(music / name).parent_path());
        WriteBytes(music / name, bytes);
    }
    void WriteMp3(const std::string& name) { Write(name, Mp3Bytes("Song of " + name, "Blue", "Best")); }

    void Scan() { driver.StartScan(); }

    /// Stored paths without the music folder, in the order in which they were stored.
    std::vector<std::string> StoredPaths() {
        std::vector<std::string> paths;
        for (const std::string& path : Rows("Select Path from Files order by File_id")) {
            paths.push_back(path.substr(music.Path().size() + 1));
        }
        return paths;
    }

    /// Recorded calls that begin with `start`.
    std::vector<std::string> CallsOf(const std::string& start) const {
        std::vector<std::string> result;
        for (const std::string& call : calls) {
            if (call.starts_with(start)) {
                result.push_back(call);
            }
        }
        return result;
    }

    TemporaryFolder music;
    ChosenVolumes volumes;
    RecordingConnection& connection;
    CallList calls;
    LongWorkDouble work{calls};
    RecordingScanView view{calls};
    RecordingScanLog log{calls};
    RecordingOggPass ogg;
    ScanDriver driver{work, view, log, &ogg};
};

} // namespace quavernet::test
