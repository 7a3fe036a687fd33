// The base of logic tests: a fresh table of state, doubles for the services (but for the bytes of files),
// German regional settings.
#pragma once

#include "support/Doubles.h"
#include "support/RealFiles.h"

#include <gtest/gtest.h>

namespace quavernet::test {

class LogicTest : public ::testing::Test {
protected:
    LogicTest() {
        mainModule = MainModule();
        services = Services();
        services.settings = &settings;
        services.files = &RealFiles();
        services.shell = &shell;
        services.msgBox = &msgBox;
        services.dialogs = &dialogs;
        services.events = &events;
        services.clock = &clock;
        services.helpViewer = &helpViewer;
        services.desktop = &desktop;
    }
    ~LogicTest() override {
        mainModule = MainModule();
        services = Services();
    }

    MapSettings settings;
    RecordingShell shell;
    ScriptedMsgBox msgBox;
    ScriptedDialogs dialogs;
    HandEvents events;
    HandClock clock;
    RecordingHelpViewer helpViewer;
    RecordingDesktop desktop;
};

} // namespace quavernet::test
