#include "browser/FilterLists.h"
#include "browser/LoadDatabase.h"
#include "support/EngineStatements.h"
#include "support/TestLibrary.h"

#include <chrono>
#include <memory>

#include <gtest/gtest.h>

namespace quavernet::test {
namespace {

class TableAnswersTest : protected EngineStatements, public LibraryTest {
protected:
    TableAnswersTest() { AddFile(); }

    std::string Counted() { return Value(FileCount); }
    static void AddFile() {
        mainModule.Connection->Execute("Insert into Files (Name) values ('a')");
        mainModule.Connection->Commit();
    }

    static constexpr const char* FileCount = "Select Count(*) from Files";
};

TEST_F(TableAnswersTest, TheFilesAreCountedOnceWhileNobodyWrites) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Counted(), "1");
        mainModule.Connection->Commit(); // Ends the read that follows may share.
    }
    EXPECT_EQ(CountOf(FileCount), 1);
}

TEST_F(TableAnswersTest, WhatTheProgramWritesItselfIsSeen) {
    EXPECT_EQ(Counted(), "1");
    AddFile();
    EXPECT_EQ(Counted(), "2");
    mainModule.Connection->Execute("Insert into Files (Name) values ('b')");
    EXPECT_EQ(Counted(), "3") << "not committed yet";
    mainModule.Connection->Commit();
    EXPECT_EQ(Counted(), "3");
    mainModule.Connection->Execute("Delete from Files");
    mainModule.Connection->Commit();
    EXPECT_EQ(Counted(), "0");
}

TEST_F(TableAnswersTest, WhatAnotherProgramWritesIsSeen) {
    const auto other = OpenLibrary(libraryPath);
    for (const char* expected : {"1", "2", "3"}) {
        mainModule.Connection->Commit();
        EXPECT_EQ(Counted(), expected);
        other->Execute("Insert into Files (Name) values ('other')");
        other->Commit();
    }
}

TEST_F(TableAnswersTest, TheCombosFollowEveryWrite) {
    mainModule.Connection->Execute("Insert into Albums (Album_id, Name) values (900, 'Blue')");
    mainModule.Connection->Commit();
    const std::size_t before = FillAlbumCombo().size();
    EXPECT_EQ(FillAlbumCombo().size(), before);
    mainModule.Connection->Execute("Update Files Set Album_id = 900");
    mainModule.Connection->Commit();
    ASSERT_EQ(FillAlbumCombo().size(), before + 1);
    EXPECT_EQ(FillAlbumCombo().back().Text, "Blue");
    EXPECT_EQ(CountOf("Select A.Name"), 2);
    OpenLibrary(libraryPath)->Execute("Update Albums Set Name = 'Red' where Album_id = 900");
    EXPECT_EQ(FillAlbumCombo().back().Text, "Red");
}

TEST_F(TableAnswersTest, AStatementWithAValueIsAskedEachTime) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(RowTextsOf(*mainModule.Connection, "Select Count(*) from Files where File_id > 0").front(),
                  "1");
    }
    EXPECT_EQ(CountOf(FileCount), 3);
}

TEST_F(TableAnswersTest, AnAnswerThatDependsOnMoreThanTablesIsAskedEachTime) {
    const std::string statement = "Select random() from Files";
    const auto first = RowTextsOf(*mainModule.Connection, statement);
    EXPECT_NE(RowTextsOf(*mainModule.Connection, statement), first);
}

TEST_F(TableAnswersTest, ManyColumnsAndManyRowsAreNotKept) {
    for (int i = 0; i < 2; ++i) {
        mainModule.Connection->Query("Select File_id, Name, Path from Files");
        mainModule.Connection->Query("Select A.File_id from Files A, Genres B, Genres C");
    }
    EXPECT_EQ(CountOf("Select File_id"), 2);
    EXPECT_EQ(CountOf("Select A.File_id"), 2);
}

TEST_F(TableAnswersTest, AnotherLibraryHasItsOwnAnswers) {
    // Neither has changes of its own since it was opened, so that nothing but the opening tells them apart.
    const std::string copy = libraryFolder / "empty.db";
    CopyTemplate(copy);
    mainModule.Connection->Commit();
    mainModule.Connection->Open(ConnectionStart + libraryPath);
    EXPECT_EQ(Counted(), "1");
    mainModule.Connection->Open(ConnectionStart + copy);
    EXPECT_EQ(Counted(), "0");
}

/// The whole connection, which would hold a read for an hour.
class AnswersInAReadTest : protected EngineStatements, public LibraryTest {
protected:
    AnswersInAReadTest() {
        using namespace std::chrono_literals;
        mainModule.Connection = CreateSqliteConnection(services.regional, 200ms, 1h);
        mainModule.Connection->Open(ConnectionStart + libraryPath);
    }
    std::string Files() { return Value(FileCount); }
    std::string Titles() { return Value("Select Count(*) from Titel"); }
    void OtherAdds() {
        m_other->Execute("Insert into Files (Name) values ('other')");
        m_other->Execute("Insert into Titel (Name) values ('other')");
        m_other->Commit();
    }

    static constexpr const char* FileCount = "Select Count(*) from Files";
    std::unique_ptr<ADODB::Connection> m_other = OpenLibrary(libraryPath);
};

TEST_F(AnswersInAReadTest, AnAnswerThatWasKeptBeforeTheReadBeganIsAsOldAsTheRead) {
    Titles();
    EXPECT_EQ(Files(), "0");
    Connection().Commit(); // Ends that read; its answer is kept.
    OtherAdds();
    EXPECT_EQ(Titles(), "1"); // The next one begins.
    OtherAdds();
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Files(), "1") << "neither of before the read nor of after it";
        EXPECT_EQ(Titles(), "1");
    }
    EXPECT_EQ(CountOf(FileCount), 2);
    Connection().Commit();
    EXPECT_EQ(Files(), "2");
    EXPECT_EQ(Titles(), "2");
}

TEST_F(AnswersInAReadTest, AnAnswerThatWasKeptInAReadDoesNotOutliveIt) {
    Titles();
    EXPECT_EQ(Files(), "0"); // In the read, as long as it lasts.
    OtherAdds();
    EXPECT_EQ(Files(), "0");
    EXPECT_EQ(CountOf(FileCount), 1);
    Connection().Commit();
    EXPECT_EQ(Files(), "1");
    Titles();
    OtherAdds();
    EXPECT_EQ(Files(), "1");
    EXPECT_NO_THROW(Execute("Insert into Files (Name) values ('own')")) << "a write ends the read";
    EXPECT_EQ(Files(), "3");
    Connection().Commit();
    EXPECT_EQ(Files(), "3");
}

} // namespace
} // namespace quavernet::test
