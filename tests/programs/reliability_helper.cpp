// The hands of the reliability checks: opens a library as the program does and tells what is in it, writes
// tags as the program does, and ends a writer at a chosen system call. Called by the scripts beside it.
//
//   helper check LIBRARY                 findings, then the whole content, one line a row
//   helper save FORM FILE TEXT TEXT      writes the one and the other text by turns until it is killed
//   helper grow TEXT FILE...             writes the text into one file after the other
//   helper step NUMBER FORM FILE TEXT    one write, killed at its NUMBERth system call; 7 if it ended before
//
// FORM is v1 or v2 for the tag of that version, ogg for the comments of an Ogg file (their "title="), or copy
// for a copy of the file TEXT.
#include "adapters/id3v2/TagLibComponent.h"
#include "adapters/posix/PosixFileSystem.h"
#include "adapters/sqlite/SqliteConnection.h"
#include "adapters/vorbis/OggCommentWriter.h"
#include "app/MainModule.h"
#include "inspect/modMp3Info.h"
#include "platform/RuntimeError.h"
#include "support/Doubles.h"
#include "support/RealFiles.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace quavernet;

namespace {

constexpr int EndedBefore = 7;

using Arguments = std::vector<std::string>;

// Bytes that would end a field or a line, and those that are no ASCII, as % and two hexadecimal digits.
std::string Escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte >= 0x7F || c == '%' || c == '|') {
            char digits[4];
            std::snprintf(digits, sizeof digits, "%%%02X", byte);
            result += digits;
        } else {
            result += c;
        }
    }
    return result;
}

void Print(const std::string& mark, const ADODB::RowBlock& rows) {
    for (std::size_t row = 0; row < rows.Rows(); ++row) {
        std::string line = mark;
        for (std::size_t column = 0; column < rows.Columns(); ++column) {
            line += "|" + Escaped(rows.At(row, column).Text());
        }
        std::puts(line.c_str());
    }
}

// Rows of Files that lead nowhere, lookup texts and paths that are there twice.
constexpr const char* Problems[] = {
    "select 'no title', Path from Files where Title_id is null or Title_id not in (select Title_id from "
    "Titel)",
    "select 'no performer', Path from Files where Inter_id is null or Inter_id not in (select Inter_id from "
    "Interpret)",
    "select 'no album', Path from Files where Album_id is null or Album_id not in (select Album_id from "
    "Albums)",
    "select 'no quality', Path from Files where Quality_id is null or Quality_id not in "
    "(select Quality_id from Quality)",
    "select 'no drive', Path from Files where Drive_id is null or Drive_id not in (select Drive_id from "
    "Drive)",
    "select 'no format', Path from Files where Extension_id is null or Extension_id not in "
    "(select Extension_id from Extensions)",
    "select 'no name, size, date, length or genre', Path from Files where Name is null or Sizeinbytes is "
    "null or "
    "DateLastModified is null or Length is null or Genre_id is null or Hits is null",
    "select 'path twice', Path from Files group by Path having count(*) > 1",
    "select 'title twice', Name from Titel group by Name having count(*) > 1",
    "select 'performer twice', Interpret from Interpret group by Interpret having count(*) > 1",
    "select 'album twice', Name from Albums group by Name having count(*) > 1",
    "select 'quality twice', Quality from Quality group by Quality having count(*) > 1",
    "select 'drive twice', Drive from Drive group by Drive having count(*) > 1",
};

int CheckLibrary(const std::string& path) {
    const auto library = CreateSqliteConnection({});
    library->Open("Data Source=" + path);
    Print("integrity", library->Query("pragma integrity_check"));
    for (const char* statement : Problems) {
        Print("problem", library->Query(statement));
    }
    Print("row",
          library->Query(
              "select F.Path, F.Name, F.Sizeinbytes, F.DateLastModified, F.Length, F.Genre_id, F.Hits, "
              "T.Name, I.Interpret, A.Name, Q.Quality, D.Drive, E.Extension "
              "from Files F, Titel T, Interpret I, Albums A, Quality Q, Drive D, Extensions E "
              "where T.Title_id = F.Title_id and I.Inter_id = F.Inter_id and "
              "A.Album_id = F.Album_id and Q.Quality_id = F.Quality_id and "
              "D.Drive_id = F.Drive_id and E.Extension_id = F.Extension_id"));
    Print("count", library->Query("select count(*) from Files"));
    for (const char* table : {"Titel", "Interpret", "Albums", "Quality", "Drive"}) {
        Print(std::string("lookup|") + table, library->Query(std::string("select * from ") + table));
    }
    return EXIT_SUCCESS;
}

