#include "editing/SaveDetails.h"

#include "editing/DetailsFixture.h"
#include "support/FailureNumber.h"
#include "support/FileSizeLimit.h"
#include "support/OggFiles.h"
#include "support/OrdinaryUser.h"

#include "adapters/vorbis/OggCommentWriter.h"

#include <filesystem>

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace quavernet::test {

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class SaveDetailsTest : public DetailsFixture {
protected:
    SaveDetailsTest() { ::chmod(folder.Path().c_str(), 0755); }

    /// Loads a file, and gives what the dialog holds then, with version 1 chosen where it is the tag's.
    EditedDetails Open(const std::string& path) {
        const FileDetails shown = Load(path);
        path_ = path;
        EditedDetails edited;
        edited.Texts = shown.Texts;
        edited.ToId3v1 = shown.Kind == DetailsKind::Id3v1 || shown.Kind == DetailsKind::Untagged;
        edited.Genre = edited.ToId3v1 ? File().DetailsGenre() : NoGenre;
        return edited;
    }
    EditedDetails OpenCopy(const std::string& source, const std::string& name) {
        return Open(AddCopy(source, name));
    }
    std::string Bytes() { return ReadFile(path_); }
    std::optional<RuntimeError> Save(const EditedDetails& edited) { return SaveDetails(File(), edited); }
    void ExpectSaved(const EditedDetails& edited) { EXPECT_FALSE(Save(edited).has_value()); }

    /// Performer, title, album and genre number of the file's row.
    std::string Row() {
        const auto rows = Rows("Select I.Interpret, T.Name, A.Name, F.Genre_id from Files F, Interpret I, "
                               "Titel T, Albums A where F.Inter_id = I.Inter_id and F.Title_id = T.Title_id "
                               "and F.Album_id = A.Album_id and F.Path = '" +
                               SqlQuote(path_) + "'");
        return rows.empty() ? "no row" : rows.front();
    }
    static constexpr const char* NoRow = "no row"; ///< As the fixture adds it: it points to nothing.
    ShownBox Cancelled(const std::string& text, MsgBox::Icon icon) {
        return {text, "Speichern abgebrochen", icon, MsgBox::Buttons::Ok};
    }

    std::string path_;
};

EditedDetails ToVersion1(const std::string& title, const std::string& performer, const std::string& album,
                         std::uint8_t genre = 17) {
    EditedDetails edited;
    edited.Texts = {title, performer, album, "2001", "Rock", "Wort", ""};
    edited.ToId3v1 = true;
    edited.Genre = genre;
    return edited;
}

} // namespace

TEST_F(SaveDetailsTest, NewTextsAreInsertedAndTheTitleGetsItsKeyLast) {
    OpenCopy(TaggedMp3("--id3v1-only"), "it's.mp3");
    Execute({"Insert into Titel (Name) values ('x')", "Insert into Interpret (Interpret) values ('x')",
             "Insert into Interpret (Interpret) values ('y')"});
    RecordingConnection& connection = Record();
    ExpectSaved(ToVersion1(" It's ", "  O'Hara", "Größe"));
    EXPECT_THAT(
        connection.statements,
        ElementsAre(
            "Select Title_id from Titel where Name = 'It''s'", "Insert into Titel (Name) values ('It''s')",
            "Select Inter_id from Interpret where Interpret = 'O''Hara'",
            "Insert into Interpret (Interpret) values ('O''Hara')", "Select Inter_id from Interpret",
            "Select Album_id from Albums where Name = 'Größe'", "Insert into Albums (Name) values ('Größe')",
            "Select Album_id from Albums", "Select Title_id from Titel",
            "Update Files set Inter_id = 3, Title_id = 2, Genre_id = 17, Album_id = 1 where "
            "Path = '" +
                (folder / "it''s.mp3") + "'"));
    EXPECT_EQ(Row(), "O'Hara|It's|Größe|17");
}

