#include "Libraries.h"

#include "Services.h"

#include <filesystem>
#include <random>

namespace quavernet::bench {

namespace {

constexpr std::size_t performers = 2000;
constexpr std::size_t albums = 5000;
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

} // namespace

void MakeLibrary(const std::string& path, const std::string& emptyLibrary, std::size_t rows) {
    std::filesystem::copy_file(emptyLibrary, path);
    BenchServices program;
    program.OpenLibrary(path);
    FillLibrary(rows);
}

} // namespace quavernet::bench
