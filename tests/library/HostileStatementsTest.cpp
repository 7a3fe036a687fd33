#include "support/HostileTexts.h"
#include "support/OggFiles.h"
#include "support/OggVolumes.h"
#include "support/RealFiles.h"
#include "support/RecordingPlayer.h"
#include "support/SmallAudio.h"
#include "support/TestLibrary.h"

#include "adapters/id3v2/TagLibComponent.h"
#include "adapters/vorbis/OggInfoReader.h"
#include "browser/LoadDatabase.h"
#include "library/CleanDatabase.h"
#include "library/DatabaseCheck.h"
#include "library/SqlQuote.h"
#include "scanner/AddDroppedFiles.h"
#include "scanner/OggBatches.h"
#include "scanner/OggStore.h"
#include "scanner/SavedLog.h"
#include "scanner/ScanDriver.h"
#include "tree/LoadTree.h"
#include "tree/TreeEvents.h"

#include <cctype>
#include <functional>

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;

constexpr const char* Plain = "plain";

/// The statement with a sign in place of each literal: what the engine takes for commands.
std::string ShapeOf(const std::string& statement) {
    std::string shape;
    for (std::size_t i = 0; i < statement.size(); ++i) {
        const char c = statement[i];
        const bool inWord = !shape.empty() && (std::isalnum(static_cast<unsigned char>(shape.back())) != 0 ||
                                               shape.back() == '_');
        if (c == '\'') {
            do {
                i = statement.find('\'', i + 1);
                if (i == std::string::npos) {
                    return shape + " (an apostrophe that closes nothing)";
                }
            } while (i + 1 < statement.size() && statement[i + 1] == '\'' && ++i != 0);
            shape += "'?'";
        } else if (std::isdigit(static_cast<unsigned char>(c)) != 0 && !inWord) {
            i = std::min(statement.find_first_not_of("0123456789.", i), statement.size()) - 1;
            shape += '#';
        } else {
            shape += c;
        }
    }
    return shape;
}

/// Runs a job of the program on a fresh library once with a plain text and once with each hostile one, and
/// compares the commands that it sends.
class HostileStatementsTest : public LibraryTest {
protected:
    using Job = std::function<void(const std::string& text)>;

    HostileStatementsTest() {
        services.fileSystem = &volumes;
        services.oggInfo = &oggInfo;
        volumes.onFile = [](FileFacts& facts) { facts.drivePath = "/"; };
        mainModule.TagComponent = CreateTagLibComponent(RealFiles());
    }

    std::vector<std::string> ShapesOf(const Job& job, const std::string& text) {
        mainModule.Connection.reset();
        const std::string path = libraryFolder / (std::to_string(++libraries) + ".db");
        CopyTemplate(path);
        mainModule.Connection = OpenLibrary(path, services.regional);
        recorder = &RecordingConnection::Install();
        job(text);
        std::vector<std::string> shapes;
        for (const std::string& statement : recorder->statements) {
            shapes.push_back(ShapeOf(statement));
        }
        EXPECT_THAT(Rows("Select name from sqlite_master where type = 'table' and name = 'Files'"),
                    ElementsAre("Files"));
        return shapes;
    }
    void ExpectTheSameCommands(const Job& job) {
        const std::vector<std::string> plain = ShapesOf(job, Plain);
        ASSERT_FALSE(plain.empty());
        for (const std::string& text : HostileTexts()) {
            EXPECT_EQ(ShapesOf(job, text), plain) << text;
        }
    }

    std::string Folder(const std::string& text) {
        const std::string folder = music / std::to_string(libraries) + "/" + AsFileName(text);
        std::filesystem::create_directories(folder);
        return folder;
    }
    std::string File(const std::string& text, const std::string& ending, const std::string& bytes) {
        const std::string path = Folder(text) + "/" + AsFileName(text) + ending;
        WriteBytes(path, bytes);
        return path;
    }
    void ExpectOneFile(const std::string& path, const std::string& performer, const std::string& title,
                       const std::string& album) {
        EXPECT_THAT(Rows("Select F.Path, I.Interpret, T.Name, A.Name from Files F, Interpret I, Titel T, "
                         "Albums A where F.Inter_id = I.Inter_id and F.Title_id = T.Title_id and "
                         "F.Album_id = A.Album_id"),
                    ElementsAre(path + "|" + performer + "|" + title + "|" + album));
    }