TEST_F(SaveDetailsTest, KnownTextsGiveTheirKeysAndNothingIsInserted) {
    OpenCopy(TaggedMp3("--id3v1-only"), "a.mp3");
    Execute({"Insert into Titel (Name) values ('Titel')", "Insert into Interpret (Interpret) values ('Abba')",
             "Insert into Albums (Name) values ('Arrival')"});
    RecordingConnection& connection = Record();
    ExpectSaved(ToVersion1("TITEL", "abba", "arrival"));
    EXPECT_THAT(connection.statements,
                ElementsAre("Select Title_id from Titel where Name = 'TITEL'",
                            "Select Inter_id from Interpret where Interpret = 'abba'",
                            "Select Album_id from Albums where Name = 'arrival'",
                            "Update Files set Inter_id = 1, Title_id = 1, Genre_id = 17, Album_id = 1 where "
                            "Path = '" +
                                path_ + "'"));
}

TEST_F(SaveDetailsTest, APerformerThatIsNotKnownYetGetsARowAndTheOldOneStays) {
    Execute("Insert into Interpret (Interpret) values ('Künstler')");
    EditedDetails edited = OpenCopy(TaggedMp3("--id3v1-only"), "a.mp3");
    ExpectSaved(edited);
    edited.Texts.Performer = "Abba";
    ExpectSaved(edited);
    EXPECT_THAT(Rows("Select Interpret from Interpret"), ElementsAre("Künstler", "Abba"));
    EXPECT_EQ(Row(), "Abba|Titel|Größe|17");
}

TEST_F(SaveDetailsTest, AnEmptyAlbumIsAnAlbumWithoutAName) {
    EditedDetails edited = OpenCopy(TaggedMp3("--id3v1-only"), "a.mp3");
    edited.Texts.Album = "";
    ExpectSaved(edited);
    EXPECT_THAT(Rows("Select Name from Albums"), ElementsAre(""));
    edited.Texts.Album = "  ";
    ExpectSaved(edited);
    EXPECT_THAT(Rows("Select Name from Albums"), ElementsAre("")) << "the second save finds it";
    EXPECT_EQ(Row(), "Künstler|Titel||17");
}

TEST_F(SaveDetailsTest, YearAndCommentGoIntoTheTagOnly) {
    EditedDetails edited = OpenCopy(TaggedMp3("--id3v1-only"), "a.mp3");
    edited.Texts.Year = "1984";
    edited.Texts.Comment = "Sturmwarnung";
    RecordingConnection& connection = Record();
    ExpectSaved(edited);
    for (const std::string& statement : connection.statements) {
        EXPECT_THAT(statement, Not(HasSubstr("Sturmwarnung")));
    }
    const FileDetails shown = Load(path_);
    EXPECT_EQ(shown.Texts.Year, "1984");
    EXPECT_EQ(shown.Texts.Comment, "Sturmwarnung");
}

TEST_F(SaveDetailsTest, AVersion1TagHasItsWidthsAndItsCodePageAndNothingElseChanges) {
    EditedDetails edited = OpenCopy(TaggedMp3("--id3v1-only"), "a.mp3");
    const std::string before = Bytes();
    edited.Texts = {std::string(40, 't'), "Ärzte \xF0\x9F\x98\x80", "", "20011", "Rock", "C", ""};
    edited.Genre = NoGenre;
    ExpectSaved(edited);
    const std::string after = Bytes();
    ASSERT_EQ(after.size(), before.size());
    EXPECT_EQ(after.substr(0, after.size() - 128), before.substr(0, before.size() - 128));
    const auto field = [](std::string text, std::size_t width) {
        text.resize(width, ' ');
        return text;
    };
    EXPECT_EQ(after.substr(after.size() - 128), "TAG" + std::string(30, 't') + field("\xC4rzte ?", 30) +
                                                    field("", 30) + "2001" + field("C", 30) + '\xFF');
    EXPECT_EQ(Row(), "Ärzte \xF0\x9F\x98\x80|" + std::string(40, 't') + "||255")
        << "the library has the whole texts";
}

