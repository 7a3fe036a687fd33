// Rows that the list can't show: those of the start are passed over for the whole run, later ones are
// failures.
#include "browser/ListFaults.h"

#include "browser/LoadDatabase.h"
#include "support/FailureNumber.h"
#include "support/LongWorkDouble.h"
#include "support/TestLibrary.h"
#include "support/Texts.h"

#include <utility>

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;

class ListFaultsTest : public LibraryTest {
protected:
    ListFaultsTest() {
        Execute({"Insert into Interpret (Inter_id, Interpret) values (1, 'Abba')",
                 "Insert into Titel (Title_id, Name) values (1, 'One')",
                 "Insert into Quality (Quality_id, Quality) values (900, '128')"});
        for (const char* id : {"1", "2", "3"}) {
            Execute("Insert into Files (File_id, Name, Path, Title_id, Inter_id, Quality_id, Extension_id, "
                    "SizeInBytes, Length) select " +
                    std::string(id) + ", '" + id + ".mp3', '/m/" + id +
                    ".mp3', 1, 1, 900, Extension_id, 1048576, 65 from Extensions where Extension = 'mp3'");
        }
    }
    /// Length and size of each row.
    Texts Load() {
        const ListResult result = LoadDatabase(ListFilter{}, "", work, [] {});
        total = result.Totals.TotalMegabytes;
        Texts texts;
        for (std::size_t row = 1; row <= result.Rows.Count(); ++row) {
            texts.push_back(result.Rows.Text(row, ListColumn::Length) + "|" +
                            result.Rows.Text(row, ListColumn::Size));
        }
        return texts;
    }

    Texts log;
    LongWorkDouble work{log};
    double total = 0;
};

TEST_F(ListFaultsTest, ASoundListHasNone) {
    FindListFaults();
    EXPECT_EQ(mainModule.ListFaults.Count(), 0U);
    EXPECT_EQ(ListFaultsText(), "");
}

TEST_F(ListFaultsTest, ALengthThatIsMissingAtTheStartIsAnEmptyCellInTheWholeRun) {
    Execute("Update Files Set Length = null where File_id = 2");
    FindListFaults();
    for (int load = 0; load < 2; ++load) {
        EXPECT_THAT(Load(), ElementsAre("01:05 min|1,00 MB", "|1,00 MB", "01:05 min|1,00 MB"));
    }
    EXPECT_EQ(total, 3);
    EXPECT_EQ(ListFaultsText(), "Fehler in der Liste: 2.mp3 (94 - Invalid use of Null)");
    Execute("Update Files Set Name = 'x.mp3', Path = '/m/x.mp3' where File_id = 2");
    EXPECT_EQ(Load().size(), 3U) << "under another name";
}

TEST_F(ListFaultsTest, WhatIsNoLengthAndNoSizeIsAnEmptyCellToo) {
    Execute("Update Files Set Length = 9223372036854775807 where File_id = 1");
    Execute("Update Files Set SizeInBytes = null where File_id = 2");
    Execute("Update Files Set Length = -9000000000, SizeInBytes = null where File_id = 3");
    FindListFaults();
    EXPECT_THAT(Load(), ElementsAre("|1,00 MB", "01:05 min|", "|"));
    EXPECT_EQ(total, 1);
    EXPECT_EQ(mainModule.ListFaults.Count(), 4U);
}

TEST_F(ListFaultsTest, AFaultThatArisesInTheRunIsAFailure) {
    FindListFaults();
    Execute("Update Files Set Length = null where File_id = 2");
    EXPECT_EQ(NumberOf([&] { Load(); }), ErrorNumber::InvalidUseOfNull);
}

TEST_F(ListFaultsTest, AFaultOfTheStartExcusesNoOtherFileAndNoOtherFault) {
    Execute("Update Files Set Length = null where File_id = 2");
    FindListFaults();
    Execute("Update Files Set Length = 9000000000 where File_id = 2");
    EXPECT_EQ(NumberOf([&] { Load(); }), ErrorNumber::Overflow) << "another fault of the same file";
    Execute("Update Files Set Length = null");
    EXPECT_EQ(NumberOf([&] { Load(); }), ErrorNumber::InvalidUseOfNull) << "of the other files";
}

