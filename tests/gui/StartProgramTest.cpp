#include "adapters/qt/QtShell.h"

#include "platform/RuntimeError.h"
#include "support/HostileTexts.h"
#include "support/TemporaryFolder.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <QTest>

#include <csignal>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quavernet::test {
namespace {

/// Starts a small program that notes what it was given.
class StartProgramTest : public ::testing::Test {
protected:
    ProgramCommand Command(const std::string& script, std::vector<std::string> arguments,
                           const std::string& afterwards = {}) {
        const std::string program = folder / "the program";
        WriteFile(program, "#!/bin/sh\n" + script + " > '" + noted + ".part'\nmv '" + noted + ".part' '" +
                               noted + "'\n" + afterwards + "\n");
        std::filesystem::permissions(program, std::filesystem::perms(0755));
        return {"", program, std::move(arguments)};
    }
    std::string Noted() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return std::filesystem::exists(noted); }));
        return ReadFile(noted);
    }
    int FailureOf(const std::string& program) {
        try {
            systemShell.StartProgram({"", program, {}});
        } catch (const RuntimeError& error) {
            EXPECT_NE(error.Description().find(program), std::string::npos) << error.Description();
            return error.Number();
        }
        return 0;
    }

    TemporaryFolder folder;
    const std::string noted = folder / "noted";
    QtShell systemShell{{}};
};

TEST_F(StartProgramTest, EachArgumentArrivesAsItIs) {
    std::vector<std::string> arguments{
        "-outdir=/a folder with blanks/", "",      "-delete", "not \xFC UTF-8", "\"quoted\" and 'quoted'",
        "$HOME `id` $(id) ; | & > <",     "*?[a]", "\\"};
    for (const std::string& text : HostileTexts()) {
        arguments.push_back(text.substr(0, text.find('\0')));
    }
    systemShell.StartProgram(Command("printf '%s\\n--\\n' \"$@\"", arguments));
    std::string expected;
    for (const std::string& argument : arguments) {
        expected += argument + "\n--\n";
    }
    EXPECT_EQ(Noted(), expected);
}

TEST_F(StartProgramTest, NobodyWaitsForItAndItIsNobodysChild) {
    // It ends with the folder.
    systemShell.StartProgram(
        Command("echo $PPID $$", {}, "while [ -d '" + folder.Path() + "' ]; do sleep 0.01; done"));
    std::istringstream facts(Noted());
    pid_t parent = 0;
    pid_t process = 0;
    facts >> parent >> process;
    EXPECT_EQ(::kill(process, 0), 0) << "it is still running";
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a child that nobody would wait for";
    EXPECT_NE(parent, ::getpid());
    EXPECT_NE(::getsid(process), ::getsid(0)) << "it goes on when the terminal is closed";
}

TEST_F(StartProgramTest, NothingThatIsOpenHereStaysOpenThere) {
    const int open = ::open("/dev/null", O_RDONLY);
    const std::string number = std::to_string(open);
    systemShell.StartProgram(
        Command("for n in 0 1 2 " + number + "; do [ -e /proc/$$/fd/$n ] && echo $n; done", {}));
    EXPECT_EQ(Noted(), "0\n1\n2\n");
    ::close(open);
}

TEST_F(StartProgramTest, WhatKeepsItFromRunningIsAFailure) {
    EXPECT_EQ(FailureOf(folder / "none"), ErrorNumber::FileNotFound);
    WriteFile(folder / "no program", "");
    EXPECT_EQ(FailureOf(folder / "no program"), ErrorNumber::PermissionDenied);
    EXPECT_EQ(FailureOf(folder.Path()), ErrorNumber::PermissionDenied);
    WriteFile(folder / "noise", "\x01\x02\x03");
    std::filesystem::permissions(folder / "noise", std::filesystem::perms(0755));
    EXPECT_EQ(FailureOf(folder / "noise"), ErrorNumber::InvalidProcedureCall);
    try {
        systemShell.StartProgram(Command("echo", std::vector<std::string>(200, std::string(100000, 'x'))));
        ADD_FAILURE() << "more than the system passes on";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::OutOfMemory);
    }
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
}

} // namespace
} // namespace quavernet::test