void SaveV2(TagComponent& component, const std::string& file, const std::string& text) {
    component.LoadFile(file);
    component.SetTagField(TagComponent::Title, text);
    component.SaveFile(file);
}

void SaveV1(const std::string& file, const std::string& text) {
    Id3v1Tag tag;
    tag.TagTitle = tag.TagArtist = tag.TagAlbum = tag.TagComment = text;
    tag.TagYear = text.substr(0, 4);
    WriteId3v1(file, tag);
}

void SaveOgg(VorbisCommentTool& tool, const std::string& file, const std::string& text) {
    auto comments = tool.List(file);
    for (std::string& comment : comments) {
        if (comment.starts_with("title=")) {
            comment = "title=" + text;
        }
    }
    tool.Write(file, comments);
}

class Writer {
public:
    explicit Writer(std::string form) : m_form(std::move(form)) {
        if (m_form != "v1" && m_form != "v2" && m_form != "ogg" && m_form != "copy") {
            throw std::runtime_error("no such form: " + m_form);
        }
        services.settings = &m_settings;
        services.files = &test::RealFiles();
        services.msgBox = &m_msgBox;
    }

    void Save(const std::string& file, const std::string& text) {
        if (m_form == "v1") {
            SaveV1(file, text);
        } else if (m_form == "v2") {
            SaveV2(*m_component, file, text);
        } else if (m_form == "ogg") {
            SaveOgg(m_comments, file, text);
        } else {
            CreatePosixFileSystem()->CopyFile(text, file);
        }
        if (!m_msgBox.shown.empty()) {
            throw std::runtime_error(m_msgBox.shown.front().text);
        }
    }

private:
    std::string m_form;
    test::MapSettings m_settings;
    test::ScriptedMsgBox m_msgBox;
    std::unique_ptr<TagComponent> m_component = CreateTagLibComponent(test::RealFiles());
    OggCommentWriter m_comments{test::RealFiles()};
};

// From here on the caller's time for the kill runs.
void TellReady() {
    std::puts("ready");
    std::fflush(stdout);
}

[[noreturn]] void SaveForEver(const Arguments& arguments) {
    Writer writer(arguments.at(0));
    TellReady();
    for (;;) {
        writer.Save(arguments.at(1), arguments.at(2));
        writer.Save(arguments.at(1), arguments.at(3));
    }
}

int Grow(const Arguments& arguments) {
    Writer writer("v2");
    TellReady();
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        writer.Save(arguments[i], arguments[0]);
    }
    return EXIT_SUCCESS;
}

// The child stops before and after each of its system calls.
int Step(const Arguments& arguments) {
    const long number = std::stol(arguments.at(0));
    Writer writer(arguments.at(1));
    const pid_t child = ::fork();
    if (child == 0) {
        if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
            ::_exit(3);
        }
        std::raise(SIGSTOP);
        writer.Save(arguments.at(2), arguments.at(3));
        ::_exit(EXIT_SUCCESS);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    if (!WIFSTOPPED(status)) {
        throw std::runtime_error("the system does not let a process trace its child");
    }
    for (long stop = 0; stop < number; ++stop) {
        ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        ::waitpid(child, &status, 0);
        if (WIFEXITED(status)) {
            return WEXITSTATUS(status) == EXIT_SUCCESS ? EndedBefore : EXIT_FAILURE;
        }
    }
    ::kill(child, SIGKILL);
    ::waitpid(child, &status, 0);
    return EXIT_SUCCESS;
}

int Run(const std::string& command, const Arguments& arguments) {
    if (command == "check") {
        return CheckLibrary(arguments.at(0));
    }
    if (command == "save") {
        SaveForEver(arguments);
    }
    if (command == "grow") {
        return Grow(arguments);
    }
    if (command == "step") {
        return Step(arguments);
    }
    throw std::runtime_error("no such command: " + command);
}

} // namespace

int main(int argc, char** argv) {
    try {
        return Run(argc > 1 ? argv[1] : "", Arguments(argv + std::min(argc, 2), argv + argc));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    return EXIT_FAILURE;
}
