// Takes any texts through what is between them and the rows of a library: quoting, the scanner that makes
// parameters of literals, the engine itself, the like operator and the order of texts. The input: the length
// of a first text and the text, a second one likewise; the rest is a third text, and a statement of its own.
#include "adapters/sqlite/Collation.h"
#include "adapters/sqlite/LetterTables.h"
#include "adapters/sqlite/LikeOperator.h"
#include "adapters/sqlite/SqliteConnection.h"
#include "adapters/sqlite/StatementText.h"
#include "library/SqlQuote.h"
#include "platform/ADODB.h"
#include "platform/RuntimeError.h"
#include "support/TemporaryFolder.h"

#include "FuzzInput.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace quavernet;
using namespace quavernet::sqlite;
using fuzz::Require;

const std::vector<std::string> DateColumns = {"datelastmodified", "reminddate"};

struct Character {
    char32_t folded;
    std::uint32_t weight;
};

std::vector<Character> CharactersOf(std::string_view text) {
    std::vector<Character> characters;
    for (std::size_t i = 0; i < text.size();) {
        const char32_t c = NextCodePoint(text, i);
        characters.push_back({FoldCase(c), PrimaryWeight(c)});
    }
    return characters;
}

int SignOf(int value) {
    return (value > 0) - (value < 0);
}

// Base letters first, whole texts of them; then, only where these are alike, the accents.
int SlowCompare(std::string_view left, std::string_view right) {
    const auto a = CharactersOf(left), b = CharactersOf(right);
    const auto by = [&](auto member) {
        const auto order = std::lexicographical_compare_three_way(
            a.begin(), a.end(), b.begin(), b.end(),
            [&](const Character& x, const Character& y) { return x.*member <=> y.*member; });
        return order < 0 ? -1 : order > 0 ? 1 : 0;
    };
    const int weights = by(&Character::weight);
    return weights != 0 ? weights : by(&Character::folded);
}

void RequireOrder(const std::array<std::string_view, 3>& texts) {
    for (const auto& a : texts) {
        Require(CompareTexts(a, a) == 0);
        for (const auto& b : texts) {
            const int order = SignOf(CompareTexts(a, b));
            Require(order == SlowCompare(a, b) && order == -SignOf(CompareTexts(b, a)));
            for (const auto& c : texts) {
                Require(!(order <= 0 && CompareTexts(b, c) <= 0) || CompareTexts(a, c) <= 0);
            }
        }
    }
}

// Rows of the table: characters of the text matched so far; columns: those of the pattern.
bool SlowLike(std::string_view pattern, std::string_view text) {
    const auto p = CharactersOf(pattern), t = CharactersOf(text);
    std::vector<bool> row(p.size() + 1);
    row[0] = true;
    for (std::size_t i = 0; i < p.size() && p[i].folded == U'%'; ++i) {
        row[i + 1] = true;
    }
    for (const Character& c : t) {
        std::vector<bool> next(p.size() + 1);
        for (std::size_t i = 0; i < p.size(); ++i) {
            const char32_t wanted = p[i].folded;
            next[i + 1] =
                wanted == U'%' ? next[i] || row[i + 1] : row[i] && (wanted == U'_' || wanted == c.folded);
        }
        row = next;
    }
    return row.back();
}

void RequireLike(const std::string& pattern, const std::string& text) {
    Require(LikePattern(pattern).Matches(text) == SlowLike(pattern, text));
    Require(LikePattern("%" + pattern + "%").Matches(text) == SlowLike("%" + pattern + "%", text));
    if (pattern.find_first_of("%_") == std::string::npos) {
        Require(LikePattern(pattern).Matches(text) == (CompareTexts(pattern, text) == 0));
    }
}

// Where the parameters of a scanned statement are.
std::vector<std::size_t> ParametersIn(const std::string& sql) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < sql.size(); ++i) {
        const char c = sql[i];
        if (c == '?') {
            places.push_back(i);
        } else if (c == '\'' || c == '"' || c == '`' || c == '[') {
            i = std::min(sql.find(c == '[' ? ']' : c, i + 1), sql.size() - 1);
        }
    }
    return places;
}

std::string Spelled(const StatementText& statement, const Literal& literal) {
    if (literal.kind == Literal::Kind::Text) {
        return "'" + SqlQuote(statement.Text(literal)) + "'";
    }
    std::array<char, 512> digits;
    char* const end = digits.data() + digits.size();
    const bool whole = literal.kind == Literal::Kind::Integer;
    const char* last = whole ? std::to_chars(digits.data(), end, literal.integer).ptr
                             : std::to_chars(digits.data(), end, literal.real, std::chars_format::fixed).ptr;
    std::string text(digits.data(), static_cast<std::size_t>(last - digits.data()));
    return whole || text.find('.') != std::string::npos ? text : text + ".0";
}

