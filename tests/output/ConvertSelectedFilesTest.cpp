#include "output/ConvertSelectedFiles.h"

#include "adapters/posix/PosixFileSystem.h"
#include "app/SettingFailure.h"
#include "support/LogicTest.h"
#include "support/LongWorkDouble.h"
#include "support/TemporaryFolder.h"
#include "support/TestFiles.h"

#include <filesystem>

namespace quavernet::test {
namespace {

/// A box that writes down when it came up.
class BoxInCalls : public ScriptedMsgBox {
public:
    explicit BoxInCalls(CallList& calls) : m_calls(calls) {}
    Answer ShowWithDetails(const std::string& text, const std::string& details, const std::string& title,
                           Icon icon, Buttons buttons) override {
        m_calls.push_back("box");
        return ScriptedMsgBox::ShowWithDetails(text, details, title, icon, buttons);
    }

private:
    CallList& m_calls;
};

/// The same for the start of a program.
class ShellInCalls : public RecordingShell {
public:
    explicit ShellInCalls(CallList& calls) : m_calls(calls) {}
    void StartProgram(const ProgramCommand& command) override {
        m_calls.push_back("start");
        RecordingShell::StartProgram(command);
    }

private:
    CallList& m_calls;
};

class ConvertSelectedFilesTest : public LogicTest {
protected:
    using Texts = std::vector<std::string>;

    ConvertSelectedFilesTest() {
        services.fileSystem = fileSystem.get();
        services.msgBox = &boxes;
        services.shell = &starts;
        starts.programFolder = "/opt/player";
        settings.values["ShowKonvert"] = "0";
    }

    void Select(const std::vector<std::string>& paths) {
        for (const std::string& path : paths) {
            mainModule.FilePaths.Add(path);
            mainModule.SelectedRows.Add(static_cast<std::int32_t>(mainModule.FilePaths.Count()));
        }
    }
    ProgramCommand Convert() {
        ConvertSelectedFiles(work, [this] {
            calls.push_back("options");
            if (onOptions) {
                onOptions();
            }
        });
        return starts.started.back();
    }
    /// The line after the path of the encoder.
    std::string Parameters() {
        const std::string text = Convert().Text;
        const std::string before = "/opt/player/bladeenc ";
        EXPECT_EQ(text.substr(0, before.size()), before);
        return text.substr(before.size());
    }
    Texts Arguments() { return Convert().Arguments; }

