#include "app/CommandRegistry.h"

#include "app/MainModule.h"
#include "platform/RuntimeError.h"
#include "support/ControlsDouble.h"
#include "support/LogicTest.h"

namespace quavernet::test {

namespace {

class CommandRegistryTest : public LogicTest {
protected:
    std::string FailureOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const RuntimeError& failure) {
            return std::to_string(failure.Number()) + " " + failure.Description();
        }
        return "none";
    }

    CommandRegistry commands{{"mnuOne", "mnuTwo", "cancel"}};
    int runs = 0;
};

} // namespace

TEST_F(CommandRegistryTest, ARegisteredCommandRunsByItsName) {
    commands.Register("mnuOne", [this] { ++runs; });
    EXPECT_TRUE(commands.Contains("mnuOne"));
    EXPECT_TRUE(commands.Run("mnuOne"));
    EXPECT_EQ(runs, 1);
}

TEST_F(CommandRegistryTest, ANameWithoutACommandDoesNothing) {
    EXPECT_FALSE(commands.Contains("mnuTwo"));
    EXPECT_FALSE(commands.Run("mnuTwo"));
    EXPECT_FALSE(commands.Run("mnuNowhere"));
}

TEST_F(CommandRegistryTest, WhileACommandActsAloneNoOtherDoesAndNotTheSameAgain) {
    commands.RegisterForScan("cancel", [this] { ++runs; });
    commands.Register("mnuOne", [this] { ++runs; });
    commands.RegisterAlone("mnuTwo", [this] {
        EXPECT_FALSE(commands.Run("mnuOne"));
        EXPECT_FALSE(commands.Run("mnuTwo"));
        EXPECT_EQ(runs, 0);
        EXPECT_TRUE(commands.Run("cancel"));
        EXPECT_FALSE(commands.Run("mnuOne")) << "still";
    });
    EXPECT_TRUE(commands.Run("mnuTwo"));
    EXPECT_TRUE(commands.Run("mnuOne"));
    EXPECT_EQ(runs, 2);
}

TEST_F(CommandRegistryTest, ACommandThatActedAloneAndFailedHoldsNothingBack) {
    commands.Register("mnuOne", [this] { ++runs; });
    commands.RegisterAlone("mnuTwo", [] { throw RuntimeError(6, "Overflow"); });
    EXPECT_THROW(commands.Run("mnuTwo"), RuntimeError);
    EXPECT_TRUE(commands.Run("mnuOne"));
}

TEST_F(CommandRegistryTest, AnUnknownNameFailsAndIsNamed) {
    EXPECT_EQ(FailureOf([this] { commands.Register("mnuThree", [] {}); }),
              "5 Invalid procedure call or argument: mnuThree is in no menu and on no toolbar");
    EXPECT_FALSE(commands.Contains("mnuThree"));
}

TEST_F(CommandRegistryTest, ADoubledNameFailsAndTheFirstCommandStays) {
    commands.Register("mnuOne", [this] { ++runs; });
    EXPECT_EQ(FailureOf([this] { commands.RegisterMark("mnuOne"); }),
              "5 Invalid procedure call or argument: mnuOne is registered twice");
    commands.Run("mnuOne");
    EXPECT_EQ(runs, 1);
}

TEST_F(CommandRegistryTest, BothItemsOfAPairSetBothMarksAndTellTheNewOne) {
    ControlsDouble controls;
    std::vector<bool> marks;
    commands.RegisterMarkPair("mnuOne", "mnuTwo", controls, [&](bool checked) { marks.push_back(checked); });
    controls.checked = {"mnuTwo"};
    commands.Run("mnuTwo");
    EXPECT_EQ(controls.checked, (std::set<std::string>{"mnuOne", "mnuTwo"}));
    controls.checked = {"mnuTwo"};
    commands.Run("mnuOne");
    EXPECT_EQ(controls.checked, std::set<std::string>());
    EXPECT_EQ(marks, (std::vector<bool>{true, false}));
}

TEST_F(CommandRegistryTest, WhileAScanRunsOnlyItsOwnCommandRuns) {
    commands.Register("mnuOne", [this] { ++runs; });
    commands.RegisterForScan("cancel", [this] { runs += 10; });
    mainModule.ScanRunning = true;
    EXPECT_FALSE(commands.Run("mnuOne"));
    EXPECT_TRUE(commands.Run("cancel"));
    EXPECT_EQ(runs, 10);
    mainModule.ScanRunning = false;
    EXPECT_TRUE(commands.Run("mnuOne"));
    EXPECT_TRUE(commands.Run("cancel"));
    EXPECT_EQ(runs, 21);
}

TEST_F(CommandRegistryTest, AFailureOfACommandPassesThrough) {
    commands.Register("mnuOne", [] { throw RuntimeError(1, "no"); });
    EXPECT_EQ(FailureOf([this] { commands.Run("mnuOne"); }), "1 no");
}

} // namespace quavernet::test
