#include "inspect/InspectTest.h"

#include <filesystem>

#include <sys/stat.h>

namespace quavernet::test {

using InspectFileTest = InspectTest;

const std::string Nul(1, '\0');

TEST_F(InspectFileTest, FillsTheFiveTextsFromAVersion1Tag) {
    Inspect("x - y.mp3", Mpeg(160000) + TagV1("Titel", "K\xFCnstler", "Album", "1999", "", 17));
    EXPECT_EQ(file.FileTitle, "Titel");
    EXPECT_EQ(file.FileArtist, "Künstler");
    EXPECT_EQ(file.FileAlbum, "Album");
    EXPECT_EQ(file.FileGenre, "17");
    EXPECT_EQ(file.FileQuality, "128");
    EXPECT_EQ(file.AudioInfo.Length, 10);
}

TEST_F(InspectFileTest, BlanksTheRecordOfTheFileBefore) {
    Inspect("a.mp3", Mpeg(300) + TagV1("Titel", "Wer", "Album", "1999", "Text", 17));
    Inspect("b.mp3", TagV2(3, TextFrame(3, "TIT2", "Zwei")) + Mpeg(300));
    EXPECT_EQ(file.FileAlbum, "");
    EXPECT_EQ(file.FileGenre, "255");
    EXPECT_EQ(file.Id3v1Tag.TagYear, "");
    EXPECT_EQ(file.Id3v1Tag.TagComment, "");
}

TEST_F(InspectFileTest, AFileWithBothTagsGetsVersion2AndNoAlbumOrGenre) {
    Inspect("a.mp3", TagV2(3, TextFrame(3, "TIT2", "Zwei") + TextFrame(3, "TPE1", "Zweiter") +
                                  TextFrame(3, "TALB", "Album 2") + TextFrame(3, "TCON", "(9)")) +
                         Mpeg(300) + TagV1("Eins", "Erster", "Album 1", "", "", 17));
    EXPECT_EQ(file.FileTitle, "Zwei");
    EXPECT_EQ(file.FileArtist, "Zweiter");
    EXPECT_EQ(file.FileAlbum, "");
    EXPECT_EQ(file.FileGenre, "255");
}

TEST_F(InspectFileTest, TrailingBlanksGoFromPerformerTitleAndAlbum) {
    std::string tag = TagV1("", "");
    tag = Put(Put(Put(tag, 3, std::string(90, ' ')), 3, "Titel"), 33, "Wer");
    Inspect("a.mp3", Mpeg(300) + Put(tag, 63, "Album"));
    EXPECT_EQ(file.FileTitle, "Titel");
    EXPECT_EQ(file.FileArtist, "Wer");
    EXPECT_EQ(file.FileAlbum, "Album");
    EXPECT_EQ(file.Id3v1Tag.TagTitle, "Titel") << "written back into the record";
    EXPECT_EQ(file.Id3v1Tag.TagArtist, "Wer");
    EXPECT_EQ(file.Id3v1Tag.TagAlbum, "Album" + std::string(25, ' ')) << "not written back";
}

TEST_F(InspectFileTest, NulsGoFromAllTextsAndBlanksInFrontOfThemOnlyFromPerformerAndTitle) {
    Inspect("a.mp3", Mpeg(300) + TagV1("  Ti" + Nul + "tel  ", " Wer ", " Album  "));
    EXPECT_EQ(file.FileTitle, "Titel");
    EXPECT_EQ(file.FileArtist, "Wer");
    EXPECT_EQ(file.FileAlbum, " Album  ");
}

TEST_F(InspectFileTest, AnAlbumOfBlanksInFrontOfNulsIsAnAlbumOfItsOwn) {
    Inspect("a.mp3", Mpeg(300) + TagV1("t", "a", "    "));
    EXPECT_EQ(file.FileAlbum, "    ");
}

TEST_F(InspectFileTest, AnEmptyPerformerOrTitleIsUnknown) {
    Inspect("x - y.mp3", Mpeg(300) + TagV1("Titel", ""));
    EXPECT_EQ(file.FileArtist, "Unbekannt");
    EXPECT_EQ(file.FileTitle, "Titel");
    Inspect("x - y.mp3", Mpeg(300) + TagV1("   ", "Wer"));
    EXPECT_EQ(file.FileArtist, "Wer");
    EXPECT_EQ(file.FileTitle, "Unbekannt") << "empty once its blanks are gone";
}

TEST_F(InspectFileTest, ABlankVersion1TagIsNamedAfterTheFileAndKeepsItsGenreForTheStore) {
    for (const char* blank : {"", "   ", "                              "}) {
        Inspect("Wer - Was.mp3", Mpeg(300) + TagV1(blank, blank, "Album", "", "", 17));
        EXPECT_EQ(file.FileArtist, "Wer");
        EXPECT_EQ(file.FileTitle, "Was");
        EXPECT_EQ(file.FileAlbum, "Album");
        EXPECT_EQ(file.FileGenre, "17");
        EXPECT_EQ(file.Id3v1Tag.TagGenre, 255);
        EXPECT_TRUE(file.HasTagV1);
    }
}

TEST_F(InspectFileTest, ATagThatSaysUnknownTwiceIsNamedAfterTheFileToo) {
    Inspect("Wer - Was.mp3", Mpeg(300) + TagV1("Unbekannt", "Unbekannt"));
    EXPECT_EQ(file.FileArtist, "Wer");
}

TEST_F(InspectFileTest, ATitleWonFromTheNameMayStayEmpty) {
    Inspect("Wer - .mp3", Mpeg(300) + TagV1("", ""));
    EXPECT_EQ(file.FileArtist, "Wer");
    EXPECT_EQ(file.FileTitle, "");
}

TEST_F(InspectFileTest, AnEmptyTitleOfAFileWithoutATagIsUnknown) {
    Inspect("Wer - .mp3", Mpeg(300));
    EXPECT_EQ(file.FileArtist, "Wer");
    EXPECT_EQ(file.FileTitle, "Unbekannt");
}

TEST_F(InspectFileTest, AFileWithoutATagAndWithoutADashIsItsOwnTitle) {
    Inspect("Lied.mp3", Mpeg(300));
    EXPECT_EQ(file.FileTitle, "Lied");
    EXPECT_EQ(file.FileArtist, "Unbekannt");
    EXPECT_EQ(file.FileGenre, "255");
    EXPECT_EQ(file.FileAlbum, "");
}

TEST_F(InspectFileTest, AFileThatIsMissingIsNamedAfterItsName) {
    file.CurrentFileName = "Wer - Was  .mp3";
    InspectFile(folder / "Wer - Was  .mp3", file);
    EXPECT_EQ(file.FileArtist, "Wer");
    EXPECT_EQ(file.FileTitle, "Was") << "trimmed on the right";
    EXPECT_EQ(file.FileQuality, "0");
    EXPECT_EQ(file.FileGenre, "255");
    EXPECT_EQ(file.AudioInfo.Length, 0);
}

TEST_F(InspectFileTest, AnEmptyVersion2TagIsNamedAfterTheFile) {
    Inspect("Wer - Was.mp3", TagV2(4, "") + Mpeg(300) + TagV1("Eins", "Eins"));
    EXPECT_EQ(file.FileArtist, "Wer");
    EXPECT_EQ(file.FileTitle, "Was");
    EXPECT_TRUE(file.HasTagV2);
}

TEST_F(InspectFileTest, TheNameIsTheCallersAndNotThePaths) {
    const std::string path = File("Neu - Neu.mp3", Mpeg(300));
    file.CurrentFileName = "Alt - Davor.mp3";
    InspectFile(path, file);
    EXPECT_EQ(file.FileArtist, "Alt");
    EXPECT_EQ(file.FileTitle, "Davor");
}

TEST_F(InspectFileTest, GenresBeyondTheListAreKept) {
    Inspect("a.mp3", Mpeg(300) + TagV1("t", "a", "", "", "", 200));
    EXPECT_EQ(file.FileGenre, "200");
}

TEST_F(InspectFileTest, FlagsStayThoseOfTheFileBeforeUntilATagIsFound) {
    Inspect("a.mp3", Mpeg(300) + TagV1("t", "a"));
    Inspect("b.mp3", Mpeg(300));
    EXPECT_TRUE(file.HasTagV1);
    Inspect("c.mp3", TagV2(3, "") + Mpeg(300));
    EXPECT_TRUE(file.HasTagV2 && !file.HasTagV1);
    Inspect("d.mp3", Mpeg(300));
    EXPECT_TRUE(file.HasTagV2 && !file.HasNoTag);
}

TEST_F(InspectFileTest, AWaveFileReportsItsBitsAsQuality) {
    Inspect("Wer - Was.wav", Riff(Format(2, 44100, 176400, 16) + Chunk("data", std::string(352800, '\0'))));
    EXPECT_EQ(file.FileQuality, "16");
    EXPECT_EQ(file.FileArtist, "Wer");
    EXPECT_EQ(file.AudioInfo.Length, 2);
}

TEST_F(InspectFileTest, AVersion1TagAfterAWaveIsRead) {
    Inspect("x.wav", Riff(Format(2, 44100, 176400, 16) + Chunk("data", "")) + TagV1("Titel", "Wer"));
    EXPECT_EQ(file.FileTitle, "Titel");
}

TEST_F(InspectFileTest, HostileSizesAreInspectedWithoutFailing) {
    for (const std::size_t size : {0u, 1u, 3u, 10u, 127u, 128u, 129u, 255u, 256u, 257u, 4095u, 4096u, 5119u,
                                   5120u, 5121u, 5247u, 5248u, 5249u}) {
        for (const char* name : {"a - b.mp3", "a - b.wav", "a - b.ogg"}) {
            Inspect(name, std::string(size, '\xFF'));
            EXPECT_EQ(file.FileArtist, "a") << size << name;
            EXPECT_EQ(file.FileTitle, "b") << size << name;
        }
    }
}

TEST_F(InspectFileTest, TheTagIsFoundInFilesOfEverySizeAroundTheFirstRead) {
    for (const std::size_t size : {0u, 4990u, 4991u, 4992u, 4993u, 5119u, 5120u, 5121u, 100000u}) {
        Inspect("x.mp3", std::string(size, 'a') + TagV1("Titel", "Wer"));
        EXPECT_EQ(file.FileTitle, "Titel") << size;
    }
}

TEST_F(InspectFileTest, APipeIsNotOpened) {
    const std::string path = folder / "Wer - Was.mp3";
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    file.CurrentFileName = "Wer - Was.mp3";
    InspectFile(path, file);
    EXPECT_EQ(file.FileArtist, "Wer");
    EXPECT_EQ(file.FileQuality, "0");
}

TEST_F(InspectFileTest, AFolderAndADeviceAreInspectedAsMissingFiles) {
    file.CurrentFileName = "Wer - Was.mp3";
    InspectFile(folder.Path(), file);
    EXPECT_EQ(file.FileTitle, "Was");
    InspectFile("/dev/zero", file);
    EXPECT_EQ(file.FileTitle, "Was");
}

TEST_F(InspectFileTest, NamesThatAreNoUtf8AreInspected) {
    Inspect("W\xE4r - W\xE4s.mp3", Mpeg(160000));
    EXPECT_EQ(file.FileArtist, "W\xE4r");
    EXPECT_EQ(file.FileQuality, "128");
}

} // namespace quavernet::test
