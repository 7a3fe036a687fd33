// The table of state and the services as a fuzz target's run begins: fresh, with doubles, German settings.
#pragma once

#include "app/MainModule.h"
#include "support/Doubles.h"
#include "support/RealFiles.h"

namespace quavernet::fuzz {

class FuzzServices {
public:
    FuzzServices() {
        mainModule = MainModule();
        services = Services();
        services.settings = &settings;
        services.files = &test::RealFiles();
        services.msgBox = &msgBox;
        services.dialogs = &dialogs;
        services.events = &events;
        services.clock = &clock;
    }
    ~FuzzServices() {
        mainModule = MainModule();
        services = Services();
    }
    FuzzServices(const FuzzServices&) = delete;
    FuzzServices& operator=(const FuzzServices&) = delete;

    test::MapSettings settings;
    test::ScriptedMsgBox msgBox;
    test::ScriptedDialogs dialogs;
    test::HandEvents events;
    test::HandClock clock;
};

} // namespace quavernet::fuzz