TEST_F(ListFaultsTest, ARowThatNoFilterShowsAtTheStartIsLookedAtToo) {
    Execute("Update Files Set Length = null, Inter_id = 77 where File_id = 2");
    FindListFaults();
    EXPECT_EQ(Load().size(), 2U);
    Execute("Update Files Set Inter_id = 1 where File_id = 2");
    EXPECT_EQ(Load().size(), 3U);
}

TEST_F(ListFaultsTest, TheFirstLoadOfAWholeLibraryNotesTheFaultsFromItsOwnRows) {
    Execute("Update Files Set Length = null where File_id = 2");
    const RecordingConnection& record = Record();
    mainModule.ListFaultsDue = true;
    for (int load = 0; load < 2; ++load) {
        EXPECT_THAT(Load(), ElementsAre("01:05 min|1,00 MB", "|1,00 MB", "01:05 min|1,00 MB"));
    }
    EXPECT_EQ(ListFaultsText(), "Fehler in der Liste: 2.mp3 (94 - Invalid use of Null)");
    EXPECT_THAT(record.StatementsOf("Select File_id, Name, SizeInBytes"), ElementsAre());
    Execute("Update Files Set Length = null where File_id = 3");
    EXPECT_EQ(NumberOf([&] { Load(); }), ErrorNumber::InvalidUseOfNull) << "a fault of the run";
}

TEST_F(ListFaultsTest, AFirstLoadThatShowsNotAllFilesLooksForTheFaultsOfTheOthers) {
    Execute({"Update Files Set Length = null where File_id = 2",
             "Update Files Set Inter_id = 77, SizeInBytes = null where File_id = 3"});
    mainModule.ListFaultsDue = true;
    ListFilter filter;
    filter.SearchText = "nobody";
    EXPECT_EQ(LoadDatabase(filter, "", work, [] {}).Rows.Count(), 0U);
    EXPECT_EQ(mainModule.ListFaults.Count(), 2U);
    Execute("Update Files Set Inter_id = 1 where File_id = 3");
    EXPECT_THAT(Load(), ElementsAre("01:05 min|1,00 MB", "|1,00 MB", "01:05 min|"));
}

TEST_F(ListFaultsTest, WhatLetterAndFormatHideInTheFirstLoadIsNotedToo) {
    Execute("Update Files Set Length = null where File_id = 2");
    mainModule.ListFaultsDue = true;
    mainModule.LetterFilter = "Z";
    ListFilter filter;
    filter.ViewMp3 = false;
    EXPECT_EQ(LoadDatabase(filter, "", work, [] {}).Rows.Count(), 0U);
    mainModule.LetterFilter = "All";
    EXPECT_EQ(Load().size(), 3U);
}

TEST_F(ListFaultsTest, TheFirstLoadNotesWhatALookAtTheLibraryFinds) {
    const char* const values[] = {
        "null",       "0",           "-1",          "59.5",          "-0.5",
        "'text'",     "2147483647",  "2147483648",  "2147483647.5",  "-2147483648",
        "'12'",       "-2147483649", "1e300",       "-1e300",        "1099511627776",
        "x'41'",      "''",          "-9000000000", "1099511627777", "1099511627775.5",
        "1073741824", "2147483646"};
    int id = 10;
    for (const char* size : values) {
        for (const char* length : values) {
            const std::string key = std::to_string(++id);
            Execute("Insert into Files (File_id, Name, Path, Title_id, Inter_id, Quality_id, Extension_id, "
                    "SizeInBytes, Length) select " +
                    key + ", '" + key + ".mp3', '/m/" + key + ".mp3', 1, 1, 900, Extension_id, " + size +
                    ", " + length + " from Extensions where Extension = 'mp3'");
        }
    }
    FindListFaults();
    const StartFaults found = std::exchange(mainModule.ListFaults, StartFaults());
    mainModule.ListFaultsDue = true;
    NoteListFaults(Connection().Query(ListStatement(ListFilter{}, "")), Count("Select * from Files"));
    EXPECT_FALSE(mainModule.ListFaultsDue);
    EXPECT_GT(found.Count(), 100U);
    EXPECT_TRUE(mainModule.ListFaults == found);
}

TEST_F(ListFaultsTest, OfManyFaultsTheFirstFiveAreNamed) {
    Execute("Update Files Set Length = 9000000000, SizeInBytes = null");
    FindListFaults();
    const std::string text = ListFaultsText();
    EXPECT_EQ(std::count(text.begin(), text.end(), '('), 5);
    EXPECT_THAT(text, ::testing::EndsWith("), ..."));
}

} // namespace
} // namespace quavernet::test
