// Runs the program's commands on a real library and real files without a screen, so that a script can kill it
// among them, or run two of it at once. Called by the scripts of the kills, the places, and the shared tree.
// What it is told:
//
// prepare LIBRARY MUSIC: stores the files of the folder, and makes two filled categories and an empty one.
//
// tree LIBRARY JOURNAL SEED GATHER MUSIC KIND: random drops, category commands and imports, until killed.
//
// files LIBRARY JOURNAL SEED GATHER MUSIC KIND: saves of tags, renames and covers, until killed.
//
// texts LIBRARY JOURNAL FOLDER: exchange file and playlist by turns of two contents, until killed.
//
// share LIBRARY JOURNAL SEED GATHER MUSIC COUNT: so many commands that leave no gap in a category, while
// another program does the same; begins when a line comes in.
//
// category LIBRARY FOLDER NAME: stores the files k*.wav of the folder as a category.
//
// save LIBRARY FILE TEXT: saves the details once.
//
// cover LIBRARY FILE: makes the file the front of the first album.
//
// rename LIBRARY FILE NAME: renames a listed file.
//
// export LIBRARY FILE: writes the exchange file.
//
// playlist LIBRARY FILE: writes the playlist of the first category.
//
// state LIBRARY: prints what is in the tables that these commands write.
//
// GATHER: how long commits are gathered, in milliseconds. What is killed prints "ready" first. A failure is
// told by its text and the code 1. MUSIC holds the audio files k*.mp3 (known) and n*.mp3, playlists p*.m3u
// and i.qvn.
#include "TreeCommandsRun.h"

#include "editing/FileDetails.h"
#include "editing/RenameListedFile.h"
#include "editing/SaveDetails.h"
#include "extras/Covers.h"
#include "library/SqlQuote.h"
#include "playback/CategoryPlaylist.h"
#include "playback/PlaylistWriter.h"
#include "scanner/AddDroppedFiles.h"
#include "tree/CategoryEditor.h"
#include "tree/CategoryName.h"
#include "tree/LoadTree.h"
#include "tree/NodeKey.h"
#include "tree/TreeExport.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace quavernet;

namespace {

// From here on the caller's time for the kills runs.
void SayReady() {
    std::puts("ready");
    std::fflush(stdout);
}

std::chrono::milliseconds Milliseconds(const std::string& text) {
    return std::chrono::milliseconds(std::stol(text));
}

// Saves once, as the details dialog does: each field that is told gets the text.
void Save(DetailsFile& file, const std::string& path, const std::string& text) {
    const FileDetails shown = file.LoadDetails(path, {"nobody", "nothing"});
    EditedDetails edited;
    edited.Texts = shown.Texts;
    edited.Texts.Title = edited.Texts.Performer = edited.Texts.Album = text;
    edited.ToId3v1 = shown.Kind == DetailsKind::Id3v1;
    edited.Genre = 17;
    if (const auto failure = SaveDetails(file, edited)) {
        throw *failure;
    }
}

// What the pages show is not looked at; every file is taken for a picture.
class NoCoverView : public CoverView {
public:
    void RemovePictures() override {}
    void ShowPicture(CoverPage, const std::string&) override {}
    bool LoadPicture(CoverPage, const std::string&) override { return true; }
    void SetPanel(const std::string&) override {}
    void SetMousePointer(MousePointer) override {}
};

// Each file has two names and is given two texts by turns. Renames and covers take far less time than saves
// and would seldom be hit beside them.
class FileCommandsRun {
public:
    /// `kind`: "saves", "renames", "covers", or "all" of them.
    FileCommandsRun(CommandWorld& world, const std::string& music, unsigned seed, const std::string& kind)
        : m_world(world), m_chance(seed), m_kind(kind.front()) {
        for (const char* ending : {".mp3", ".ogg"}) {
            for (const std::string& path : FilesOf(music, "t", ending)) {
                m_turns.push_back(0);
                mainModule.FilePaths.Add(path);
                mainModule.FileNames.Add(std::filesystem::path(path).filename().string());
            }
        }
        for (const std::string& path : FilesOf(music, "k", ".mp3")) {
            m_pictures.push_back(path);
        }
        m_covers.LoadAlbumList();
    }

    void Step() {
        m_world.Forget();
        const std::size_t file = m_chance() % m_turns.size();
        switch (m_kind == 'a' ? "src"[m_chance() % 3] : m_kind) {
        case 's':
            SaveText(file);
            break;
        case 'r':
            Rename(static_cast<std::int32_t>(file) + 1);
            break;
        default:
            SetCover();
        }
        m_world.journal.Add("done");
        if (m_chance() % 2 == 0) {
            mainModule.Connection->Commit();
        }
    }

private:
    void SaveText(std::size_t file) {
        const std::string text = ++m_turns[file] % 2 == 1 ? "one" : "two";
        const std::string path = mainModule.FilePaths.Item(static_cast<std::int32_t>(file) + 1);
        m_world.journal.Add("op", "save\t" + path + "\t" + text);
        Save(m_file, path, text);
    }

