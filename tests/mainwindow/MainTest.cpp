#include "mainwindow/Main.h"

#include "adapters/posix/PosixFileSystem.h"
#include "platform/RuntimeError.h"
#include "support/LongWorkDouble.h"
#include "support/NoTags.h"
#include "support/TestLibrary.h"
#include "support/Texts.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <set>

namespace quavernet::test {

namespace {

/// Knows names only. `appears` says whether what is made also comes to exist.
class NamedFiles : public FileSystemObject {
public:
    explicit NamedFiles(Texts& log) : m_log(log) {}

    std::unique_ptr<FolderWalk> GetFolder(const std::string&) override { return nullptr; }
    FileFacts GetFile(const std::string& path) override {
        if (!files.contains(path)) {
            throw RuntimeError(ErrorNumber::FileNotFound, "File not found");
        }
        return {};
    }
    bool FileExists(const std::string& path) override {
        looked.insert(path);
        return files.contains(path);
    }
    bool FolderExists(const std::string& path) override {
        looked.insert(path);
        return folders.contains(path);
    }
    void CreateFolder(const std::string& path) override {
        m_log.push_back("create " + path);
        if (createFails) {
            throw RuntimeError(ErrorNumber::PathFileAccess, "Path/File access error");
        }
        if (folderAppears) {
            folders.insert(path);
        }
    }
    void CopyFile(const std::string& source, const std::string& target) override {
        m_log.push_back("copy " + source + " to " + target);
        if (copyFails) {
            files.insert(quicker.begin(), quicker.end());
            throw copyFailure;
        }
        if (fileAppears) {
            files.insert(target);
        }
    }
    void RenameFile(const std::string&, const std::string&) override {}
    std::vector<std::string> LogicalDrives() override { return {}; }
    std::optional<std::string> NetworkRoot(const std::string&) override { return std::nullopt; }

    std::set<std::string> files;
    std::set<std::string> folders;
    std::set<std::string> looked; ///< What was asked for.
    bool folderAppears = true;
    bool fileAppears = true;
    bool createFails = false;
    bool copyFails = false;
    RuntimeError copyFailure{ErrorNumber::FileNotFound, "File not found"};
    std::set<std::string> quicker; ///< Appear while the copy fails.

private:
    Texts& m_log;
};

/// Each look at it costs a second.
class TickingClock : public Clock {
public:
    DateTime Now() override {
        ++looks;
        DateTime time{2026, 11, 20, 14, 0, 0};
        time.minute = (looks - 1) / 60;
        time.second = (looks - 1) % 60;
        return time;
    }

    int looks = 0;
};

class NotedTags : public NoTags {
public:
    explicit NotedTags(Texts& log) { log.push_back("tag component"); }
};

constexpr const char* Folder = "/home/anna/Quavernet Database/";
constexpr const char* File = "/home/anna/Quavernet Database/Quavernet.db";
constexpr const char* Copy = "copy /opt/quavernet/Quavernet.db to /home/anna/Quavernet Database/Quavernet.db";

ShownBox LibraryBox(const std::string& details) {
    return {"Fehler beim Initialisieren der Datenbank!\nBitte wenden Sie sich an Ihren "
            "Systemadministrator oder an den Hersteller des Produkts.\nDas Programm wird beendet.",
            "Programm wird beendet", MsgBox::Icon::Critical, MsgBox::Buttons::Ok, details};
}
const std::string OfFile = std::string("\nDatenbank: ") + File;

class LocateDatabaseTest : public LogicTest {
protected:
    LocateDatabaseTest() {
        services.fileSystem = &files;
        services.clock = &ticking;
        shell.documents = "/home/anna";
        shell.programFolder = "/opt/quavernet";
    }
    /// The path, or "ended" and the exit code.
    std::string Located() {
        try {
            return LocateDatabase();
        } catch (const ProcessEnded& end) {
            return "ended " + std::to_string(end.exitCode);
        }
    }
    void ExpectFailureBox(const std::string& details) {
        msgBox.shown.clear();
        EXPECT_EQ(Located(), "ended 0");
        EXPECT_EQ(msgBox.shown, (std::vector<ShownBox>{LibraryBox(details)}));
    }

