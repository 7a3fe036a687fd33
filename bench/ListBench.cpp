#include "Floors.h"
#include "Jobs.h"
#include "Services.h"

#include "browser/FilterLists.h"

#include <filesystem>
#include <random>
#include <stdexcept>

namespace quavernet::bench {

namespace {

constexpr std::size_t performers = 2000;
constexpr std::size_t albums = 4000;
constexpr int drives = 3;
constexpr int qualities = 12;

std::string Word(std::mt19937& chance) {
    static constexpr const char* syllables[] = {"na",  "cht", "ber",  "lin", "grü", "ne", "sto",
                                                "ck",  "wa",  "ld",   "mor", "gen", "ä",  "ther",
                                                "son", "g",   "rock", "'n",  "zu",  "ö"};
    std::string word;
    for (int count = 0; count < 4; ++count) {
        word += syllables[chance() % std::size(syllables)];
    }
    if (word.front() >= 'a' && word.front() <= 'z') {
        word.front() = static_cast<char>(word.front() - 'a' + 'A');
    }
    return word;
}

/// Sends "insert into ... values (...),(...)" with a few hundred rows at a time.
class Inserter {
public:
    explicit Inserter(std::string head) : m_head(std::move(head)) {}
    ~Inserter() { Flush(); }
    Inserter(const Inserter&) = delete;
    Inserter& operator=(const Inserter&) = delete;

    void Add(const std::string& values) {
        m_text += (m_text.empty() ? m_head + " values (" : ", (") + values + ")";
        if (++m_count % 400 == 0) {
            Flush();
        }
    }

private:
    void Flush() {
        if (!m_text.empty()) {
            mainModule.Connection->Execute(m_text);
            m_text.clear();
        }
    }

    std::string m_head;
    std::string m_text;
    std::size_t m_count = 0;
};

std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char character : text) {
        quoted += character == '\'' ? "''" : std::string(1, character);
    }
    return quoted + "'";
}

void FillLibrary(std::size_t rows) {
    std::mt19937 chance(7);
    {
        Inserter interprets("insert into Interpret (Interpret)");
        for (std::size_t number = 0; number < performers; ++number) {
            interprets.Add(Quoted(Word(chance) + " " + Word(chance) + " " + std::to_string(number)));
        }
        Inserter names("insert into Albums (Name)");
        for (std::size_t number = 0; number < albums; ++number) {
            names.Add(Quoted(Word(chance) + " " + std::to_string(number)));
        }
        Inserter titles("insert into Titel (Name)");
        for (std::size_t number = 0; number < rows; ++number) {
            titles.Add(Quoted(Word(chance) + " " + Word(chance) + " " + std::to_string(number)));
        }
        Inserter rates("insert into Quality (Quality)");
        for (int number = 0; number < qualities; ++number) {
            rates.Add(std::to_string(32 + 24 * number));
        }
        Inserter volumes("insert into Drive (Drive)");
        for (int number = 0; number < drives; ++number) {
            volumes.Add(Quoted("/media/" + std::to_string(number)));
        }
    }
    Inserter files(
        "insert into Files (Title_id, Inter_id, Name, Path, Sizeinbytes, DateLastModified, Drive_id, "
        "Quality_id, Length, Extension_id, Genre_id, Album_id)");
    for (std::size_t number = 1; number <= rows; ++number) {
        const std::string name = std::to_string(number) + " " + Word(chance) + ".mp3";
        files.Add(std::to_string(number) + ", " + std::to_string(chance() % performers + 1) + ", " +
                  Quoted(name) + ", " + Quoted("/media/music/" + std::to_string(number / 12) + "/" + name) +
                  ", " + std::to_string(chance() % 9000000) + ", '20.11.2026', " +
                  std::to_string(chance() % drives + 1) + ", " + std::to_string(chance() % qualities + 1) +
                  ", " + std::to_string(chance() % 600) + ", " + std::to_string(chance() % 3 + 1) + ", " +
                  std::to_string(chance() % 80) + ", " + std::to_string(chance() % albums + 1));
    }
}