TEST_F(SaveDetailsTest, Version1IntoAnUntaggedFileReplacesItsLast128Bytes) {
    const EditedDetails edited = OpenCopy(Mp3With({"-t"}), "a.mp3");
    const std::string before = Bytes();
    ExpectSaved(edited);
    const std::string after = Bytes();
    ASSERT_EQ(after.size(), before.size());
    EXPECT_EQ(after.substr(0, after.size() - 128), before.substr(0, before.size() - 128));
    EXPECT_THAT(after.substr(after.size() - 128), StartsWith("TAGWaterloo"));
    EXPECT_EQ(Load(path_).Kind, DetailsKind::Id3v1);
}

TEST_F(SaveDetailsTest, Version2WritesTheSevenFieldsAndLeavesTheRestOfTheFile) {
    EditedDetails edited = OpenCopy(TaggedMp3("--add-id3v2"), "a.mp3");
    const std::string before = Bytes();
    edited.Texts = {"Lied \xF0\x9F\x98\x80", "Neu", std::string(10000, 'a'), "1984", "(17)", "C\nD", "Label"};
    ExpectSaved(edited);
    EXPECT_EQ(Load(path_).Texts, edited.Texts);
    const std::string after = Bytes();
    const auto audio = [](const std::string& bytes) { return bytes.substr(bytes.find("\xFF\xFB")); };
    EXPECT_TRUE(audio(after) == audio(before)) << "with the version 1 tag at its end";
}

TEST_F(SaveDetailsTest, TheGenreNumberOfVersion2IsThatOfTheListHoweverHidden) {
    EditedDetails edited = OpenCopy(TaggedMp3("--id3v2-only"), "a.mp3");
    edited.Texts.Genre = "Rock";
    ExpectSaved(edited);
    EXPECT_EQ(Row(), "Künstler|Titel|Größe|255");
    edited.Genre = 0;
    ExpectSaved(edited);
    EXPECT_EQ(Row(), "Künstler|Titel|Größe|0");
    EXPECT_EQ(Load(path_).Texts.Genre, "Rock");
}

TEST_F(SaveDetailsTest, Version2IntoAFileOfVersion1KeepsItsTag) {
    EditedDetails edited = OpenCopy(TaggedMp3("--id3v1-only"), "a.mp3");
    const std::string before = Bytes();
    edited.ToId3v1 = false;
    ExpectSaved(edited);
    EXPECT_EQ(Bytes().substr(0, 3), "ID3");
    EXPECT_TRUE(Bytes().ends_with(before));
    EXPECT_EQ(Load(path_).Kind, DetailsKind::Id3v2);
}

TEST_F(SaveDetailsTest, WhatAnotherProgramChangedSinceTheDialogOpenedStaysInVersion2) {
    EditedDetails edited = OpenCopy(TaggedMp3("--id3v2-only"), "a.mp3");
    const auto other = CreateTagLibComponent(RealFiles());
    other->LoadFile(path_);
    other->SetTagField(TagComponent::Comment, "by another program");
    other->SaveFile(path_);
    edited.Texts.Title = "New";
    ExpectSaved(edited);
    const FileDetails shown = Load(path_);
    EXPECT_EQ(shown.Texts.Comment, "by another program");
    EXPECT_EQ(shown.Texts.Title, "New");
}

TEST_F(SaveDetailsTest, AReadOnlyFileIsToldAndItsVersion1SaveStillReachesTheLibrary) {
    EditedDetails edited = OpenCopy(TaggedMp3("--id3v1-only"), "a.mp3");
    const std::string before = Bytes();
    edited.Texts.Title = "New";
    ::chmod(path_.c_str(), 0444);
    {
        const OrdinaryUser user;
        ExpectSaved(edited);
    }
    EXPECT_THAT(msgBox.shown, ElementsAre(ShownBox{"Datei ist schreibgeschützt.", "MP3-Info",
                                                   MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok}));
    EXPECT_EQ(Bytes(), before);
    EXPECT_EQ(Row(), "Künstler|New|Größe|17");
}

