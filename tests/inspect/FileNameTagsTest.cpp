#include "inspect/InspectTest.h"

namespace quavernet::test {

class FileNameTagsTest : public InspectTest {
protected:
    // "performer|title|genre" as the name gives them.
    std::string Tags(const std::string& name) {
        file.CurrentFileName = name;
        file.Id3v1Tag = Id3v1Tag();
        file.Id3v1Tag.TagGenre = 7;
        TagsFromFileName(file);
        return file.Id3v1Tag.TagArtist + "|" + file.Id3v1Tag.TagTitle + "|" +
               std::to_string(file.Id3v1Tag.TagGenre);
    }
};

TEST_F(FileNameTagsTest, OnePieceIsTheTitleOfAnUnknownPerformer) {
    EXPECT_EQ(Tags("Lied.mp3"), "Unbekannt|Lied|255");
    EXPECT_EQ(Tags("  Lied eins.mp3"), "Unbekannt|Lied eins|255");
}

TEST_F(FileNameTagsTest, TwoPiecesArePerformerAndTitle) {
    EXPECT_EQ(Tags("a-b.mp3"), "a|b|255");
    EXPECT_EQ(Tags("  Künstler  -  Lied.mp3"), "Künstler|Lied|255");
}

TEST_F(FileNameTagsTest, OfThreePiecesTheGreaterOfTheFirstTwoIsThePerformer) {
    EXPECT_EQ(Tags("01 - Künstler - Lied.mp3"), "Künstler|Lied|255");
    EXPECT_EQ(Tags("Künstler - 01 - Lied.mp3"), "Künstler|Lied|255");
    EXPECT_EQ(Tags("same - same - Lied.mp3"), "same|Lied|255");
    EXPECT_EQ(Tags("a - B - Lied.mp3"), "a|Lied|255") << "small letters sort after capitals";
    EXPECT_EQ(Tags("Z - Ä - Lied.mp3"), "Ä|Lied|255");
    EXPECT_EQ(Tags("ab - a - Lied.mp3"), "ab|Lied|255") << "the longer one";
    EXPECT_EQ(Tags("a - ab - Lied.mp3"), "ab|Lied|255");
}

TEST_F(FileNameTagsTest, PiecesCompareByCodePointAndAnInvalidByteByItsValue) {
    EXPECT_EQ(Tags("\xFF - Ā - Lied.mp3"), "Ā|Lied|255") << "U+0100 sorts after the byte FF";
}

TEST_F(FileNameTagsTest, FurtherPiecesAreDropped) {
    EXPECT_EQ(Tags("a - b - c - d.mp3"), "b|c|255");
}

TEST_F(FileNameTagsTest, TheRestIsTrimmedBeforeItsExtensionGoesAndNotAgain) {
    EXPECT_EQ(Tags("a -  b .mp3  "), "a|b |255");
    EXPECT_EQ(Tags("a - b.mp3 "), "a|b|255");
    EXPECT_EQ(Tags("b.flac"), "Unbekannt|b.|255") << "four characters, whatever they are";
}

TEST_F(FileNameTagsTest, ARestOfFourCharactersLeavesAnEmptyTitle) {
    EXPECT_EQ(Tags("a - .mp3"), "a||255");
    EXPECT_EQ(Tags("-.mp3"), "||255");
}

TEST_F(FileNameTagsTest, ARestOfUnderFourCharactersMakesBothUnknownAndKeepsTheGenre) {
    EXPECT_EQ(Tags("a - mp3"), "Unbekannt|Unbekannt|7");
    EXPECT_EQ(Tags("a.mp3-"), "Unbekannt|Unbekannt|7");
    EXPECT_EQ(Tags("äöü"), "Unbekannt|Unbekannt|7") << "three characters of two bytes each";
    EXPECT_EQ(Tags("-   "), "Unbekannt|Unbekannt|7");
}

TEST_F(FileNameTagsTest, TextsAreCutAt30Characters) {
    const std::string forty(40, 'x');
    EXPECT_EQ(Tags("ä" + forty + "-ö" + forty + ".mp3"),
              "ä" + std::string(29, 'x') + "|ö" + std::string(29, 'x') + "|255");
    EXPECT_EQ(Tags("y" + forty + "-01-z" + forty + ".mp3"),
              "y" + std::string(29, 'x') + "|z" + std::string(29, 'x') + "|255");
}

TEST_F(FileNameTagsTest, AnEmptyNameIsTakenFromTheDetailsPathAndKept) {
    file.DetailsPath = "/music/a/Wer - Was.mp3";
    EXPECT_EQ(Tags(""), "Wer|Was|255");
    EXPECT_EQ(file.CurrentFileName, "Wer - Was.mp3");
}

TEST_F(FileNameTagsTest, WithoutAnyNameBothAreUnknown) {
    EXPECT_EQ(Tags(""), "Unbekannt|Unbekannt|7");
}

TEST_F(FileNameTagsTest, ANameOfMoreCharactersThan16BitsCountMakesBothUnknown) {
    EXPECT_EQ(Tags(std::string(32763, 'x') + ".mp3"), "Unbekannt|" + std::string(30, 'x') + "|255");
    EXPECT_EQ(Tags(std::string(32764, 'x') + ".mp3"), "Unbekannt|Unbekannt|7");
}

TEST_F(FileNameTagsTest, TheUnknownTextFollowsTheLanguage) {
    settings.values["Language"] = "FRA";
    EXPECT_EQ(Tags("Lied.mp3"), "Error : No Local Data|Lied|255");
}

} // namespace quavernet::test
