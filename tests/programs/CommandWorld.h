// What the program's commands work on without a screen: the real library behind a journal, the real files,
// and answers of a user who is not there. Used by the program that the reliability checks kill among its
// commands.
#pragma once

#include "CommandJournal.h"

#include "adapters/id3v2/TagLibComponent.h"
#include "adapters/posix/PosixFileSystem.h"
#include "adapters/sqlite/SqliteConnection.h"
#include "adapters/vorbis/OggCommentWriter.h"
#include "adapters/vorbis/OggInfoReader.h"
#include "app/DragState.h"
#include "app/MainModule.h"
#include "scanner/ScanDriver.h"
#include "support/Doubles.h"
#include "support/LongWorkDouble.h"
#include "support/RealFiles.h"
#include "support/ScanDoubles.h"
#include "tree/TreeModel.h"

#include <chrono>
#include <memory>
#include <string>

namespace quavernet {

struct CommandWorld {
    CommandWorld(const std::string& library, const std::string& journalPath,
                 std::chrono::milliseconds gathering = std::chrono::milliseconds(200))
        : journal(journalPath) {
        services.settings = &settings;
        services.files = &test::RealFiles();
        services.fileSystem = fileSystem.get();
        services.shell = &shell;
        services.msgBox = &msgBox;
        services.dialogs = &dialogs;
        services.events = &events;
        services.clock = &clock;
        services.oggInfo = &oggInfo;
        services.oggComments = &oggComments;
        services.createTagComponent = [] { return CreateTagLibComponent(test::RealFiles()); };
        mainModule.TagComponent = services.createTagComponent();
        auto real = CreateSqliteConnection({}, gathering);
        real->Open("Data Source=" + library);
        mainModule.Connection = std::make_unique<JournalConnection>(std::move(real), journal);
    }

    ~CommandWorld() {
        mainModule = MainModule();
        services = Services();
    }
    CommandWorld(const CommandWorld&) = delete;
    CommandWorld& operator=(const CommandWorld&) = delete;

    /// A run may be long: what the doubles keep of it is dropped.
    void Forget() {
        calls.clear();
        work.progressValues.clear();
        msgBox.shown.clear();
        dialogs.shown.clear();
        log.skipped.clear();
    }

    Journal journal;
    test::MapSettings settings;
    test::RecordingShell shell;
    test::ScriptedMsgBox msgBox;
    test::ScriptedDialogs dialogs;
    test::HandEvents events;
    test::HandClock clock;
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
    OggInfoReader oggInfo{test::RealFiles()};
    OggCommentWriter oggComments{test::RealFiles()};
    test::CallList calls;
    test::LongWorkDouble work{calls};
    test::LibraryViewsDouble views{calls};
    test::RecordingScanView view{calls};
    test::RecordingScanLog log{calls};
    ScanDriver driver{work, view, log};
    TreeModel tree;
    DragState drag;
};

} // namespace quavernet