/// Sets exactly one of the six flags.
void SortBy(bool MainModule::*flag) {
    for (bool MainModule::*each :
         {&MainModule::SortInterpret, &MainModule::SortTitle, &MainModule::SortLength,
          &MainModule::SortQuality, &MainModule::SortFormat, &MainModule::SortSize}) {
        mainModule.*each = each == flag;
    }
}

void Load(const ListFilter& filter, std::size_t least) {
    SilentListWindow window;
    if (LoadDatabase(filter, "", window).Rows.Count() < least) {
        throw std::runtime_error("the list is too short");
    }
}

} // namespace

void MakeLibrary(const Setting& setting, const std::string& path) {
    std::filesystem::copy_file(setting.library, path);
    BenchServices program;
    program.OpenLibrary(path);
    FillLibrary(setting.rows);
}

std::vector<Line> ListJobs(const Setting& setting) {
    const std::string path = setting.work + "/list.db";
    MakeLibrary(setting, path);
    BenchServices program;
    // As after a restart of the program: what the engine gathers at closing is there.
    program.OpenLibrary(path);

    BareLibrary bare(path);
    const std::string all =
        "select F.Path, F.SizeInBytes, T.Name, I.Interpret, Q.Quality, F.File_id, F.Length, F.Name, "
        "E.Extension "
        "from Files F cross join Titel T cross join Interpret I cross join Quality Q cross join Extensions E "
        "where F.Title_id = T.Title_id and F.Inter_id = I.Inter_id and Q.Quality_id = F.Quality_Id "
        "and F.Extension_id = E.Extension_id";
    const auto readAll = [&] { bare.ReadAll(all); };

    const int rounds = setting.rounds * 2 + 1;
    std::vector<Line> lines;
    const auto list = [&](const std::string& job, bool MainModule::*flag, const char* direction) {
        SortBy(flag);
        mainModule.SortDirection = direction;
        lines.push_back(Measure("list " + job, setting.rows, 2, rounds,
                                {nullptr, [&] { Load({}, setting.rows); }}, {nullptr, readAll}));
    };
    list("by performer", &MainModule::SortInterpret, "ASC");
    list("by performer, descending", &MainModule::SortInterpret, "DESC");
    list("by title", &MainModule::SortTitle, "ASC");
    list("by length", &MainModule::SortLength, "ASC");
    list("by quality", &MainModule::SortQuality, "ASC");
    list("by format", &MainModule::SortFormat, "ASC");
    list("by size", &MainModule::SortSize, "ASC");

    SortBy(&MainModule::SortInterpret);
    mainModule.SortDirection = "ASC";
    ListFilter search;
    search.SearchText = "nacht";
    lines.push_back(
        Measure("search", setting.rows, 2, rounds, {nullptr, [&] { Load(search, 1); }},
                {nullptr,
                 [&] { bare.ReadAll(all + " and (I.Interpret like '%nacht%' or T.Name like '%nacht%')"); }}));
    mainModule.LetterFilter = "B";
    lines.push_back(
        Measure("letter", setting.rows, 2, rounds, {nullptr, [] { Load({}, 1); }}, {nullptr, readAll}));
    mainModule.LetterFilter = "All";
    ListFilter genre;
    genre.GenreId = 17;
    lines.push_back(Measure("list of one genre", setting.rows / 80, 2, rounds,
                            {nullptr, [&] { Load(genre, 1); }},
                            {nullptr, [&] { bare.ReadAll(all + " and F.Genre_id = 17"); }}));
    lines.push_back(Measure("filter combos", albums, 2, rounds,
                            {nullptr,
                             [] {
                                 FillDriveCombo();
                                 FillGenreCombo();
                                 FillAlbumCombo();
                             }},
                            {nullptr, [&] {
                                 bare.ReadAll("select Drive, Drive_id from Drive where Drive_id in "
                                              "(select Drive_id from Files)");
                                 bare.ReadAll("select Genre, Genre_id from Genres where Genre_id in "
                                              "(select Genre_id from Files)");
                                 bare.ReadAll("select Name, Album_id from Albums where Album_id in "
                                              "(select Album_id from Files)");
                             }}));
    return lines;
}

} // namespace quavernet::bench
