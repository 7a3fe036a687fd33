#include "browser/ListQuery.h"

#include "app/MainModule.h"
#include "support/LogicTest.h"

#include <array>

namespace quavernet::test {

namespace {

constexpr const char* Head =
    "Select F.Path, F.SizeInBytes, T.Name, I.Interpret, Q.Quality, F.File_id, F.Length, F.Name, E.Extension "
    "from "
    "Files F, Titel T, Interpret I, Quality Q, Extensions E where F.Title_id = T.Title_id and F.Inter_id = "
    "I.Inter_id and Q.Quality_id = F.Quality_Id and F.Extension_id = E.Extension_id";

constexpr const char* CountHeads[] = {
    "Select Count(Seperate) from (select distinct F.inter_id As Seperate from Files F, Titel T, Interpret I, "
    "Quality Q, Extensions E where F.Title_id = T.Title_id and F.Inter_id = I.Inter_id and Q.Quality_id = "
    "F.Quality_Id and F.Extension_id = E.Extension_id",
    "Select Count(Seperate) from (select distinct F.Title_id As Seperate from Files F, Titel T, Interpret I, "
    "Quality Q, Extensions E where F.Title_id = T.Title_id and F.Inter_id = I.Inter_id and Q.Quality_id = "
    "F.Quality_Id and F.Extension_id = E.Extension_id",
    "Select Count(Seperate) from (select distinct F.Album_id As Seperate from Files F, Titel T, Interpret I, "
    "Quality Q, Extensions E where F.Title_id = T.Title_id and F.Inter_id = I.Inter_id and Q.Quality_id = "
    "F.Quality_Id and F.Extension_id = E.Extension_id",
};

/// What is searched for, and the clause by the two boxes: neither, title, performer, both.
struct SearchCase {
    const char* text;
    std::array<const char*, 4> clauses;
};

const SearchCase Searches[] = {
    {"", {"", "", "", ""}},
    {"abba",
     {"", " and T.Name Like '%abba%'", " and I.Interpret Like '%abba%'",
      " and (I.Interpret Like '%abba%' or T.Name Like '%abba%')"}},
    {"rock 'n' roll",
     {"", " and T.Name Like '%rock ''n'' roll%'", " and I.Interpret Like '%rock ''n'' roll%'",
      " and (I.Interpret Like '%rock ''n'' roll%' or T.Name Like '%rock ''n'' roll%')"}},
    {"50%_",
     {"", " and T.Name Like '%50%_%'", " and I.Interpret Like '%50%_%'",
      " and (I.Interpret Like '%50%_%' or T.Name Like '%50%_%')"}},
};

struct SortCase {
    bool MainModule::*flag;
    const char* clause;
};

const SortCase Sorts[] = {
    {nullptr, ""},
    {&MainModule::SortInterpret, " order by I.Interpret "},
    {&MainModule::SortTitle, " order by T.Name "},
    {&MainModule::SortQuality, " order by Q.Quality "},
    {&MainModule::SortLength, " order by F.Length "},
    {&MainModule::SortFormat, " order by E.Extension "},
    {&MainModule::SortSize, " order by F.SizeInBytes "},
};

class ListStatementsTest : public LogicTest {
protected:
    ListStatementsTest() { mainModule.SortInterpret = false; }

    /// Every combination of search text, boxes and combos, with the clauses it makes.
    template <typename Check> void ForEachFilter(Check&& check) {
        for (const SearchCase& search : Searches) {
            for (unsigned boxes = 0; boxes < 4; ++boxes) {
                for (unsigned combos = 0; combos < 8; ++combos) {
                    ListFilter filter;
                    filter.SearchText = search.text;
                    filter.TitleChecked = (boxes & 1u) != 0;
                    filter.InterpretChecked = (boxes & 2u) != 0;
                    std::string clauses = search.clauses[boxes];
                    if ((combos & 1u) != 0) {
                        filter.DriveId = 4;
                        clauses += " and F.Drive_id = 4";
                    }
                    if ((combos & 2u) != 0) {
                        filter.GenreId = 255;
                        clauses += " and F.Genre_id = 255";
                    }
                    if ((combos & 4u) != 0) {
                        filter.AlbumId = 70000;
                        clauses += " and F.Album_id = 70000";
                    }
                    check(filter, clauses);
                }
            }
        }
    }

