#include "app/LibraryFailure.h"

#include "adapters/posix/PosixFileSystem.h"
#include "platform/BackupPath.h"
#include "support/LogicTest.h"
#include "support/TemporaryFolder.h"

#include <ctime>
#include <filesystem>
#include <fstream>
#include <map>

#include <fcntl.h>
#include <sys/stat.h>

namespace quavernet::test {
namespace {

class LibraryFailureTest : public LogicTest {
protected:
    LibraryFailureTest() { services.fileSystem = fileSystem.get(); }

    std::string Text(LibraryFault fault) {
        return LibraryFailureText(LibraryError(fault, path, 1, "reason of the engine"));
    }
    // A copy made on a day of November 2026, at 14:03 of the local clock.
    void AddCopy(int number, int day) {
        const std::string copy = BackupPath(path, number);
        std::ofstream(copy) << "x";
        std::tm time{};
        time.tm_year = 126;
        time.tm_mon = 10;
        time.tm_mday = day;
        time.tm_hour = 14;
        time.tm_min = 3;
        time.tm_isdst = -1;
        const timespec moment{std::mktime(&time), 0};
        const timespec times[2] = {moment, moment};
        ASSERT_EQ(::utimensat(AT_FDCWD, copy.c_str(), times, 0), 0);
    }

    TemporaryFolder folder;
    std::string path = folder / "Quavernet.db";
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
};

TEST_F(LibraryFailureTest, EachReasonHasItsSentence) {
    const std::string end = "\nDatenbank: " + path;
    const std::map<LibraryFault, std::string> sentences{
        {LibraryFault::Locked, "Ein anderes Programm hält die Datenbank gesperrt. Beenden Sie es, und "
                               "versuchen Sie es dann noch einmal."},
        {LibraryFault::Newer,
         "Die Datenbank stammt von einer neueren Version von Quavernet. Öffnen Sie sie mit dieser Version."},
        {LibraryFault::FileReadOnly,
         "Die Datenbank ist schreibgeschützt, oder Ihnen fehlt das Recht, sie zu ändern."},
        {LibraryFault::FolderReadOnly,
         "Der Ordner der Datenbank ist schreibgeschützt, oder Ihnen fehlt das Recht, darin zu schreiben."},
        {LibraryFault::DiskFull, "Auf dem Datenträger ist kein Platz mehr. Schaffen Sie Platz, und "
                                 "wiederholen Sie dann den letzten Schritt."},
        {LibraryFault::Device, "Der Datenträger meldet einen Fehler beim Lesen oder Schreiben."},
        {LibraryFault::Moved, "Die Datenbank wurde verschoben, ersetzt oder gelöscht, während das Programm "
                              "lief. Es schreibt nichts mehr hinein."},
        {LibraryFault::Other, "Der Grund: reason of the engine"},
    };
    for (const auto& [fault, sentence] : sentences) {
        EXPECT_EQ(Text(fault), sentence + end);
    }
    const std::map<LibraryFault, std::string> doubts{
        {LibraryFault::Damaged, "Die Datenbank ist beschädigt."},
        {LibraryFault::NoLibrary,
         "An der Stelle der Datenbank liegt eine Datei, die keine Datenbank von Quavernet ist."},
        {LibraryFault::Folder, "An der Stelle der Datenbank liegt ein Ordner."},
        {LibraryFault::NoPlainFile, "An der Stelle der Datenbank liegt eine Verknüpfung, deren Ziel "
                                    "fehlt, oder etwas anderes als eine gewöhnliche Datei."},
        {LibraryFault::Missing, "Die Datenbank ist nicht vorhanden."},
    };
    for (const auto& [fault, sentence] : doubts) {
        EXPECT_EQ(Text(fault), sentence + end + "\n\nSicherungskopien liegen nicht daneben.");
    }
}

TEST_F(LibraryFailureTest, CopiesAreNamedWithTheirDatesTheNewestFirst) {
    AddCopy(1, 20);
    AddCopy(3, 7);
    const std::string lines = "\n" + folder.Path() + "/Quavernet.backup1.db (20.11.2026 14:03:00)\n" +
                              folder.Path() + "/Quavernet.backup3.db (07.11.2026 14:03:00)\n\n";
    EXPECT_EQ(Text(LibraryFault::Damaged),
              "Die Datenbank ist beschädigt.\nDatenbank: " + path +
                  "\n\nDaneben liegen Sicherungskopien, die neueste zuerst:" + lines +
                  "So holen Sie eine davon zurück: Verschieben Sie die Datenbank, zusammen mit den "
                  "gleichnamigen Dateien auf „-wal“ und „-shm“, falls es sie gibt, in einen anderen Ordner. "
                  "Kopieren Sie dann "
                  "die Sicherungskopie, und geben Sie der Kopie den Namen der Datenbank.");
    settings.values["Language"] = "ENG";
    EXPECT_EQ(Text(LibraryFault::NoLibrary),
              "The file in the database's place is not a Quavernet database.\nDatabase: " + path +
                  "\n\nThere are backup copies beside it, the newest first:" + lines +
                  "To put one back: move the database, together with the files of the same name ending in "
                  "\"-wal\" and \"-shm\" if there are any, to another folder. Then copy the backup copy and "
                  "give that copy "
                  "the name of the database.");
}

TEST_F(LibraryFailureTest, TheCopiesOfASoundLibraryAreNamedButItIsNotToBeGivenUpForThem) {
    AddCopy(1, 20);
    AddCopy(2, 9);
    for (const LibraryFault fault :
         {LibraryFault::Newer, LibraryFault::Locked, LibraryFault::FileReadOnly, LibraryFault::FolderReadOnly,
          LibraryFault::Device, LibraryFault::Moved}) {
        EXPECT_TRUE(Text(fault).ends_with("\nDatenbank: " + path +
                                          "\n\nDaneben liegen Sicherungskopien, die neueste zuerst:\n" +
                                          folder.Path() + "/Quavernet.backup1.db (20.11.2026 14:03:00)\n" +
                                          folder.Path() + "/Quavernet.backup2.db (09.11.2026 14:03:00)"))
            << Text(fault);
    }
}

TEST_F(LibraryFailureTest, WhoHasToMakeSpaceIsNotSentToTheCopies) {
    AddCopy(1, 20);
    EXPECT_TRUE(Text(LibraryFault::DiskFull).ends_with("\nDatenbank: " + path));
}

TEST_F(LibraryFailureTest, WithoutAPathNoCopiesAreLookedFor) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    path.clear();
    AddCopy(1, 20); // In the folder that the program happens to be in.
    EXPECT_EQ(Text(LibraryFault::Other), "Der Grund: reason of the engine");
    std::filesystem::current_path(before);
}

TEST_F(LibraryFailureTest, AFolderInACopysPlaceIsNoCopy) {
    std::filesystem::create_directory(BackupPath(path, 1));
    EXPECT_TRUE(Text(LibraryFault::Damaged).ends_with("Sicherungskopien liegen nicht daneben."));
}

} // namespace
} // namespace quavernet::test