    OggVolumes volumes;
    OggInfoReader oggInfo{RealFiles()};
    TemporaryFolder music;
    CallList calls;
    LongWorkDouble work{calls};
    RecordingScanView view{calls};
    RecordingScanLog log{calls};
    OggBatches oggPass;
    ScanDriver driver{work, view, log, &oggPass};
    RecordingConnection* recorder = nullptr;
    int libraries = 0;
};

TEST_F(HostileStatementsTest, ShapesShowWhatLeavesItsQuotes) {
    EXPECT_EQ(ShapeOf("Select a1 from B where C = 'it''s' and D = 12.5"),
              "Select a1 from B where C = '?' and D = #");
    EXPECT_EQ(ShapeOf("where C = ''"), "where C = '?'");
    EXPECT_EQ(ShapeOf("where C = 'x'; DROP TABLE Files; --'"),
              "where C = '?'; DROP TABLE Files; -- (an apostrophe that closes nothing)");
}

TEST_F(HostileStatementsTest, ARecordOfAnMpegOrWaveFileIsStoredAsItStands) {
    ExpectTheSameCommands([&](const std::string& text) {
        CurrentFile file;
        file.FileArtist = file.FileTitle = file.FileAlbum = text;
        file.FileDrive = "/mnt/" + text;
        file.FileName = text + ".mp3";
        file.FilePath = "/mnt/" + text + "/" + text + ".mp3";
        file.FileDate = "29.02.2024 13:04:05";
        file.FileQuality = "128";
        file.FileGenre = "17";
        for (int time = 0; time < 2; ++time) { // The second time it is an update.
            file.FileSize = "3145728";
            driver.StoreFileRecord(file);
        }
        ExpectOneFile("/mnt/" + text + "/" + text + ".mp3", text, text, text);
        EXPECT_EQ(Value("Select Drive from Drive"), "/mnt/" + text);
    });
}

TEST_F(HostileStatementsTest, ARecordOfAnOggFileIsStoredAsItStands) {
    SavedLog saved{log};
    ExpectTheSameCommands([&](const std::string& text) {
        const std::string path = File(text, ".ogg", "x");
        volumes.onFile = [&text](FileFacts& facts) { facts.drivePath = "/mnt/" + text; };
        for (int time = 0; time < 2; ++time) {
            OggRecord record{text, text, "112", "206", AsFileName(text) + ".ogg", path, "7840",
                             "",   text, "",    text};
            StoreOggRecord(record, saved);
        }
        ExpectOneFile(path, text, text, text);
        EXPECT_EQ(Value("Select Drive from Drive"), "/mnt/" + text + "/");
    });
}

TEST_F(HostileStatementsTest, AScanOfHostileNamesStoresThemAsTheyStand) {
    for (const bool quick : {false, true}) {
        view.options.QuickScan = quick;
        ExpectTheSameCommands([&](const std::string& text) {
            const std::string path =
                File(text, ".mp3", Mp3Bytes(text.substr(0, 30), text.substr(0, 30), text.substr(0, 30)));
            dialogs.folder = Folder(text);
            driver.StartScan();
            driver.StartScan();
            EXPECT_THAT(Rows("Select Path, Name from Files"),
                        ElementsAre(path + "|" + AsFileName(text) + ".mp3"));
        });
    }
}

TEST_F(HostileStatementsTest, AnOggScanOfHostileNamesSendsTheSameCommands) {
    ExpectTheSameCommands([&](const std::string& text) {
        // A line break ends the line in which the reader names a file; such a name is told of in the scan
        // log.
        const std::string name = ReplaceAll(ReplaceAll(text, "\n", " "), "\r", " ");
        const std::string path = File(name, ".ogg", EncodedOgg::Stereo());
        dialogs.folder = Folder(name);
        driver.StartScan();
        view.options.QuickScan = true;
        driver.StartScan();
        view.options.QuickScan = false;
        EXPECT_THAT(Rows("Select Path from Files"), ElementsAre(path));
    });
}

TEST_F(HostileStatementsTest, DroppedFilesOfHostileNamesAreStoredAsTheyStand) {
    ExpectTheSameCommands([&](const std::string& text) {
        const std::string path = File(text, ".wav", WaveBytes());
        AddDroppedFiles({path}, driver, view, work);
        AddDroppedFiles({path}, driver, view, work);
        EXPECT_THAT(Rows("Select Path from Files"), ElementsAre(path));
    });
}