    Texts log;
    NamedFiles files{log};
    TickingClock ticking;
};

} // namespace

TEST_F(LocateDatabaseTest, AnExistingLibraryIsTakenAsItIs) {
    files.files.insert(File);
    EXPECT_EQ(Located(), File);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(ticking.looks, 0);
}

TEST_F(LocateDatabaseTest, AFirstStartMakesTheFolderAndCopiesTheTemplate) {
    EXPECT_EQ(Located(), File);
    EXPECT_EQ(log, (Texts{"create " + std::string(Folder), Copy}));
    EXPECT_TRUE(msgBox.shown.empty());
    EXPECT_EQ(ticking.looks, 2); // One per wait: each ends in its first round.
}

TEST_F(LocateDatabaseTest, ASecondLibraryFileIsNeverLookedFor) {
    const std::set<std::string> others{
        "/home/anna/Quavernet.db", "/home/anna/Quavernet Database/Quavernet.mdb",
        "/home/anna/Quavernet Database/Quavernet.db.1", "/opt/quavernet/Quavernet Database/Quavernet.db"};
    files.files = others;
    files.files.insert("/opt/quavernet/Quavernet.db");
    files.folders.insert(Folder);
    EXPECT_EQ(Located(), File);
    EXPECT_EQ(log, (Texts{Copy})) << "the template makes the library, whatever lies around";
    EXPECT_EQ(Located(), File);
    files.looked.erase(Folder);
    EXPECT_EQ(files.looked, std::set<std::string>{File});
}

TEST_F(LocateDatabaseTest, AnExistingFolderIsKept) {
    files.folders.insert(Folder);
    EXPECT_EQ(Located(), File);
    EXPECT_EQ(log, (Texts{Copy}));
}

TEST_F(LocateDatabaseTest, AFinalSlashOfTheDocumentsFolderIsNotDoubled) {
    shell.documents = "/home/anna/";
    shell.programFolder = "/opt/quavernet/";
    EXPECT_EQ(Located(), File);
    EXPECT_EQ(log, (Texts{"create " + std::string(Folder), Copy}));
}

TEST_F(LocateDatabaseTest, AFolderThatDoesNotAppearIsGivenUpAfterMoreThanTenSeconds) {
    files.folderAppears = false;
    ExpectFailureBox("");
    EXPECT_EQ(log, (Texts{"create " + std::string(Folder)}));
    EXPECT_EQ(ticking.looks, 12); // The start, and differences of 1 to 11 seconds.
}

TEST_F(LocateDatabaseTest, AFileThatDoesNotAppearIsGivenUpAfterMoreThanTenSeconds) {
    files.folders.insert(Folder);
    files.fileAppears = false;
    ExpectFailureBox("");
    EXPECT_EQ(ticking.looks, 12);
}

TEST_F(LocateDatabaseTest, EachWaitHasItsOwnTenSeconds) {
    files.folderAppears = true;
    files.fileAppears = false;
    ExpectFailureBox("");
    EXPECT_EQ(ticking.looks, 13);
}

TEST_F(LocateDatabaseTest, AFailingFolderOrCopyEndsTheStartAtOnce) {
    files.createFails = true;
    ExpectFailureBox("Der Grund: Path/File access error" + OfFile);
    EXPECT_EQ(log.size(), 1u);
    files.createFails = false;
    files.copyFails = true;
    ExpectFailureBox("Der Grund: File not found" + OfFile);
    EXPECT_EQ(ticking.looks, 1);
}

TEST_F(LocateDatabaseTest, ALibraryThatAnotherStartHasMadeMeanwhileIsTaken) {
    files.copyFails = true;
    files.copyFailure = RuntimeError(ErrorNumber::FileAlreadyExists, "File exists");
    files.quicker = {File};
    EXPECT_EQ(Located(), File);
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(LocateDatabaseTest, TheBoxTellsWhatIsInTheLibrarysPlace) {
    files.copyFails = true;
    files.copyFailure = RuntimeError(ErrorNumber::FileAlreadyExists, "File exists");
    ExpectFailureBox(
        "An der Stelle der Datenbank liegt eine Verknüpfung, deren Ziel fehlt, oder etwas anderes "
        "als eine gewöhnliche Datei." +
        OfFile + "\n\nSicherungskopien liegen nicht daneben.");
    files.folders.insert(File);
    ExpectFailureBox("An der Stelle der Datenbank liegt ein Ordner." + OfFile +
                     "\n\nSicherungskopien liegen nicht daneben.");
}

TEST_F(LocateDatabaseTest, WhatIsInTheDocumentsFoldersPlaceIsNamed) {
    const TemporaryFolder home;
    const auto realFiles = CreatePosixFileSystem();
    services.fileSystem = realFiles.get();
    const std::string documents = home / "Dokumente";
    shell.documents = documents;
    const auto box = [&](int error, const std::string& what) {
        return "Der Grund: " + std::string(std::strerror(error)) + ": " + what + "\nDatenbank: " + documents +
               "/Quavernet Database/Quavernet.db";
    };
    std::filesystem::create_symlink("/nowhere/Dokumente", documents);
    ExpectFailureBox(box(ENOENT, documents + " -> /nowhere/Dokumente"));
    std::filesystem::remove(documents);
    std::ofstream(documents) << "x";
    ExpectFailureBox(box(ENOTDIR, documents));
}

TEST_F(LocateDatabaseTest, AFullDiskOrAMissingRightIsTold) {
    files.copyFails = true;
    files.copyFailure = RuntimeError(ErrorNumber::DiskFull, "No space left on device");
    ExpectFailureBox("Auf dem Datenträger ist kein Platz mehr. Schaffen Sie Platz, und wiederholen Sie dann "
                     "den letzten Schritt." +
                     OfFile);
    files.copyFailure = RuntimeError(ErrorNumber::PermissionDenied, "Permission denied");
    ExpectFailureBox("Der Ordner der Datenbank ist schreibgeschützt, oder Ihnen fehlt das Recht, darin zu "
                     "schreiben." +
                     OfFile);
}

TEST_F(LocateDatabaseTest, AnUnknownDocumentsFolderIsAFailureAndMakesNoFolder) {
    shell.documents.reset();
    ExpectFailureBox("Der Grund: Path not found");
    EXPECT_TRUE(log.empty());
}

namespace {

class MainTest : public LibraryTest, public StartView {
protected:
    MainTest() {
        mainModule.Connection.reset();
        files.files.insert(libraryFolder / "Quavernet Database/Quavernet.db");
        std::filesystem::create_directory(libraryFolder / "Quavernet Database");
        CopyTemplate(libraryFolder / "Quavernet Database/Quavernet.db");
        services.fileSystem = &files;
        services.createTagComponent = [this] { return std::make_unique<NotedTags>(log); };
        shell.documents = libraryFolder.Path();
        views.onLoadTree = [this] { suppressedAtTree = mainModule.SuppressComboClick; };
        events.onDoEvents = [this] {
            log.push_back("events");
            suppressedAtEvents = suppressedAtEvents && mainModule.SuppressComboClick;
        };
    }

    std::string ScreenResolution() const override { return "1920x1080"; }
    void ShowMain() override {
        log.push_back("main");
        stateAtMain = mainModule.SuppressComboClick && !mainModule.PlayerOpen && !mainModule.TreeLoaded &&
                      mainModule.ScreenResolution == "1920x1080" && mainModule.Connection != nullptr &&
                      mainModule.TagComponent != nullptr;
        mainModule.LoadOverSearch = loadOverSearch;
    }
    void ShowSplash() override { log.push_back("splash"); }
    LongWork& Work() override { return work; }
    LibraryViews& Views() override { return views; }

    /// Runs the start; the exit code if it ended the process, -1 if it came through.
    int Start() {
        try {
            Main(*this);
        } catch (const ProcessEnded& end) {
            return end.exitCode;
        }
        return -1;
    }

    Texts log;
    LongWorkDouble work{log};
    LibraryViewsDouble views{log};
    NamedFiles files{log};
    bool stateAtMain = false;
    bool suppressedAtTree = false;
    bool suppressedAtEvents = true;
    bool loadOverSearch = false;
};

} // namespace

TEST_F(MainTest, TheStartRunsInItsOrder) {
    mainModule.TreeLoaded = true;
    mainModule.PlayerOpen = true;
    EXPECT_EQ(Start(), -1);
    EXPECT_EQ(log, (Texts{"tag component", "main", "splash", "events", "panel 1: Prüfe Datenbank...",
                          "events", "load ''", "tree", "events", "panel 1: Bereit!"}));
    EXPECT_TRUE(stateAtMain);
    EXPECT_TRUE(suppressedAtTree);
    EXPECT_TRUE(suppressedAtEvents);
    EXPECT_FALSE(mainModule.SuppressComboClick);
    EXPECT_EQ(mainModule.ConnectionString, "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" +
                                               (libraryFolder / "Quavernet Database/Quavernet.db"));
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(MainTest, TheDatabaseIsCheckedBetweenTheWindowsAndTheList) {
    EXPECT_EQ(Start(), -1);
    const auto at = [this](const std::string& entry) { return std::find(log.begin(), log.end(), entry); };
    ASSERT_NE(at("panel 1: Prüfe Datenbank..."), log.end());
    EXPECT_LT(at("splash"), at("panel 1: Prüfe Datenbank..."));
    EXPECT_LT(at("panel 1: Prüfe Datenbank..."), at("load ''"));
}

TEST_F(MainTest, LoadingOverTheSearchLeavesTheListEmpty) {
    loadOverSearch = true;
    EXPECT_EQ(Start(), -1);
    EXPECT_EQ(std::find(log.begin(), log.end(), "load ''"), log.end());
    EXPECT_NE(std::find(log.begin(), log.end(), "tree"), log.end());
    EXPECT_EQ(log.back(), "panel 1: Bereit!");
}

TEST_F(MainTest, FaultsOfTheListAreNamedWhetherItIsLoadedOrNot) {
    {
        const auto library = OpenLibrary(libraryFolder / "Quavernet Database/Quavernet.db");
        library->Execute("Insert into Files (Name, SizeInBytes) values ('x.mp3', 1)");
    }
    for (const bool overSearch : {false, true}) {
        mainModule.ListFaults = StartFaults();
        loadOverSearch = overSearch;
        EXPECT_EQ(Start(), -1);
        EXPECT_EQ(log.back(), "panel 1: Bereit! Fehler in der Liste: x.mp3 (94 - Invalid use of Null)");
        EXPECT_FALSE(mainModule.ListFaultsDue);
    }
}

TEST_F(MainTest, AMissingBrowserComponentEndsTheStart) {
    shell.browserVersion.reset();
    EXPECT_EQ(Start(), 0);
    EXPECT_EQ(msgBox.shown,
              (std::vector<ShownBox>{
                  {"Dieses Program benötigt mindestens Microsoft Internet Explorer 5.5!\nBitte "
                   "stellen Sie sicher, dass die neueste Version auf Ihrem System installiert ist.",
                   "Internet Explorer nicht gefunden", MsgBox::Icon::Critical, MsgBox::Buttons::Ok}}));
    EXPECT_TRUE(log.empty());
}

TEST_F(MainTest, AnOldBrowserComponentEndsTheStartAndIsNamed) {
    shell.browserVersion = std::tuple{5, 4, 2615};
    EXPECT_EQ(Start(), 0);
    EXPECT_EQ(msgBox.shown, (std::vector<ShownBox>{
                                {"Dieses Program benötigt mindestens Microsoft Internet Explorer 5.5!\nSie "
                                 "verwenden die Version 5.4.2615.",
                                 "Veraltete Version des Internet Explorers gefunden", MsgBox::Icon::Critical,
                                 MsgBox::Buttons::Ok}}));
    EXPECT_TRUE(log.empty());
}

TEST_F(MainTest, FiveFiveIsTheOldestVersionThatWillDo) {
    for (const auto& version : {std::tuple{5, 5, 0}, {5, 50, 1}, {6, 0, 0}, {6, 4, 2}}) {
        shell.browserVersion = version;
        EXPECT_EQ(Start(), -1);
    }
    for (const auto& version : {std::tuple{4, 9, 9}, {5, 0, 0}, {5, 4, 9999}, {0, 0, 0}}) {
        shell.browserVersion = version;
        EXPECT_EQ(Start(), 0);
    }
}

TEST_F(MainTest, AMissingLibraryThatCannotBeMadeEndsTheStart) {
    files.files.clear();
    files.copyFails = true;
    EXPECT_EQ(Start(), 0);
    EXPECT_EQ(msgBox.shown,
              (std::vector<ShownBox>{LibraryBox("Der Grund: File not found\nDatenbank: " +
                                                (libraryFolder / "Quavernet Database/Quavernet.db"))}));
}

TEST_F(MainTest, ALibraryThatCannotBeOpenedEndsTheStartWhateverTheAnswer) {
    std::filesystem::remove(libraryFolder / "Quavernet Database/Quavernet.db");
    msgBox.answers = {MsgBox::Answer::Cancel};
    EXPECT_EQ(Start(), 0);
    EXPECT_EQ(msgBox.shown,
              (std::vector<ShownBox>{
                  {"Auf Ihrem System muss mindestens MDAC ab Version 2.5 installiert sein!\nStellen "
                   "Sie auch sicher, dass Microsoft Jet ab Version 4.0 installiert ist.\nJet 4.0 "
                   "ist normalerweise Bestandteil von MDAC 2.5. Bei den Versionen 2.7 und 2.8 "
                   "müssen Sie Jet gegebenenfalls getrennt installieren!",
                   "Datenbank Zugriff nicht möglich", MsgBox::Icon::Critical, MsgBox::Buttons::OkCancel,
                   "Die Datenbank ist nicht vorhanden.\nDatenbank: " +
                       (libraryFolder / "Quavernet Database/Quavernet.db") +
                       "\n\nSicherungskopien liegen nicht daneben."}}));
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(mainModule.Connection, nullptr);
}

TEST_F(MainTest, AnUnknownLanguageStartsUnreadably) {
    settings.values["Language"] = "FRA";
    EXPECT_EQ(Start(), -1);
    EXPECT_EQ(log.back(), "panel 1: Error : No Local Data");
}

} // namespace quavernet::test