    static std::array<std::string, 3> Counts(const ListFilter& filter, const std::string& list) {
        return {InterpretCountStatement(filter, list), TitleCountStatement(filter, list),
                AlbumCountStatement(filter, list)};
    }
};

} // namespace

TEST_F(ListStatementsTest, EveryCombinationOfFilterAndSortIsRightToTheLetter) {
    for (const SortCase& sort : Sorts) {
        for (const char* direction : {"ASC", "DESC"}) {
            mainModule.SortDirection = direction;
            if (sort.flag != nullptr) {
                mainModule.*sort.flag = true;
            }
            const std::string order = sort.flag == nullptr ? "" : sort.clause + std::string(direction);
            ForEachFilter([&](const ListFilter& filter, const std::string& clauses) {
                ASSERT_EQ(ListStatement(filter, ""), Head + clauses + order);
            });
            if (sort.flag != nullptr) {
                mainModule.*sort.flag = false;
            }
        }
    }
}

TEST_F(ListStatementsTest, AGivenListReplacesAllFiltersInBothModes) {
    mainModule.SortTitle = true;
    mainModule.SortDirection = "DESC";
    for (const auto& [grid, chart] : {std::pair{true, false}, {false, true}, {true, true}}) {
        mainModule.ShowInGridMode = grid;
        mainModule.ShowChartMode = chart;
        ForEachFilter([&](const ListFilter& filter, const std::string&) {
            ASSERT_EQ(ListStatement(filter, "3,17,4"),
                      std::string(Head) + " and File_id in (3,17,4) order by T.Name DESC");
        });
    }
}

TEST_F(ListStatementsTest, TheCountersFollowTheFilterControls) {
    ForEachFilter([&](const ListFilter& filter, const std::string& clauses) {
        const auto counts = Counts(filter, "");
        for (std::size_t i = 0; i < counts.size(); ++i) {
            ASSERT_EQ(counts[i], CountHeads[i] + clauses + " )");
        }
    });
}

TEST_F(ListStatementsTest, TheCountersOfATreeRequestFollowItsList) {
    mainModule.ShowInGridMode = true;
    for (const bool chart : {false, true}) {
        mainModule.ShowChartMode = chart;
        ForEachFilter([&](const ListFilter& filter, const std::string&) {
            const auto counts = Counts(filter, "1,2");
            for (std::size_t i = 0; i < counts.size(); ++i) {
                ASSERT_EQ(counts[i], std::string(CountHeads[i]) + " and File_id in (1,2) )");
            }
        });
    }
}

TEST_F(ListStatementsTest, TheCountersOfAChartsRequestStillFollowTheFilterControls) {
    mainModule.ShowChartMode = true;
    ForEachFilter([&](const ListFilter& filter, const std::string& clauses) {
        const auto counts = Counts(filter, "1,2");
        for (std::size_t i = 0; i < counts.size(); ++i) {
            ASSERT_EQ(counts[i], CountHeads[i] + clauses + " )");
        }
    });
}

TEST_F(ListStatementsTest, LetterFormatsAndSortLeaveTheCountersAlone) {
    const ListFilter plain;
    const auto before = Counts(plain, "");
    mainModule.LetterFilter = "B";
    mainModule.SortSize = true;
    ListFilter hidden;
    hidden.ViewMp3 = hidden.ViewOgg = hidden.ViewWav = false;
    EXPECT_EQ(Counts(hidden, ""), before);
    EXPECT_EQ(ListStatement(hidden, ""), std::string(Head) + " order by F.SizeInBytes ASC");
}

TEST_F(ListStatementsTest, OfSeveralSortFlagsTheFirstOfTheOrderCounts) {
    mainModule.SortInterpret = mainModule.SortTitle = mainModule.SortQuality = mainModule.SortLength =
        mainModule.SortFormat = mainModule.SortSize = true;
    for (std::size_t i = 1; i < std::size(Sorts); ++i) {
        EXPECT_EQ(ListStatement({}, ""), std::string(Head) + Sorts[i].clause + "ASC");
        mainModule.*Sorts[i].flag = false;
    }
    EXPECT_EQ(ListStatement({}, ""), Head);
}

} // namespace quavernet::test
