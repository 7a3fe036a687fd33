// Base of the tests of the details dialog's logic: a real library that knows real files, and the services
// that read and write them.
#pragma once

#include "support/RealAudio.h"
#include "support/TagBytes.h"
#include "support/TestLibrary.h"

#include "adapters/id3v2/TagLibComponent.h"
#include "adapters/posix/PosixFileSystem.h"
#include "adapters/vorbis/OggInfoReader.h"
#include "editing/FileDetails.h"
#include "library/SqlQuote.h"
#include "platform/VorbisCommentTool.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quavernet::test {

/// Notes what is written; lists what the test wants to be there.
class OggCommentsDouble : public VorbisCommentTool {
public:
    std::vector<std::string> List(const std::string& path) override {
        listed.push_back(path);
        return old;
    }
    void Write(const std::string& path, const std::vector<std::string>& comments) override {
        if (failure) {
            throw *failure;
        }
        written.emplace_back(path, comments);
    }

    std::vector<std::string> old;
    std::vector<std::string> listed;
    std::vector<std::pair<std::string, std::vector<std::string>>> written;
    std::optional<RuntimeError> failure;
};

class DetailsFixture : public LibraryTest {
protected:
    DetailsFixture() {
        services.fileSystem = fileSystem.get();
        services.oggInfo = &oggInfo;
        services.oggComments = &oggComments;
        services.createTagComponent = [] { return CreateTagLibComponent(RealFiles()); };
        mainModule.TagComponent = services.createTagComponent();
    }

    /// Puts a file of these bytes into the folder and a row for it into the library; gives its path.
    std::string AddBytes(const std::string& name, const std::string& bytes) {
        const std::string path = folder / name;
        WriteFile(path, bytes);
        AddRow(path);
        return path;
    }
    std::string AddCopy(const std::string& source, const std::string& name) {
        return AddBytes(name, ReadFile(source));
    }
    void AddRow(const std::string& path) {
        const std::string extension = std::filesystem::path(path).extension().string().substr(1);
        Execute("Insert into Files (Name, Path, Extension_id, Inter_id, Title_id, Album_id, Genre_id) "
                "select '" +
                SqlQuote(std::filesystem::path(path).filename().string()) + "', '" + SqlQuote(path) +
                "', Extension_id, 0, 0, 0, 7 from Extensions where Extension = '" + extension + "'");
    }

    static std::vector<std::string> TagSwitches() {
        return {"--tt", "Titel", "--ta", "Künstler", "--tl", "Größe",
                "--ty", "2003",  "--tc", "Wort",     "--tg", "17"};
    }
    static std::string Mp3With(std::vector<std::string> switches) {
        switches.insert(switches.begin(), {"-b", "128"});
        return RealMp3(switches);
    }
    static std::string TaggedMp3(const char* kind) {
        std::vector<std::string> switches = TagSwitches();
        switches.emplace_back(kind);
        return Mp3With(switches);
    }

    FileDetails Load(const std::string& path) { return File().LoadDetails(path, {"Abba", "Waterloo"}); }

    /// Made when it is first used: after the services.
    DetailsFile& File() {
        if (!m_file) {
            m_file = std::make_unique<DetailsFile>();
        }
        return *m_file;
    }

    TemporaryFolder folder;
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
    OggInfoReader oggInfo{RealFiles()};
    OggCommentsDouble oggComments;

private:
    std::unique_ptr<DetailsFile> m_file;
};

} // namespace quavernet::test
