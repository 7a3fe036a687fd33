#include "browser/ExchangeInterpretTitle.h"

#include "support/TreeLibraryTest.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ExchangeInterpretTitleTest : public TreeLibraryTest {
protected:
    /// A file of this performer and title, listed and selected.
    void AddSong(const std::string& name, const std::string& performer, const std::string& title) {
        AddFile(name);
        Execute("Update Files Set Inter_id = " + IdOf("Inter_id", "Interpret", "Interpret", performer) +
                ", Title_id = " + IdOf("Title_id", "Titel", "Name", title) + " where Path = '/m/" + name +
                "'");
        mainModule.FilePaths.Add("/m/" + name);
        mainModule.SelectedRows.Add(static_cast<std::int32_t>(mainModule.FilePaths.Count()));
        connection.statements.clear();
    }
    std::vector<std::string> Songs() {
        return Rows("Select I.Interpret, T.Name from Files F, Interpret I, Titel T where F.Inter_id = "
                    "I.Inter_id and F.Title_id = T.Title_id order by F.File_id");
    }
    void Exchange() { ExchangeInterpretTitle(views); }

private:
    std::string IdOf(const std::string& id, const std::string& table, const std::string& column,
                     const std::string& text) {
        const std::string select =
            "Select " + id + " from " + table + " where " + column + " = '" + text + "'";
        if (Count(select) == 0) {
            Execute("Insert into " + table + " (" + column + ") values ('" + text + "')");
        }
        return Value(select);
    }
};

TEST_F(ExchangeInterpretTitleTest, PerformerAndTitleAreSwappedInTheLibrary) {
    AddSong("a.mp3", "Abba", "Waterloo");
    Exchange();
    EXPECT_THAT(connection.statements,
                ElementsAre("Select Title_id, Inter_id from Files where Path = '/m/a.mp3'",
                            "Select Interpret from Interpret where Inter_id = 1",
                            "Select Name from Titel where Title_id = 1",
                            "Select Inter_id from Interpret where Interpret = 'Waterloo'",
                            "Insert Into Interpret (Interpret) values ('Waterloo')",
                            "Select Max(Inter_id) from Interpret where Interpret = 'Waterloo'",
                            "Select Title_id from Titel where Name = 'Abba'",
                            "Insert Into Titel (Name) values ('Abba')",
                            "Select Max(Title_id) from Titel where Name = 'Abba'",
                            "Update Files Set Inter_id = 2, Title_id = 2 where Path = '/m/a.mp3'"));
    EXPECT_THAT(Songs(), ElementsAre("Waterloo|Abba"));
    EXPECT_THAT(calls, ElementsAre("load ''"));
    EXPECT_THAT(Rows("Select Interpret from Interpret"), ElementsAre("Abba", "Waterloo"))
        << "the old name stays";
}

TEST_F(ExchangeInterpretTitleTest, SwappedTwiceTheOldRowsAreThereAgain) {
    AddSong("a.mp3", "Abba", "Waterloo");
    Exchange();
    connection.statements.clear();
    Exchange();
    EXPECT_THAT(connection.statements,
                ElementsAre("Select Title_id, Inter_id from Files where Path = '/m/a.mp3'",
                            "Select Interpret from Interpret where Inter_id = 2",
                            "Select Name from Titel where Title_id = 2",
                            "Select Inter_id from Interpret where Interpret = 'Abba'",
                            "Select Title_id from Titel where Name = 'Waterloo'",
                            "Update Files Set Inter_id = 1, Title_id = 1 where Path = '/m/a.mp3'"));
    EXPECT_THAT(Songs(), ElementsAre("Abba|Waterloo"));
}

TEST_F(ExchangeInterpretTitleTest, SeveralRowsAreSwappedInTheOrderOfTheSelection) {
    AddSong("a.mp3", "Abba", "Waterloo");
    AddSong("b.mp3", "Waterloo", "Abba");
    AddSong("c.mp3", "Cure", "Friday");
    mainModule.SelectedRows.Clear();
    mainModule.SelectedRows.Add(3);
    mainModule.SelectedRows.Add(1);
    Exchange();
    EXPECT_THAT(Songs(), ElementsAre("Waterloo|Abba", "Waterloo|Abba", "Friday|Cure"));
    EXPECT_EQ(connection.statements.front(), "Select Title_id, Inter_id from Files where Path = '/m/c.mp3'");
    EXPECT_THAT(calls, ElementsAre("load ''"));
}

TEST_F(ExchangeInterpretTitleTest, ApostrophesAreQuoted) {
    AddSong("it''s.mp3", "Guns n'' Roses", "Knockin'' on Heaven''s Door");
    mainModule.FilePaths.Clear();
    mainModule.FilePaths.Add("/m/it's.mp3");
    Exchange();
    EXPECT_THAT(Songs(), ElementsAre("Knockin' on Heaven's Door|Guns n' Roses"));
    Exchange();
    EXPECT_THAT(Songs(), ElementsAre("Guns n' Roses|Knockin' on Heaven's Door"));
}

TEST_F(ExchangeInterpretTitleTest, ANameThatIsThereInAnotherSpellingByCaseIsTaken) {
    AddSong("a.mp3", "Abba", "Waterloo");
    Execute("Insert into Interpret (Interpret) values ('WATERLOO')");
    Exchange();
    EXPECT_THAT(Songs(), ElementsAre("WATERLOO|Abba"));
}

TEST_F(ExchangeInterpretTitleTest, AFileThatHasGoneFromTheLibraryChangesNoOther) {
    AddSong("a.mp3", "Abba", "Waterloo");
    AddSong("b.mp3", "Cure", "Friday");
    Execute("Delete from Files where Path = '/m/a.mp3'");
    Exchange();
    EXPECT_THAT(Songs(), ElementsAre("Friday|Cure"));
    ADODB::Recordset nameless;
    nameless.Open("Select Inter_id from Interpret where Interpret = ''", *mainModule.Connection);
    EXPECT_EQ(nameless.RecordCount(), 0);
}

TEST_F(ExchangeInterpretTitleTest, AFailingStatementIsAFailureAndWhatWasDoneStays) {
    AddSong("a.mp3", "Abba", "Waterloo");
    AddSong("b.mp3", "Cure", "Friday");
    connection.failOn = "Insert Into Titel (Name) values ('Cure')";
    EXPECT_THROW(Exchange(), RuntimeError);
    EXPECT_THAT(Songs(), ElementsAre("Waterloo|Abba", "Cure|Friday"));
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ExchangeInterpretTitleTest, WithoutASelectionTheListIsLoaded) {
    Exchange();
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_THAT(calls, ElementsAre("load ''"));
}

} // namespace
} // namespace quavernet::test
