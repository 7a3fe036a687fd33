#include "output/ConvertSelectedFiles.h"

#include "adapters/posix/PosixFileSystem.h"
#include "support/LogicTest.h"
#include "support/LongWorkDouble.h"
#include "support/TemporaryFolder.h"

#include <filesystem>

namespace quavernet::test {
namespace {

class ConvertSelectedFilesTest : public LogicTest {
protected:
    ConvertSelectedFilesTest() {
        services.fileSystem = fileSystem.get();
        shell.programFolder = "/opt/player";
        settings.values["ShowKonvert"] = "0";
    }

    void Select(const std::vector<std::string>& paths) {
        for (const std::string& path : paths) {
            mainModule.FilePaths.Add(path);
            mainModule.SelectedRows.Add(static_cast<std::int32_t>(mainModule.FilePaths.Count()));
        }
    }
    ProgramCommand Convert() {
        ConvertSelectedFiles(work, [this] { calls.push_back("options"); });
        return shell.started.at(0);
    }

    CallList calls;
    LongWorkDouble work{calls};
    TemporaryFolder folder;
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
};

TEST_F(ConvertSelectedFilesTest, TwoFilesWithTheFirstSettingsAreEncodedAt128KilobitsBesideThemselves) {
    Select({"/music/one.wav", "/music/the second.wav"});
    const ProgramCommand command = Convert();
    EXPECT_EQ(command.Text,
              "/opt/player/bladeenc  -quit  -128  \"/music/one.wav\" \"/music/the second.wav\"");
    EXPECT_EQ(command.Program, "/opt/player/bladeenc");
    EXPECT_EQ(command.Arguments,
              (std::vector<std::string>{"-quit", "-128", "/music/one.wav", "/music/the second.wav"}));
}

} // namespace
} // namespace quavernet::test