TEST_F(SaveDetailsTest, AReadOnlyFilesVersion2SaveEndsBeforeTheLibrary) {
    EditedDetails edited = OpenCopy(TaggedMp3("--id3v2-only"), "a.mp3");
    const std::string before = Bytes();
    edited.Texts.Title = "New";
    ::chmod(path_.c_str(), 0444);
    RecordingConnection& connection = Record();
    {
        const OrdinaryUser user;
        const auto failure = Save(edited);
        ASSERT_TRUE(failure.has_value());
        ShowSaveFailure(path_, *failure);
    }
    EXPECT_THAT(msgBox.shown,
                ElementsAre(Cancelled("Datei ist schreibgeschützt.", MsgBox::Icon::Exclamation)));
    EXPECT_EQ(Bytes(), before);
    EXPECT_THAT(connection.statements, IsEmpty());
    EXPECT_EQ(Row(), NoRow);
    ExpectSaved(edited);
    EXPECT_EQ(Load(path_).Texts.Title, "New") << "what was typed is still there for another try";
}

TEST_F(SaveDetailsTest, AFullDiskLeavesFileAndLibraryAsTheyWere) {
    EditedDetails edited = OpenCopy(TaggedMp3("--id3v2-only"), "a.mp3");
    const std::string before = Bytes();
    edited.Texts.Comment = std::string(5000, 'c');
    RecordingConnection& connection = Record();
    std::optional<RuntimeError> failure;
    {
        const FileSizeLimit full(before.size());
        failure = Save(edited);
    }
    ASSERT_TRUE(failure.has_value());
    ShowSaveFailure(path_, *failure);
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].icon, MsgBox::Icon::Critical);
    EXPECT_EQ(msgBox.shown[0].title, "Speichern abgebrochen");
    EXPECT_THAT(msgBox.shown[0].text, StartsWith("Fehler: 75 - "));
    EXPECT_TRUE(Bytes() == before);
    EXPECT_THAT(connection.statements, IsEmpty());
}

TEST_F(SaveDetailsTest, AFileThatVanishedIsToldAndNotMadeAgain) {
    EditedDetails version2 = OpenCopy(TaggedMp3("--id3v2-only"), "b.mp3");
    std::filesystem::remove(path_);
    const auto failure = Save(version2);
    ASSERT_TRUE(failure.has_value());
    ShowSaveFailure(path_, *failure);
    EXPECT_THAT(msgBox.shown, ElementsAre(Cancelled("Fehler: 75 - No such file or directory: " + path_,
                                                    MsgBox::Icon::Critical)));
    EXPECT_FALSE(std::filesystem::exists(path_));
    EXPECT_EQ(Row(), NoRow);
    msgBox.shown.clear();

    const EditedDetails version1 = OpenCopy(TaggedMp3("--id3v1-only"), "a.mp3");
    std::filesystem::remove(path_);
    ExpectSaved(version1);
    EXPECT_THAT(msgBox.shown, ElementsAre(ShownBox{"Fehler: No such file or directory: " + path_, "MP3-Info",
                                                   MsgBox::Icon::Critical, MsgBox::Buttons::Ok}));
    EXPECT_FALSE(std::filesystem::exists(path_));
    EXPECT_EQ(Row(), "Künstler|Titel|Größe|17");
}

TEST_F(SaveDetailsTest, AFileOfFewerThan128BytesShowsTheError) {
    const EditedDetails edited = Open(AddBytes("a.mp3", std::string(100, 'x')));
    ExpectSaved(edited);
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].text, "Fehler: Bad record number");
    EXPECT_EQ(Bytes(), std::string(100, 'x'));
}

