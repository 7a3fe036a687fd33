#include "inspect/InspectTest.h"

#include "support/FileSizeLimit.h"
#include "support/OrdinaryUser.h"

#include <filesystem>

#include <sys/stat.h>

namespace quavernet::test {

class WriteId3v1Test : public InspectTest {
protected:
    WriteId3v1Test() {
        tag.TagTitle = "Titel";
        tag.TagArtist = "Künstler";
        tag.TagAlbum = "Album";
        tag.TagYear = "1999";
        tag.TagComment = "Bemerkung";
        tag.TagGenre = 17;
        expected = "TAG" + Field("Titel", 30) + Field("K\xFCnstler", 30) + Field("Album", 30) + "1999" +
                   Field("Bemerkung", 30) + '\x11';
    }

    static std::string Field(std::string text, std::size_t width) {
        text.resize(width, ' ');
        return text;
    }

    void ExpectBox(const std::string& text, MsgBox::Icon icon) {
        ASSERT_EQ(msgBox.shown.size(), 1u);
        EXPECT_EQ(msgBox.shown[0], (ShownBox{text, "MP3-Info", icon, MsgBox::Buttons::Ok}));
    }

    Id3v1Tag tag;
    std::string expected;
};

TEST_F(WriteId3v1Test, ReplacesTheRecordOfATaggedFile) {
    const std::string audio(1000, 'a');
    const std::string path = File("a.mp3", audio + TagV1("alt", "alt"));
    WriteId3v1(path, tag);
    EXPECT_EQ(ReadFile(path), audio + expected);
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(WriteId3v1Test, AFileWithoutATagDoesNotGrowAndLosesItsLast128Bytes) {
    const std::string path = File("a.mp3", std::string(1000, 'a'));
    WriteId3v1(path, tag);
    EXPECT_EQ(ReadFile(path), std::string(872, 'a') + expected);
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(WriteId3v1Test, AMarkInOtherLettersIsNone) {
    const std::string path = File("a.mp3", Put(TagV1("alt", "alt"), 0, "tag"));
    WriteId3v1(path, tag);
    EXPECT_EQ(ReadFile(path), expected) << "the mark is written too";
}

TEST_F(WriteId3v1Test, AFileOf128BytesBecomesATag) {
    const std::string path = File("a.mp3", std::string(128, 'a'));
    WriteId3v1(path, tag);
    EXPECT_EQ(ReadFile(path), expected);
}

TEST_F(WriteId3v1Test, AFileOf127BytesShowsTheErrorAndStays) {
    const std::string path = File("a.mp3", std::string(127, 'a'));
    WriteId3v1(path, tag);
    ExpectBox("Fehler: Bad record number", MsgBox::Icon::Critical);
    EXPECT_EQ(ReadFile(path), std::string(127, 'a'));
}

TEST_F(WriteId3v1Test, AnEmptyFileShowsTheError) {
    WriteId3v1(File("a.mp3", ""), tag);
    ExpectBox("Fehler: Bad record number", MsgBox::Icon::Critical);
}

TEST_F(WriteId3v1Test, AReadOnlyFileIsToldOnce) {
    const std::string path = File("a.mp3", std::string(1000, 'a'));
    ::chmod(path.c_str(), 0444);
    ::chmod(folder.Path().c_str(), 0755);
    {
        const OrdinaryUser user;
        WriteId3v1(path, tag);
    }
    ExpectBox("Datei ist schreibgeschützt.", MsgBox::Icon::Exclamation);
    EXPECT_EQ(ReadFile(path), std::string(1000, 'a'));
}

TEST_F(WriteId3v1Test, AFolderIsAnAccessFailureToo) {
    WriteId3v1(folder.Path(), tag);
    ExpectBox("Datei ist schreibgeschützt.", MsgBox::Icon::Exclamation);
}

TEST_F(WriteId3v1Test, AMissingFileIsNamedInTheErrorAndNotCreated) {
    const std::string path = folder / "missing.mp3";
    WriteId3v1(path, tag);
    ExpectBox("Fehler: No such file or directory: " + path, MsgBox::Icon::Critical);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(WriteId3v1Test, AnEmptyPathEndsSilently) {
    WriteId3v1("", tag);
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(WriteId3v1Test, WhatIsWrittenIsReadBack) {
    const std::string path = File("a.mp3", std::string(1000, 'a'));
    WriteId3v1(path, tag);
    ReadTags(path, file);
    EXPECT_EQ(file.Id3v1Tag.TagArtist, "Künstler" + std::string(22, ' '));
    EXPECT_EQ(file.Id3v1Tag.TagGenre, 17);
    EXPECT_TRUE(file.HasTagV1);
}

TEST_F(WriteId3v1Test, ATagOverAPagesEndIsWrittenWhole) {
    const std::string audio(4096 - 60, 'a');
    const std::string path = File("a.mp3", audio + TagV1("alt", "alt"));
    WriteId3v1(path, tag);
    EXPECT_EQ(ReadFile(path), audio + expected);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1) << "no copy is left";
}

TEST_F(WriteId3v1Test, AFolderThatTakesNoCopyDoesNotHinderTheTag) {
    const std::string audio(4096 - 60, 'a');
    const std::string path = File("a.mp3", audio + TagV1("alt", "alt"));
    ::chmod(path.c_str(), 0666);
    ::chmod(folder.Path().c_str(), 0755);
    {
        const OrdinaryUser user;
        WriteId3v1(path, tag);
    }
    EXPECT_TRUE(msgBox.shown.empty());
    EXPECT_EQ(ReadFile(path), audio + expected);
}

TEST_F(WriteId3v1Test, AllNamesOfAFileSeeTheTag) {
    const std::string audio(4096 - 60, 'a');
    const std::string path = File("a.mp3", audio + TagV1("alt", "alt"));
    std::filesystem::create_hard_link(path, folder / "b.mp3");
    WriteId3v1(path, tag);
    EXPECT_EQ(ReadFile(path), audio + expected);
    EXPECT_EQ(ReadFile(folder / "b.mp3"), audio + expected);
}

TEST_F(WriteId3v1Test, ATagThatTheDiskTakesOnlyAPartOfIsTakenBack) {
    for (const std::size_t audio : {100U, 4096U - 60U}) {
        const std::string contents = std::string(audio, 'a') + TagV1("alt", "alt");
        const std::string path = File("a.mp3", contents);
        {
            const FileSizeLimit limit(audio + 80);
            WriteId3v1(path, tag);
        }
        ExpectBox("Fehler: File too large: " + path, MsgBox::Icon::Critical);
        EXPECT_EQ(ReadFile(path), contents) << audio;
        msgBox.shown.clear();
    }
}

} // namespace quavernet::test
