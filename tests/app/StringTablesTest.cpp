#include "app/LoadResString.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>

namespace quavernet::test {

namespace {

std::string_view German(std::int32_t id) {
    return QuavernetGER.GetResourceString(id).value_or("(missing)");
}

std::string_view English(std::int32_t id) {
    return QuavernetENG.GetResourceString(id).value_or("(missing)");
}

std::size_t BlanksInFront(std::string_view text) {
    return std::min(text.find_first_not_of(' '), text.size());
}

std::size_t BlanksAfter(std::string_view text) {
    const auto last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? text.size() : text.size() - last - 1;
}

bool Ascending(const clsResources& table) {
    return std::adjacent_find(table.begin(), table.end(),
                              [](const auto& a, const auto& b) { return a.id >= b.id; }) == table.end();
}

/// The wording is fixed up to here; the texts after it are free.
constexpr std::int32_t LastFixedText = 610;

/// FNV-1a over the numbers and fixed texts of a table.
std::uint64_t Fingerprint(const clsResources& table) {
    std::uint64_t hash = 14695981039346656037ull;
    for (const auto& entry : table) {
        if (entry.id > LastFixedText) {
            break;
        }
        for (const char c : std::to_string(entry.id) + std::string(entry.text) + "\n") {
            hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ull;
        }
    }
    return hash;
}

/// The patterns of a dialog filter: every second part between bars.
std::vector<std::string> Patterns(std::string_view filter) {
    std::vector<std::string> parts(1);
    for (const char c : filter) {
        if (c == '|') {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    std::vector<std::string> patterns;
    for (std::size_t i = 1; i < parts.size(); i += 2) {
        patterns.push_back(parts[i]);
    }
    return patterns;
}

} // namespace

TEST(StringTablesTest, BothLanguagesKnowTheSameNumbersInAscendingOrder) {
    EXPECT_TRUE(Ascending(QuavernetGER));
    EXPECT_TRUE(Ascending(QuavernetENG));
    ASSERT_EQ(QuavernetGER.end() - QuavernetGER.begin(), QuavernetENG.end() - QuavernetENG.begin());
    EXPECT_TRUE(std::equal(QuavernetGER.begin(), QuavernetGER.end(), QuavernetENG.begin(),
                           [](const auto& a, const auto& b) { return a.id == b.id; }));
}

TEST(StringTablesTest, EveryRangeOfNumbersIsComplete) {
    std::set<std::int32_t> wanted;
    const auto add = [&wanted](std::int32_t first, std::int32_t last) {
        for (std::int32_t id = first; id <= last; ++id) {
            wanted.insert(id);
        }
    };
    add(101, 117);
    add(123, 124);
    add(201, 236);
    add(238, 251);
    add(301, 302);
    add(306, 398);
    add(408, 421);
    add(432, 454);
    add(500, 561);
    add(571, 610);
    add(701, 710);
    add(750, 790);
    add(800, 812);
    add(830, 835);
    add(850, 873);
    add(900, 904);
    std::set<std::int32_t> known;
    for (const auto& entry : QuavernetGER) {
        known.insert(entry.id);
    }
    EXPECT_EQ(known, wanted);
}

TEST(StringTablesTest, NoTextIsEmptyAndBlanksAtTheEndsAgree) {
    for (const auto& entry : QuavernetGER) {
        EXPECT_FALSE(entry.text.empty()) << entry.id;
        EXPECT_FALSE(English(entry.id).empty()) << entry.id;
        EXPECT_EQ(BlanksInFront(entry.text), BlanksInFront(English(entry.id))) << entry.id;
        EXPECT_EQ(BlanksAfter(entry.text), BlanksAfter(English(entry.id))) << entry.id;
    }
}

TEST(StringTablesTest, ACommandThatOpensADialogSaysSoInBothLanguages) {
    for (const auto& entry : QuavernetGER) {
        EXPECT_EQ(entry.text.ends_with("..."), English(entry.id).ends_with("...")) << entry.id;
        EXPECT_EQ(entry.text.ends_with(":"), English(entry.id).ends_with(":")) << entry.id;
    }
}

TEST(StringTablesTest, DialogFiltersKeepTheirPatterns) {
    for (const std::int32_t id : {318, 361, 365, 396}) {
        EXPECT_EQ(Patterns(German(id)), Patterns(English(id))) << id;
        EXPECT_FALSE(Patterns(English(id)).empty()) << id;
    }
}

TEST(StringTablesTest, TheListsHeadHasSixColumnsInBothLanguages) {
    EXPECT_EQ(German(384), "<Interpret|Titel|Länge|Grösse|Qualität (Bit)|Format");
    EXPECT_EQ(English(384), "<Performer|Title|Length|Size|Quality (bit)|Format");
}

TEST(StringTablesTest, TheNoAlbumRowHasItsLiteralNames) {
    EXPECT_EQ(German(328), "Kein Album...");
    EXPECT_EQ(English(328), "No album...");
}

TEST(StringTablesTest, TheCoverPlaceholderAndTheHelpDocumentAreInBothLanguages) {
    EXPECT_NE(German(508).find("#coverstring#"), std::string_view::npos);
    EXPECT_NE(English(508).find("#coverstring#"), std::string_view::npos);
    EXPECT_EQ(German(415), "Hilfe zum Quavernet.doc");
    EXPECT_EQ(English(415), "Help for Quavernet.doc");
}

TEST(StringTablesTest, LetterCaptionsStayShort) {
    EXPECT_EQ(English(543), "{all}");
    EXPECT_EQ(English(544), "Other");
}

TEST(StringTablesTest, EnglishTextsHoldNoUmlauts) {
    for (const auto& entry : QuavernetENG) {
        EXPECT_TRUE(std::all_of(entry.text.begin(), entry.text.end(), [](char c) {
            return static_cast<unsigned char>(c) < 0x80;
        })) << entry.id;
    }
}

TEST(StringTablesTest, GermanTextsAreRightToTheLetter) {
    const std::pair<std::int32_t, std::string_view> texts[] = {
        {101, "OK"},
        {117, "Browse..."},
        {123, "GO"},
        {207, "Scanvorgang starten..."},
        {213, "Quavernet beenden"},
        {301, "Über Quavernet"},
        {343, "Scanning... "},
        {344, " Prozent bearbeitet!"},
        {345, "verbl.: "},
        {347, "Unbekannt"},
        {348, "Initialisiere Ordner "},
        {351, "letzter scan: "},
        {365, "Quavernet Biliothek (*.qvn)|*.qvn"},
        {371, " in der Datenbank gespeichert"},
        {388, "Alle Laufwerke..."},
        {389, "Alle Genres..."},
        {390, "Kein Genre..."},
        {391, "Alle Alben..."},
        {397, "Der interne Player unterstützt zurzeit nur eine Anzahl von 32767 abzuspielenden Dateien"},
        {416, " - nicht definiert - "},
        {417, "Dieses Program benötigt mindestens Microsoft Internet Explorer 5.5!"},
        {432, "Bereit!"},
        {435, "Jet 4.0 ist normalerweise Bestandteil von MDAC 2.5. Bei den Versionen 2.7 und 2.8 "},
        {443, "Programm wird beendet"},
        {445, "Fehler: "},
        {543, "{alle}"},
        {544, "Sonstige"},
        {584, " Dateien / ("},
        {585, " Datei / ("},
        {597, "Scant ein gewähltes Laufwerk/Ordner nach Dateien"},
        {610, "Minimieren"},
    };
    for (const auto& [id, text] : texts) {
        EXPECT_EQ(German(id), text);
    }
}

TEST(StringTablesTest, NoGermanTextChangesUnnoticed) {
    // The wording is fixed to the letter; whoever changes a text on purpose changes this number too.
    EXPECT_EQ(Fingerprint(QuavernetGER), 0xaf4796773600d1e2u);
}

} // namespace quavernet::test