TEST_F(SaveDetailsTest, AnOggSaveWritesTheSixAndTheKeptCommentsAndLeavesTheLibrary) {
    EditedDetails edited = Open(AddBytes("a.ogg", EncodedOgg::Stereo()));
    edited.Texts = {"Lied", "Künstler", "Größe", "1999", "Rock", "Wort", ""};
    oggComments.old = {"title=alt", "TRACKNUMBER=7", "ALBUMARTIST=x", "LYRICS=a\nb"};
    RecordingConnection& connection = Record();
    ExpectSaved(edited);
    EXPECT_THAT(oggComments.listed, ElementsAre(path_));
    ASSERT_EQ(oggComments.written.size(), 1U);
    EXPECT_EQ(oggComments.written[0].first, path_);
    EXPECT_THAT(oggComments.written[0].second,
                ElementsAre("TITLE=Lied", "ARTIST=Künstler", "GENRE=Rock", "ALBUM=Größe", "DATE=1999",
                            "COMMENT=Wort", "TRACKNUMBER=7", "LYRICS=a\nb"));
    EXPECT_THAT(connection.statements, IsEmpty());
}

TEST_F(SaveDetailsTest, AnOggSaveReachesTheFileAndKeepsWhatTheDialogDoesNotEdit) {
    OggCommentWriter writer(RealFiles());
    services.oggComments = &writer;
    // Three bytes that make the word "date" in the text of a picture.
    const std::string picture = PictureComment(3, "image/png", "", "x\x75\xAB\x5E");
    ASSERT_THAT(picture, HasSubstr("date"));
    const std::vector<std::string> old{"TRACKNUMBER=7", "title=alt", "LYRICS=a\nb", "ALBUMARTIST=x", picture};
    EditedDetails edited = Open(AddBytes("a.ogg", WithComments(EncodedOgg::Stereo(), old)));
    edited.Texts = {"Lied", "Künstler", "Größe", "1999", "Rock", "Wort", ""};
    ExpectSaved(edited);
    EXPECT_THAT(writer.List(path_),
                ElementsAre("TITLE=Lied", "ARTIST=Künstler", "GENRE=Rock", "ALBUM=Größe", "DATE=1999",
                            "COMMENT=Wort", "TRACKNUMBER=7", "LYRICS=a\nb", picture));
    EXPECT_EQ(Load(path_).Texts, edited.Texts);
}