TEST_F(HostileStatementsTest, TheSearchBoxIsATextInEachOfItsStatements) {
    for (const auto& [performer, title] :
         {std::pair(true, true), std::pair(true, false), std::pair(false, true)}) {
        ExpectTheSameCommands([&, performer = performer, title = title](const std::string& text) {
            CurrentFile file;
            file.FileArtist = file.FileTitle = "before " + text + " behind";
            file.FileName = file.FilePath = "/x.mp3";
            file.FileSize = "1";
            file.FileGenre = "255";
            driver.StoreFileRecord(file);
            file.FileArtist = file.FileTitle = "another";
            file.FileName = file.FilePath = "/y.mp3";
            file.FileSize = "1";
            driver.StoreFileRecord(file);
            ListFilter filter;
            filter.SearchText = text;
            filter.InterpretChecked = performer;
            filter.TitleChecked = title;
            const ListResult found = LoadDatabase(filter, "", work, [] {});
            ASSERT_EQ(found.Rows.Count(), 1U) << text;
            EXPECT_EQ(found.Rows.Text(1, ListColumn::Interpret), "before " + text + " behind");
            EXPECT_EQ(found.Totals.TitleCount, "1") << text;
        });
    }
}

// A stored text can't hold one, a search text can: it may come from the clipboard.
TEST_F(HostileStatementsTest, ANulInTheSearchBoxReachesNoStatement) {
    const auto search = [&](const std::string& text, std::size_t found) {
        const Job job = [&](const std::string& searched) {
            for (const char* name : {"x", "xy"}) {
                CurrentFile file;
                file.FileArtist = file.FileTitle = name;
                file.FileName = file.FilePath = std::string("/") + name + ".mp3";
                file.FileSize = "1";
                file.FileGenre = "255";
                driver.StoreFileRecord(file);
            }
            ListFilter filter;
            filter.SearchText = searched;
            const ListResult result = LoadDatabase(filter, "", work, [] {});
            ASSERT_EQ(result.Rows.Count(), found);
            EXPECT_EQ(result.Rows.Text(found, ListColumn::Title), "xy");
        };
        return ShapesOf(job, text);
    };
    EXPECT_EQ(search(std::string("x\0y", 3), 1), search("xy", 1));
    EXPECT_EQ(search(std::string("\0xy\0", 4), 1), search("xy", 1));
    EXPECT_EQ(search(std::string("\0", 1), 2), search("", 2));
}

TEST_F(HostileStatementsTest, TheTreeFindsEntriesOfHostileFileNames) {
    std::vector<std::string> played;
    RecordingPlayer player(played);
    mainModule.UseExternalPlayer = true;
    ExpectTheSameCommands([&](const std::string& text) {
        const std::string quoted = SqlQuote(text);
        Execute({"Insert into Categories (Category_id, Category) values (1, 'Jazz')"});
        Execute("Insert into Files (File_id, Name, Path, Length) values (7, '" + quoted + "', '/m/" + quoted +
                "', 65)");
        Execute("Insert into FileCategories (FileCategory_id, File_id, Category_id, [Position], Parent, "
                "Filename) "
                "values (3, 7, 1, 1, 'Jazz', '" +
                quoted + "')");
        TreeModel tree;
        LoadTree(tree);
        EXPECT_EQ(tree.Node("file3pos1").Text, text);
        EXPECT_EQ(GetFileIdFromNode(tree, "file3pos1"), "7");
        tree.Select("file3pos1");
        shell.executed.clear();
        TreeDblClick(tree, player);
        EXPECT_THAT(shell.executed, ElementsAre("/m/" + text));
        EXPECT_EQ(Value("Select Hits from Files"), "1");
    });
}

TEST_F(HostileStatementsTest, DoubledCategoriesOfHostileNamesAreRepaired) {
    ExpectTheSameCommands([&](const std::string& text) {
        Execute("Insert into Categories (Category) values ('" + SqlQuote(text) + "')");
        Execute("Insert into Categories (Category) values ('" + SqlQuote(text) + "')");
        CheckDatabase(work);
        EXPECT_THAT(Rows("Select Category from Categories"), ElementsAre(text));
    });
}

TEST_F(HostileStatementsTest, CleaningRemovesMissingFilesOfHostileNames) {
    LibraryViewsDouble views;
    ExpectTheSameCommands([&](const std::string& text) {
        const std::string quoted = SqlQuote(text);
        const std::string kept = File(text, ".mp3", "x");
        Execute("Insert into Files (File_id, Name, Path) values (1, '" + quoted + "', '/gone/" + quoted +
                "')");
        Execute("Insert into Files (File_id, Name, Path) values (2, 'x', '" + SqlQuote(kept) + "')");
        CleanDatabase(work, views);
        EXPECT_THAT(Rows("Select Path from Files"), ElementsAre(kept));
    });
}

