#include "browser/FilterLists.h"

#include "support/TestLibrary.h"
#include "support/Texts.h"

namespace quavernet::test {

namespace {

/// The entries as "text|number".
std::vector<std::string> Shown(const std::vector<FilterEntry>& entries) {
    std::vector<std::string> texts;
    for (const auto& entry : entries) {
        texts.push_back(entry.Text + "|" + std::to_string(entry.ItemData));
    }
    return texts;
}

class FilterListsTest : public LibraryTest {
protected:
    void AddFile(int drive, int genre, int album) {
        Execute("Insert into Files (Drive_id, Genre_id, Album_id) values (" + std::to_string(drive) + ", " +
                std::to_string(genre) + ", " + std::to_string(album) + ")");
    }
};

} // namespace

TEST_F(FilterListsTest, AnEmptyLibraryShowsTheFixedEntriesAlone) {
    EXPECT_EQ(Shown(FillDriveCombo()), (Texts{"Alle Laufwerke...|0"}));
    EXPECT_EQ(Shown(FillGenreCombo()), (Texts{"Alle Genres...|0", "Kein Genre...|255"}));
    EXPECT_EQ(Shown(FillAlbumCombo()), (Texts{"Alle Alben...|0"}));
}

TEST_F(FilterListsTest, TheFixedEntriesFollowTheLanguage) {
    settings.values["Language"] = "ENG";
    EXPECT_EQ(Shown(FillDriveCombo()), (Texts{"All drives...|0"}));
    EXPECT_EQ(Shown(FillGenreCombo()), (Texts{"All genres...|0", "No genre...|255"}));
    EXPECT_EQ(Shown(FillAlbumCombo()), (Texts{"All albums...|0"}));
}

TEST_F(FilterListsTest, ADriveShowsWhileAFileLiesOnItAndInTheTablesOrder) {
    Execute({"Insert into Drive (Drive_id, Drive) values (1, '/z')",
             "Insert into Drive (Drive_id, Drive) values (2, '/m')",
             "Insert into Drive (Drive_id, Drive) values (3, '/a')"});
    AddFile(3, 255, 1);
    AddFile(1, 255, 1);
    AddFile(1, 255, 1);
    EXPECT_EQ(Shown(FillDriveCombo()), (Texts{"Alle Laufwerke...|0", "/z|1", "/a|3"}));
    AddFile(2, 255, 1);
    EXPECT_EQ(Shown(FillDriveCombo()), (Texts{"Alle Laufwerke...|0", "/z|1", "/m|2", "/a|3"}));
    Execute("Delete from Files where Drive_id = 1");
    EXPECT_EQ(Shown(FillDriveCombo()), (Texts{"Alle Laufwerke...|0", "/m|2", "/a|3"}));
}

TEST_F(FilterListsTest, GenresInUseComeByNameAfterNoGenre) {
    AddFile(1, 17, 1); // Rock
    AddFile(1, 8, 1);  // Jazz
    AddFile(1, 0, 1);  // Blues
    AddFile(1, 8, 1);
    EXPECT_EQ(Shown(FillGenreCombo()),
              (Texts{"Alle Genres...|0", "Kein Genre...|255", "Blues|0", "Jazz|8", "Rock|17"}));
}

TEST_F(FilterListsTest, FilesWithoutGenreDoNotDoubleTheNoGenreEntry) {
    AddFile(1, 255, 1);
    EXPECT_EQ(Shown(FillGenreCombo()), (Texts{"Alle Genres...|0", "Kein Genre...|255"}));
}

TEST_F(FilterListsTest, AlbumsInUseComeByNameWithoutRegardToCase) {
    Execute({"Insert into Albums (Album_id, Name) values (1, 'Zebra')",
             "Insert into Albums (Album_id, Name) values (2, 'apfel')",
             "Insert into Albums (Album_id, Name) values (3, 'Birne')",
             "Insert into Albums (Album_id, Name) values (4, 'Unbenutzt')"});
    AddFile(1, 255, 1);
    AddFile(1, 255, 2);
    AddFile(1, 255, 3);
    EXPECT_EQ(Shown(FillAlbumCombo()), (Texts{"Alle Alben...|0", "apfel|2", "Birne|3", "Zebra|1"}));
}

TEST_F(FilterListsTest, TheNoAlbumRowIsRightUnderTheAllEntry) {
    Execute({"Insert into Albums (Album_id, Name) values (5, 'Alpha')",
             "Insert into Albums (Album_id, Name) values (6, 'Kein Album...')"});
    AddFile(1, 255, 5);
    EXPECT_EQ(Shown(FillAlbumCombo()), (Texts{"Alle Alben...|0", "Alpha|5"}));
    AddFile(1, 255, 6);
    EXPECT_EQ(Shown(FillAlbumCombo()), (Texts{"Alle Alben...|0", "Kein Album...|6", "Alpha|5"}));
}

TEST_F(FilterListsTest, OfTheNoAlbumRowsOfBothLanguagesTheOneReadLastComesFirst) {
    Execute({"Insert into Albums (Album_id, Name) values (5, 'Omega')",
             "Insert into Albums (Album_id, Name) values (6, 'No album...')",
             "Insert into Albums (Album_id, Name) values (7, 'Kein Album...')"});
    AddFile(1, 255, 5);
    AddFile(1, 255, 6);
    AddFile(1, 255, 7);
    const Texts expected{"Alle Alben...|0", "No album...|6", "Kein Album...|7", "Omega|5"};
    EXPECT_EQ(Shown(FillAlbumCombo()), expected);
}

TEST_F(FilterListsTest, OnlyTheLiteralNoAlbumNamesAreMoved) {
    Execute({"Insert into Albums (Album_id, Name) values (5, 'Alpha')",
             "Insert into Albums (Album_id, Name) values (6, 'kein album...')",
             "Insert into Albums (Album_id, Name) values (7, 'No album')"});
    AddFile(1, 255, 5);
    AddFile(1, 255, 6);
    AddFile(1, 255, 7);
    EXPECT_EQ(Shown(FillAlbumCombo()),
              (Texts{"Alle Alben...|0", "Alpha|5", "kein album...|6", "No album|7"}));
}

TEST_F(FilterListsTest, TheResultIsThatOfAStatementForEachRow) {
    Execute({"Insert into Albums (Album_id, Name) values (5, 'Ärger')",
             "Insert into Albums (Album_id, Name) values (6, 'Azur')",
             "Insert into Albums (Album_id, Name) values (7, '1984')",
             "Insert into Albums (Album_id, Name) values (8, 'Leer')"});
    for (const int album : {5, 6, 7}) {
        AddFile(1, 255, album);
    }
    Texts expected{"Alle Alben...|0"};
    for (const auto& row : Rows("Select Name, Album_id from Albums Order By Name")) {
        const auto id = row.substr(row.find('|') + 1);
        if (Count("Select Album_id from Files where Album_id = " + id) > 0) {
            expected.push_back(row);
        }
    }
    EXPECT_EQ(expected.size(), 4u);
    EXPECT_EQ(Shown(FillAlbumCombo()), expected);
}

} // namespace quavernet::test