    void Rename(std::int32_t row) {
        const FolderAndName old = ListedFile(row);
        const std::string name =
            old.Name.front() == 't' ? "u" + old.Name.substr(1) : "t" + old.Name.substr(1);
        m_world.journal.Add("op", "rename\t" + old.Folder + old.Name + "\t" + old.Folder + name);
        RenameListedFile(row, old, name);
    }

    // An album whose performer and title a save has replaced is still one of the list that was read before.
    void SetCover() {
        const auto album = m_chance() % m_covers.Albums().size();
        const auto page = m_chance() % CoverPageCount;
        const std::string path =
            m_chance() % 4 == 0 ? std::string() : m_pictures[m_chance() % m_pictures.size()];
        m_covers.SelectAlbum(album);
        m_world.journal.Add("op",
                            "cover\t" + m_covers.Albums()[album] + "\t" + std::to_string(page) + "\t" + path);
        if (path.empty()) {
            m_covers.DeleteCover(static_cast<CoverPage>(page));
        } else {
            m_covers.SetCover(static_cast<CoverPage>(page), path);
        }
    }

    CommandWorld& m_world;
    std::mt19937 m_chance;
    char m_kind;
    std::vector<int> m_turns; ///< Saves of each file.
    Words m_pictures;
    DetailsFile m_file;
    NoCoverView m_view;
    Covers m_covers{m_view};
};

template <class Run> [[noreturn]] void RunForEver(const Words& arguments) {
    CommandWorld world(arguments.at(0), arguments.at(1), Milliseconds(arguments.at(3)));
    Run run(world, arguments.at(4), static_cast<unsigned>(std::stoul(arguments.at(2))), arguments.at(5));
    SayReady();
    for (;;) {
        run.Step();
    }
}

// The pauses let the other program change what this one's tree shows.
void Share(const Words& arguments) {
    CommandWorld world(arguments.at(0), arguments.at(1), Milliseconds(arguments.at(3)));
    const auto seed = static_cast<unsigned>(std::stoul(arguments.at(2)));
    TreeCommandsRun run(world, arguments.at(4), seed, "all");
    LoadTree(world.tree);
    SayReady();
    std::string line;
    std::getline(std::cin, line);
    std::mt19937 chance(seed);
    for (long left = std::stol(arguments.at(5)); left > 0; --left) {
        run.SharedStep();
        std::this_thread::sleep_for(std::chrono::microseconds(chance() % 3000));
    }
}

void Prepare(const Words& arguments) {
    CommandWorld world(arguments.at(0), "/dev/null");
    Words known = FilesOf(arguments.at(1), "k", ".mp3");
    for (const char* ending : {".mp3", ".ogg"}) {
        const Words more = FilesOf(arguments.at(1), "t", ending);
        known.insert(known.end(), more.begin(), more.end());
    }
    AddDroppedFiles(known, world.driver, world.view, world.work);
    (void)FinishCategory("Jazz", Words(known.begin(), known.begin() + 6), world.views);
    (void)FinishCategory("Blues", Words(known.begin() + 2, known.begin() + 5), world.views);
    CategoryEditor editor;
    editor.cmdNew_Click();
    editor.cmdSave_Click("Empty");
    mainModule.Connection->Commit();
}

void MakeCategory(CommandWorld& world, const std::string& folder, const std::string& name) {
    const Words files = FilesOf(folder, "k", ".wav");
    AddDroppedFiles(files, world.driver, world.view, world.work);
    (void)FinishCategory(name, files, world.views);
    mainModule.Connection->Commit();
}

void Export(CommandWorld& world, const std::string& path) {
    LoadTree(world.tree);
    world.dialogs.file = path;
    ExportTree(world.tree, world.work);
}

// The command itself ends silently at any failure: here it shall be told. So the writer is called as it calls
// it.
void WritePlaylist(const std::string& path, std::size_t first) {
    ADODB::Recordset rows;
    rows.Open("Select F.Name, F.Length, F.Path from Files F, FileCategories C where F.File_id = C.File_id "
              "Order By C.FileCategory_id",
              *mainModule.Connection);
    PlaylistWriter playlist(path);
    for (std::size_t row = 0; !rows.Eof(); rows.MoveNext(), ++row) {
        if (row >= first) {
            playlist.Add(rows.Fields(0), rows.Fields(1), rows.Fields(2).Text());
        }
    }
    playlist.Close();
}

// Entries in plenty for the second category, so that writing its texts takes long enough to be killed.
void Fill(const Words& arguments) {
    const CommandWorld world(arguments.at(0), "/dev/null");
    for (int number = 4; number <= std::stoi(arguments.at(1)); ++number) {
        mainModule.Connection->Execute(
            "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (1, 2, " +
            std::to_string(number) + ", 'Blues', 'k00.mp3')");
    }
    mainModule.Connection->Commit();
}

// The second content of each file differs from the first one at its beginning.
void WriteTexts(const Words& arguments) {
    CommandWorld world(arguments.at(0), arguments.at(1));
    const std::string folder = arguments.at(2);
    const std::size_t turns = arguments.size() > 3 ? std::stoul(arguments[3]) : SIZE_MAX;
    SayReady();
    for (std::size_t turn = 0; turn < turns; ++turn) {
        world.Forget();
        mainModule.Connection->Execute("Update Categories set Category = '" +
                                       std::string(turn % 2 == 0 ? "Leer" : "Empty") +
                                       "' where Category_id = 3");
        mainModule.Connection->Execute("Update Files set Length = " + std::to_string(3 + turn % 2) +
                                       " where File_id = 1");
        Export(world, folder + "/tree.qvn");
        WritePlaylist(folder + "/list.m3u", turn % 2);
        world.tree.Select(CategoryKey("Blues"));
        world.dialogs.file = folder + "/blues.m3u";
        mnuCreatePlaylist_Click(world.tree);
    }
}

void PrintRows(const char* mark, const std::string& select) {
    const ADODB::RowBlock rows = mainModule.Connection->Query(select);
    for (std::size_t row = 0; row < rows.Rows(); ++row) {
        std::string line = mark;
        for (std::size_t column = 0; column < rows.Columns(); ++column) {
            line += "\t" + rows.At(row, column).Text();
        }
        std::puts(line.c_str());
    }
}

void PrintState(const Words& arguments) {
    const CommandWorld world(arguments.at(0), "/dev/null");
    PrintRows("category", "select Category_id, Category from Categories");
    PrintRows("entry",
              "select FileCategory_id, File_id, Category_id, Position, Parent, Filename from FileCategories");
    PrintRows(
        "file",
        "select F.File_id, F.Name, F.Path, T.Name, I.Interpret, A.Name, F.Genre_id from Files F, Titel T, "
        "Interpret I, Albums A where T.Title_id = F.Title_id and I.Inter_id = F.Inter_id and "
        "A.Album_id = F.Album_id");
    PrintRows("cover",
              "select I.Interpret, A.Name, C.Front, C.Back, C.CD, C.CD2, C.Inlay, C.Inlet from Covers C, "
              "Interpret I, Albums A where C.Interpret_id = I.Inter_id and C.Album_id = A.Album_id");
}

void RenameOnce(const Words& arguments) {
    const CommandWorld world(arguments.at(0), "/dev/null");
    mainModule.FilePaths.Add(arguments.at(1));
    mainModule.FileNames.Add(std::filesystem::path(arguments.at(1)).filename().string());
    RenameListedFile(1, ListedFile(1), arguments.at(2));
    mainModule.Connection->Commit();
}

void RunOnce(const std::string& command, const Words& arguments) {
    CommandWorld world(arguments.at(0), "/dev/null");
    if (command == "save") {
        DetailsFile file;
        Save(file, arguments.at(1), arguments.at(2));
        for (const auto& box : world.msgBox.shown) {
            std::puts(("box\t" + box.text).c_str());
        }
        mainModule.Connection->Commit();
    } else if (command == "category") {
        MakeCategory(world, arguments.at(1), arguments.at(2));
    } else if (command == "cover") {
        NoCoverView view;
        Covers covers(view);
        covers.LoadAlbumList();
        covers.SelectAlbum(0);
        covers.SetCover(CoverPage::Front, arguments.at(1));
        mainModule.Connection->Commit();
    } else if (command == "export") {
        Export(world, arguments.at(1));
    } else if (command == "playlist") {
        WritePlaylist(arguments.at(1), 0);
    } else {
        throw std::runtime_error("no such command: " + command);
    }
}

void RunCommand(const std::string& command, const Words& arguments) {
    if (command == "prepare") {
        Prepare(arguments);
    } else if (command == "tree") {
        RunForEver<TreeCommandsRun>(arguments);
    } else if (command == "files") {
        RunForEver<FileCommandsRun>(arguments);
    } else if (command == "texts") {
        WriteTexts(arguments);
    } else if (command == "share") {
        Share(arguments);
    } else if (command == "fill") {
        Fill(arguments);
    } else if (command == "rename") {
        RenameOnce(arguments);
    } else if (command == "state") {
        PrintState(arguments);
    } else {
        RunOnce(command, arguments);
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        RunCommand(argc > 1 ? argv[1] : "", Words(argv + std::min(argc, 2), argv + argc));
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    return EXIT_FAILURE;
}