// Names of categories are unquoted in two statements, as the dialogs take no apostrophe. One that came
// another way fails there and changes nothing.
TEST_F(HostileStatementsTest, ACategoryWithAnApostropheFailsAndChangesNothing) {
    LibraryViewsDouble views;
    for (const char* name :
         {"'; DROP TABLE Files; --", "x' or 'a' = 'a'; --", "O'Neil", "x'; Delete from Files"}) {
        const std::string quoted = SqlQuote(name);
        Execute({"Delete from Categories", "Delete from FileCategories", "Delete from Files"});
        Execute("Insert into Categories (Category_id, Category) values (1, '" + quoted + "')");
        Execute({"Insert into Files (File_id, Name, Path, Length) values (7, 'a.mp3', '/gone/a.mp3', 65)",
                 "Insert into Files (File_id, Name, Path, Length) values (8, 'b.mp3', '/gone/b.mp3', 65)"});
        Execute("Insert into FileCategories (FileCategory_id, File_id, Category_id, [Position], Parent, "
                "Filename) "
                "values (3, 7, 1, 1, '" +
                quoted + "', 'a.mp3')");
        TreeModel tree;
        LoadTree(tree);
        EXPECT_THROW(GetFileIdFromNode(tree, "file3pos1"), RuntimeError) << name;
        EXPECT_THROW(CleanDatabase(work, views), RuntimeError) << name;
        EXPECT_THAT(Rows("Select Path from Files"), ElementsAre("/gone/b.mp3")) << "the cleaning stops there";
        EXPECT_THAT(Rows("Select Parent from FileCategories"), ElementsAre(name));
    }
}

/// Comments whose text is where the reader's numbers are.
class ForgedNumbersTest : public HostileStatementsTest {
protected:
    void Scan(const std::vector<std::string>& comments) {
        mainModule.ScanLogEnabled = true;
        Execute({"Insert into Files (Name, Path, Hits) values ('other', '/other.mp3', 5)",
                 "Insert into Quality (Quality) values (320)"});
        File("forged", ".ogg", WithComments(EncodedOgg::Stereo(), comments));
        dialogs.folder = Folder("forged");
        recorder = &RecordingConnection::Install();
        driver.StartScan();
    }
};

TEST_F(ForgedNumbersTest, ABitRateThatIsNoNumberReachesNoStatement) {
    Scan({"TITLE=a", "X=Nominal bitrate: 0 or Quality > 0.5"});
    EXPECT_THAT(Rows("Select Path, Hits from Files"), ElementsAre("/other.mp3|5"));
    EXPECT_THAT(Rows("Select Quality from Quality"), ElementsAre("320"));
    EXPECT_THAT(Rows("Select Name from Titel"), ElementsAre("a"))
        << "stored before the bit rate is asked for";
    EXPECT_EQ(log.skipped.size(), 1U);
    for (const std::string& statement : recorder->statements) {
        EXPECT_EQ(statement.find(" or "), std::string::npos) << statement;
    }
}

TEST_F(ForgedNumbersTest, ASizeThatIsNoNumberReachesNoStatement) {
    const std::string own = music / "0/forged/forged.ogg";
    Scan({"TITLE=a", "X=Total data length: 1, Hits = 99 bytes", "X=Processing file \"" + own + "\"...",
          "X=Nominal bitrate: 112.0"});
    EXPECT_THAT(Rows("Select Hits from Files"), ElementsAre("5", "0"));
    EXPECT_EQ(log.skipped.size(), 1U);
    for (const std::string& statement : recorder->statements) {
        EXPECT_EQ(statement.find("99"), std::string::npos) << statement;
    }
}

TEST(SqlNumberTest, OnlyNumbersPass) {
    for (const char* number : {"0", "128", "-5", "3145728", "12.5", ".5", "5.", ""}) {
        EXPECT_EQ(SqlNumber(number), number);
    }
    for (const char* text : {"1 or 1", " 1", "1 ", "1,2", "1e5", "0x10", "-", ".", "1.2.3", "--1", "1-1",
                             "'1'", "1)", "Null", "(Select 1)", "1;", "NaN"}) {
        EXPECT_THROW(SqlNumber(text), RuntimeError) << text;
    }
}

} // namespace
} // namespace quavernet::test