TEST_F(SaveDetailsTest, AnOggFileThatMayNotBeWrittenIsToldAndStays) {
    OggCommentWriter writer(RealFiles());
    services.oggComments = &writer;
    EditedDetails edited = Open(AddBytes("a.ogg", EncodedOgg::Stereo()));
    const std::string before = Bytes();
    edited.Texts.Title = "New";
    ::chmod(path_.c_str(), 0444);
    {
        const OrdinaryUser user;
        const auto failure = Save(edited);
        ASSERT_TRUE(failure.has_value());
        ShowSaveFailure(path_, *failure);
    }
    EXPECT_THAT(msgBox.shown,
                ElementsAre(Cancelled("Datei ist schreibgeschützt.", MsgBox::Icon::Exclamation)));
    EXPECT_TRUE(Bytes() == before);
    std::filesystem::remove(path_);
    EXPECT_TRUE(Save(edited).has_value());
    EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(SaveDetailsTest, AnOggFileIsNeverGivenAnId3Tag) {
    EditedDetails edited = Open(AddBytes("a.ogg", EncodedOgg::Stereo()));
    const std::string before = Bytes();
    edited.ToId3v1 = true;
    ExpectSaved(edited);
    EXPECT_TRUE(Bytes() == before);
    EXPECT_EQ(oggComments.written.size(), 1U);
}

TEST_F(SaveDetailsTest, AnOggSaveThatFailsIsGivenToTheCaller) {
    const EditedDetails edited = Open(AddBytes("a.ogg", EncodedOgg::Stereo()));
    oggComments.failure = RuntimeError(ErrorNumber::DiskFull, "No space left on device");
    const auto failure = Save(edited);
    ASSERT_TRUE(failure.has_value());
    ShowSaveFailure(path_, *failure);
    EXPECT_THAT(msgBox.shown,
                ElementsAre(Cancelled("Fehler: 61 - No space left on device", MsgBox::Icon::Critical)));
}

TEST_F(SaveDetailsTest, AFailingStatementComesOutAndWhatWasWrittenStays) {
    const EditedDetails edited = OpenCopy(TaggedMp3("--id3v1-only"), "a.mp3");
    RecordingConnection& connection = Record();
    connection.failOn = "Insert into Albums";
    EXPECT_EQ(NumberOf([&] { (void)Save(edited); }), 19);
    EXPECT_THAT(Rows("Select Interpret from Interpret"), ElementsAre("Künstler"));
    EXPECT_EQ(Row(), NoRow);
}

TEST_F(SaveDetailsTest, WhileAnotherProgramWritesToTheLibraryTheFileKeepsItsTag) {
    for (const char* kind : {"--id3v1-only", "--id3v2-only"}) {
        EditedDetails edited = OpenCopy(TaggedMp3(kind), std::string("a") + kind + ".mp3");
        const std::string before = Bytes();
        edited.Texts.Title = "New";
        RecordingConnection& connection = Record();
        connection.failLock = true;
        const auto failure = Save(edited);
        ASSERT_TRUE(failure.has_value()) << kind;
        EXPECT_EQ(failure->Number(), 2) << kind;
        EXPECT_TRUE(Bytes() == before) << kind;
        EXPECT_THAT(connection.statements, IsEmpty()) << kind;
        connection.failLock = false;
        ExpectSaved(edited);
        EXPECT_EQ(Load(path_).Texts.Title, "New") << "what was typed is still there for another try";
    }
}

TEST_F(SaveDetailsTest, AGenreNumberThatATagCannotHoldGoesIntoTheLibraryAlone) {
    EditedDetails edited = OpenCopy(TaggedMp3("--id3v1-only"), "a.mp3");
    edited.Genre = 300;
    ExpectSaved(edited);
    EXPECT_EQ(Row(), "Künstler|Titel|Größe|300");
    EXPECT_EQ(static_cast<unsigned char>(Bytes().back()), NoGenre);
}

TEST_F(SaveDetailsTest, ATrackNumberInTheCommentOfVersion1GoesWithASave) {
    const EditedDetails edited =
        OpenCopy(Mp3With({"--id3v1-only", "--tt", "Titel", "--tc", "Wort", "--tn", "7"}), "a.mp3");
    ASSERT_EQ(Bytes()[Bytes().size() - 2], 7);
    ExpectSaved(edited);
    EXPECT_EQ(Bytes().substr(Bytes().size() - 31, 30), "Wort\a" + std::string(25, ' '))
        << "NULs go from the text, and what is beyond them follows it";
}

TEST_F(SaveDetailsTest, TheKeyOfTheCoversNamesAlbumAndPerformer) {
    Execute({"Insert into Albums (Name) values ('x')", "Insert into Albums (Name) values ('It''s')",
             "Insert into Interpret (Interpret) values ('O''Hara')"});
    RecordingConnection& connection = Record();
    EXPECT_EQ(CoverKey("O'Hara", "It's"), "AlbumID:2InterID:1");
    EXPECT_THAT(connection.statements,
                ElementsAre("Select Inter_id from Interpret where Interpret = 'O''Hara'",
                            "Select Album_id from Albums where Name = 'It''s'"));
    EXPECT_EQ(CoverKey("O'Hara", "none"), std::nullopt);
    connection.statements.clear();
    EXPECT_EQ(CoverKey("none", "It's"), std::nullopt);
    EXPECT_EQ(connection.statements.size(), 1U);
}

} // namespace quavernet::test