    CallList calls;
    LongWorkDouble work{calls};
    BoxInCalls boxes{calls};
    ShellInCalls starts{calls};
    std::function<void()> onOptions;
    TemporaryFolder folder;
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
};

TEST_F(ConvertSelectedFilesTest, TwoFilesWithTheFirstSettingsAreEncodedAt128KilobitsBesideThemselves) {
    Select({"/music/one.wav", "/music/the second.wav"});
    const ProgramCommand command = Convert();
    EXPECT_EQ(command.Text,
              "/opt/player/bladeenc  -quit  -128  \"/music/one.wav\" \"/music/the second.wav\"");
    EXPECT_EQ(command.Program, "/opt/player/bladeenc");
    EXPECT_EQ(command.Arguments, (Texts{"-quit", "-128", "/music/one.wav", "/music/the second.wav"}));
}

TEST_F(ConvertSelectedFilesTest, EveryOptionAtOnceStandsInItsPlaceOfTheLine) {
    std::filesystem::create_directory(folder / "out");
    settings.values = {
        {"ShowKonvert", "0"},          {"KonvertBitrate", "320"}, {"KonvertTarget", folder / "out/"},
        {"KonvertMonoStereo", "mono"}, {"KonvertCombine", "1"},   {"KonvertNoGap", "1"},
        {"KonvertDelete", "1"}};
    Select({"/music/one.wav"});
    EXPECT_EQ(Parameters(), " -quit  -320  -outdir=" + (folder / "out/") +
                                "  -mono  -concat  -nogap  -delete  \"/music/one.wav\"");
    EXPECT_EQ(Arguments(), (Texts{"-quit", "-320", "-outdir=" + (folder / "out/"), "-mono", "-concat",
                                  "-nogap", "-delete", "/music/one.wav"}));
}

TEST_F(ConvertSelectedFilesTest, EachBitRateHasItsSwitch) {
    for (const char* rate :
         {"32", "40", "48", "56", "64", "80", "96", "112", "128", "160", "192", "224", "256", "320"}) {
        settings.values["KonvertBitrate"] = rate;
        EXPECT_EQ(Parameters(), " -quit  -" + std::string(rate) + " ");
        EXPECT_EQ(Arguments(), (Texts{"-quit", "-" + std::string(rate)}));
    }
}

TEST_F(ConvertSelectedFilesTest, AnyOtherBitRateAddsNoSwitch) {
    for (const char* rate : {"100", "", " 128", "128 ", "0128", "128,0", "-128", "3", "quit"}) {
        settings.values["KonvertBitrate"] = rate;
        EXPECT_EQ(Parameters(), " -quit ") << rate;
        EXPECT_EQ(Arguments(), Texts{"-quit"}) << rate;
    }
}

TEST_F(ConvertSelectedFilesTest, AnEmptySelectionStartsTheEncoderWithItsSwitchesOnly) {
    mainModule.FilePaths.Add("/music/not selected.wav");
    EXPECT_EQ(Parameters(), " -quit  -128 ");
    EXPECT_EQ(Arguments(), (Texts{"-quit", "-128"}));
}

TEST_F(ConvertSelectedFilesTest, EachSwitchStandsAloneWithItsBlanks) {
    for (const auto& [setting, value, name] : {std::tuple{"KonvertMonoStereo", "mono", "-mono"},
                                               {"KonvertCombine", "1", "-concat"},
                                               {"KonvertNoGap", "1", "-nogap"},
                                               {"KonvertDelete", "1", "-delete"}}) {
        settings.values = {{"ShowKonvert", "0"}, {setting, value}};
        EXPECT_EQ(Parameters(), " -quit  -128  " + std::string(name) + " ");
        EXPECT_EQ(Arguments(), (Texts{"-quit", "-128", name}));
    }
}

TEST_F(ConvertSelectedFilesTest, OnlyTheExactValueSwitchesSomethingOn) {
    settings.values["KonvertMonoStereo"] = "Mono";
    for (const char* name : {"KonvertCombine", "KonvertNoGap", "KonvertDelete"}) {
        settings.values[name] = "true";
    }
    EXPECT_EQ(Parameters(), " -quit  -128 ");
    settings.values["KonvertMonoStereo"] = "stereo";
    for (const char* name : {"KonvertCombine", "KonvertNoGap", "KonvertDelete"}) {
        settings.values[name] = "0";
    }
    EXPECT_EQ(Parameters(), " -quit  -128 ");
}

TEST_F(ConvertSelectedFilesTest, ATargetFolderWithBlanksIsOneArgumentAndUnquotedInTheLine) {
    std::filesystem::create_directory(folder / "my new files");
    const std::string target = settings.values["KonvertTarget"] = folder / "my new files";
    Select({"/music/one.wav"});
    EXPECT_EQ(Parameters(), " -quit  -128  -outdir=" + target + "  \"/music/one.wav\"");
    EXPECT_EQ(Arguments(), (Texts{"-quit", "-128", "-outdir=" + target, "/music/one.wav"}));
    EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(ConvertSelectedFilesTest, ATargetFolderThatIsGoneIsToldAndTheFilesGoToTheirSourceFolders) {
    settings.values["KonvertTarget"] = folder / "gone";
    Select({"/music/one.wav"});
    EXPECT_EQ(Parameters(), " -quit  -128  \"/music/one.wav\"");
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0],
              (ShownBox{"Der eingestellte Zielordner existiert nicht!\r\n"
                        "Die Dateien werden im Quellordner gespeichert.",
                        "Ordner/Laufwerk existiert nicht", MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok}));
    settings.values["Language"] = "ENG";
    Convert();
    EXPECT_EQ(boxes.shown[1],
              (ShownBox{"The chosen target folder does not exist!\r\n"
                        "The files will be saved in the source folder.",
                        "Folder/drive does not exist", MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok}));
}

TEST_F(ConvertSelectedFilesTest, AFileIsNoTargetFolder) {
    WriteFile(folder / "file", "");
    settings.values["KonvertTarget"] = folder / "file";
    EXPECT_EQ(Parameters(), " -quit  -128 ");
    EXPECT_EQ(boxes.shown.size(), 1U);
}

TEST_F(ConvertSelectedFilesTest, NamesOfEveryKindAreOneArgumentEach) {
    const Texts paths{"/music/a \"quoted\" name.wav", "/music/$HOME `id`;&|.wav", "/music/-delete.wav",
                      "/music/two\nlines.wav",        "/music/it's.wav",          "/music/not \xFC UTF-8.wav",
                      "/music/back\\slash\\.wav",     "/music/%1*?.wav"};
    Select(paths);
    Texts expected{"-quit", "-128"};
    std::string line = " -quit  -128 ";
    for (const std::string& path : paths) {
        expected.push_back(path);
        line += " \"" + path + "\"";
    }
    EXPECT_EQ(Arguments(), expected);
    EXPECT_EQ(Parameters(), line);
}

TEST_F(ConvertSelectedFilesTest, FilesStandInTheOrderOfTheSelectionWhateverTheirKind) {
    for (const char* path : {"/music/1.wav", "/music/2.mp3", "/music/3.wav"}) {
        mainModule.FilePaths.Add(path);
    }
    for (const std::int32_t row : {3, 1, 2}) {
        mainModule.SelectedRows.Add(row);
    }
    EXPECT_EQ(Arguments(), (Texts{"-quit", "-128", "/music/3.wav", "/music/1.wav", "/music/2.mp3"}));
}

TEST_F(ConvertSelectedFilesTest, TheFirstConversionShowsTheOptionsAndUsesWhatTheyStore) {
    settings.values.erase("ShowKonvert");
    onOptions = [this] { settings.values["KonvertBitrate"] = "64"; };
    EXPECT_EQ(Parameters(), " -quit  -64 ");
    EXPECT_EQ(calls, (CallList{"options", "panel 1: Konvertiere Dateien...", "start", "panel 1: "}));
}

TEST_F(ConvertSelectedFilesTest, TheOptionsAreShownOnlyWhileTheSettingIsOne) {
    for (const auto& [text, shown] :
         {std::pair{"1", true}, {"1,0", true}, {"0", false}, {"2", false}, {"-1", false}}) {
        settings.values["ShowKonvert"] = text;
        calls.clear();
        Convert();
        EXPECT_EQ(calls.front() == "options", shown) << text;
    }
    settings.values["ShowKonvert"] = "sometimes";
    EXPECT_THROW(Convert(), SettingError);
}

TEST_F(ConvertSelectedFilesTest, TheStatusPanelIsEmptiedAtOnceAndStandsWhileTheBoxIsOpen) {
    settings.values["KonvertTarget"] = folder / "gone";
    settings.values["Language"] = "ENG";
    Convert();
    EXPECT_EQ(calls, (CallList{"panel 1: Converting files...", "box", "start", "panel 1: "}));
}

TEST_F(ConvertSelectedFilesTest, ASelectionTooLargeForTheSystemIsToldInABoxAndTheProgramGoesOn) {
    starts.startFailure = RuntimeError(ErrorNumber::OutOfMemory, "Argument list too long: /opt/bladeenc");
    settings.values["ShowKonvert"] = "0";
    for (const char* language : {"GER", "ENG"}) {
        settings.values["Language"] = language;
        calls.clear();
        Convert();
        EXPECT_EQ(CallList(calls.begin() + 1, calls.end()), (CallList{"start", "box", "panel 1: "}));
    }
    EXPECT_EQ(boxes.shown, (std::vector<ShownBox>{
                               {"Es sind zu viele Dateien ausgewählt, um sie auf einmal zu konvertieren. "
                                "Wählen Sie weniger aus.",
                                "Konvertieren nicht möglich", MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok},
                               {"Too many files are selected to be converted at once. Select fewer of them.",
                                "Converting not possible", MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok}}));
}

TEST_F(ConvertSelectedFilesTest, AMissingEncoderIsAFailureThatNothingCatches) {
    starts.startFailure = RuntimeError(ErrorNumber::FileNotFound, "No such file: /opt/player/bladeenc");
    EXPECT_THROW(Convert(), RuntimeError);
    EXPECT_EQ(calls, (CallList{"panel 1: Konvertiere Dateien...", "start"}));
}

} // namespace
} // namespace quavernet::test