// The statement with its values put back for the parameters says the same again.
void RequireScan(std::string_view text) {
    StatementText statement;
    try {
        statement.Scan(text, DateColumns);
    } catch (const RuntimeError&) {
        return;
    }
    const auto places = ParametersIn(statement.Sql());
    Require(places.size() == statement.Literals().size());
    StatementText kept;
    kept.ScanKeepingLiterals(text, {});
    const bool hasBrackets = text.find('[') != std::string_view::npos;
    Require(kept.Literals().empty() && (hasBrackets || kept.Sql() == text));
    if (hasBrackets && std::count(text.begin(), text.end(), '.') > 1) {
        return; // What is rewritten once must not be rewritten again.
    }
    std::string again;
    std::size_t from = 0;
    for (std::size_t i = 0; i < places.size(); ++i) {
        again += statement.Sql().substr(from, places[i] - from) + Spelled(statement, statement.Literals()[i]);
        from = places[i] + 1;
    }
    again += statement.Sql().substr(from);
    StatementText second;
    second.Scan(again, DateColumns);
    Require(second.Sql() == statement.Sql() && second.Literals().size() == places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        const Literal& a = statement.Literals()[i];
        const Literal& b = second.Literals()[i];
        Require(a.kind == b.kind && a.isDate == b.isDate && a.integer == b.integer && a.real == b.real);
        Require(statement.Text(a) == second.Text(b));
    }
}

void RequireQuoted(const std::string& text) {
    const std::string quoted = SqlQuote(text);
    Require(SqlUnquote(quoted) == text);
    if (text.find('\0') != std::string::npos) {
        return;
    }
    StatementText statement;
    statement.Scan("Select Inter_id from Interpret where Interpret = '" + quoted + "'", DateColumns);
    Require(statement.Sql() == "Select Inter_id from Interpret where Interpret = ?");
    Require(statement.Text(statement.Literals().front()) == text);
}

ADODB::Connection& Library() {
    static const test::TemporaryFolder folder;
    static const auto connection = [] {
        const std::string path = folder / "Quavernet.db";
        const auto program = std::filesystem::read_symlink("/proc/self/exe");
        std::filesystem::copy_file(program.parent_path() / "Quavernet.db", path);
        auto opened = CreateSqliteConnection({});
        opened->Open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path);
        return opened;
    }();
    return *connection;
}

long RowsOf(const std::string& statement) {
    return static_cast<long>(Library().Query(statement).Rows());
}

// Two texts as performers: what is stored reads back to the byte, and is found by what compares equal.
void RequireStored(const std::string& first, const std::string& second) {
    for (const std::string& text : {first, second}) {
        try {
            Library().Execute("Insert into Interpret (Interpret) values ('" + SqlQuote(text) + "')");
        } catch (const RuntimeError&) {
            Require(text.find('\0') != std::string::npos);
            Library().Execute("Delete from Interpret");
            return;
        }
    }
    const ADODB::RowBlock rows = Library().Query("Select Interpret from Interpret order by Inter_id");
    Require(rows.Rows() == 2 && rows.At(0, 0).Text() == first && rows.At(1, 0).Text() == second);
    const bool equal = CompareTexts(first, second) == 0;
    const std::string quoted = SqlQuote(first);
    Require(RowsOf("Select Inter_id from Interpret where Interpret = '" + quoted + "'") == (equal ? 2 : 1));
    const long like = long{SlowLike("%" + first + "%", first)} + long{SlowLike("%" + first + "%", second)};
    Require(RowsOf("Select Inter_id from Interpret where Interpret Like '%" + quoted + "%'") == like);
    const ADODB::RowBlock sorted = Library().Query("Select Interpret from Interpret order by Interpret");
    Require(CompareTexts(sorted.At(0, 0).Text(), sorted.At(1, 0).Text()) <= 0);
    Library().Execute("Delete from Interpret");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input = fuzz::TextOf(data, size);
    std::array<std::string, 3> texts;
    texts[0] = fuzz::TakeText(input);
    texts[1] = fuzz::TakeText(input);
    texts[2] = input;
    RequireOrder({texts[0], texts[1], texts[2]});
    RequireLike(texts[0], texts[1]);
    RequireLike(texts[1], texts[2]);
    RequireScan(texts[2]);
    for (const std::string& text : texts) {
        RequireQuoted(text);
    }
    RequireStored(texts[0], texts[1]);
    return 0;
}
