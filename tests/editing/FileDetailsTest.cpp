#include "editing/FileDetails.h"

#include "editing/DetailsFixture.h"
#include "support/FailureNumber.h"
#include "support/OggFiles.h"
#include "support/TestFiles.h"

#include "platform/RuntimeError.h"

#include <cmath>

#include <gmock/gmock.h>

namespace quavernet::test {

namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

class FileDetailsTest : public DetailsFixture {
protected:
    /// A stream of 128 kbit/s that plays so many seconds; no byte of it is ever written.
    std::string AddLong(std::int32_t seconds) {
        const std::string path = AddBytes("long.mp3", Bytes({0xFF, 0xFB, 0x90, 0x00}));
        std::filesystem::resize_file(path, static_cast<std::uintmax_t>(seconds) * 16000);
        return path;
    }
    std::string LengthOf(std::int32_t seconds) { return Load(AddLong(seconds)).Length; }
    std::string AddOgg(const std::string& name, const std::vector<std::string>& comments) {
        return AddBytes(name, WithComments(EncodedOgg::Stereo(), comments));
    }
    std::string SelectedGenre() {
        const DetailsGenres genres = File().FillDetailsGenres();
        return genres.ListIndex < 0 ? "none"
                                    : genres.Entries.at(static_cast<std::size_t>(genres.ListIndex)).Genre;
    }
};

} // namespace

TEST_F(FileDetailsTest, AVersion1TagIsShownWithItsStreamAndItsGenreInTheList) {
    const std::string path = AddCopy(TaggedMp3("--id3v1-only"), "a.mp3");
    const FileDetails shown = Load(path);
    EXPECT_EQ(shown.Kind, DetailsKind::Id3v1);
    EXPECT_EQ(shown.Texts, (DetailsTexts{"Titel", "Künstler", "Größe", "2003", "", "Wort", ""}));
    EXPECT_EQ(shown.Caption, "Details");
    EXPECT_TRUE(shown.CanEdit);
    EXPECT_EQ(shown.Path, path);
    EXPECT_EQ(shown.Quality, "128");
    EXPECT_EQ(shown.Frequency, "44100");
    EXPECT_EQ(shown.Layer, "3");
    EXPECT_EQ(shown.Version, "1");
    EXPECT_EQ(shown.Length, "0:01 min");
    EXPECT_EQ(SelectedGenre(), "Rock");
    EXPECT_EQ(File().DetailsGenre(), 17);
}

TEST_F(FileDetailsTest, AVersion2TagIsAskedOfTheComponentInItsSevenFields) {
    const std::string frames = TextFrame(3, "TIT2", "T") + TextFrame(3, "TPE1", "P") +
                               TextFrame(3, "TALB", "A") + TextFrame(3, "TYER", "1999") +
                               TextFrame(3, "TCON", "(17)") + TextFrame(3, "TPUB", "Label") +
                               CommentFrame(3, "deu", "", "C");
    const FileDetails shown = Load(AddBytes("a.mp3", TagV2(3, frames) + std::string(5000, '\0')));
    EXPECT_EQ(shown.Kind, DetailsKind::Id3v2);
    EXPECT_EQ(shown.Texts, (DetailsTexts{"T", "P", "A", "1999", "(17)", "C", "Label"}));
    EXPECT_EQ(shown.Caption, "Details");
    EXPECT_TRUE(shown.CanEdit);
}

TEST_F(FileDetailsTest, OfTwoTagsTheOneOfVersion2IsShownWhole) {
    const std::string title(200, 'x');
    std::vector<std::string> switches = TagSwitches();
    switches[1] = title;
    switches.emplace_back("--add-id3v2");
    const FileDetails shown = Load(AddCopy(Mp3With(switches), "a.mp3"));
    EXPECT_EQ(shown.Kind, DetailsKind::Id3v2);
    EXPECT_EQ(shown.Texts.Title, title) << "not the 30 characters of a scan";
    EXPECT_EQ(shown.Texts.Album, "Größe");
}

TEST_F(FileDetailsTest, AFileWithoutATagIsCalledAsTheListCallsIt) {
    const FileDetails shown = Load(AddCopy(Mp3With({"-t"}), "Wer - Was.mp3"));
    EXPECT_EQ(shown.Kind, DetailsKind::Untagged);
    EXPECT_EQ(shown.Texts, (DetailsTexts{"Waterloo", "Abba", "", "", "", "", ""}));
    EXPECT_EQ(shown.Caption, "Details - Speichern nur als ID3v1 TAG - Kein ID3 Tag gefunden!");
    EXPECT_TRUE(shown.CanEdit);
    EXPECT_EQ(SelectedGenre(), "none");
}

TEST_F(FileDetailsTest, AWaveFileIsShownOnly) {
    const std::string path = AddCopy(RealWave(3, 44100, 1, 16), "a.wav");
    const FileDetails shown = Load(path);
    EXPECT_EQ(shown.Caption, "Details - Bearbeiten von wav nicht möglich");
    EXPECT_FALSE(shown.CanEdit);
    EXPECT_EQ(shown.Quality, "16");
    EXPECT_EQ(shown.Frequency, "44100");
    EXPECT_EQ(shown.Mode, "mono");
    EXPECT_EQ(shown.Length, "0:03 min");
    EXPECT_EQ(shown.Texts.Performer, "Abba");
}

TEST_F(FileDetailsTest, AFileNamedWavOfAnotherFormatHasTheOtherCaption) {
    const std::string path = AddCopy(RealWave(), "a.wav");
    Execute("Update Files set Extension_id = 1");
    const FileDetails shown = Load(path);
    EXPECT_EQ(shown.Caption, "Details - Speichern nicht möglich (Wav-Datei)");
    EXPECT_FALSE(shown.CanEdit);
    settings.values["Language"] = "ENG";
    EXPECT_EQ(Load(path).Caption, "Details - Unable to save (wav file)");
}

TEST_F(FileDetailsTest, ATaggedFileIsNoWaveFileForItsName) {
    const FileDetails shown = Load(AddBytes("a.mp3", ReadFile(RealWave()) + TagV1("T", "P")));
    EXPECT_TRUE(shown.CanEdit);
    const std::string path = AddBytes("a.wav", ReadFile(RealWave()) + TagV1("T", "P"));
    EXPECT_EQ(Load(path).Caption, "Details - Bearbeiten von wav nicht möglich");
    Execute("Update Files set Extension_id = 1");
    EXPECT_EQ(Load(path).Caption, "Details");
}

TEST_F(FileDetailsTest, TheFormatIsAskedOfTheLibraryWithTheQuotedPath) {
    const std::string path = AddCopy(TaggedMp3("--id3v1-only"), "it's.mp3");
    RecordingConnection& connection = Record();
    Load(path);
    EXPECT_THAT(connection.statements,
                ElementsAre("Select Extension from Extensions where Extension_id = (Select Extension_id from "
                            "Files where Path = '" +
                            (folder / "it''s.mp3") + "')"));
    connection.statements.clear();
    File().FillDetailsGenres();
    EXPECT_THAT(connection.statements, ElementsAre("Select Genre, Genre_id from Genres Order By Genre"));
}

TEST_F(FileDetailsTest, AFileThatTheLibraryHasLostIsToldByItsName) {
    const std::string ogg = AddOgg("a.OGG.ogg", {"TITLE=T"});
    const std::string wave = AddCopy(RealWave(), "a.wav");
    Execute("Delete from Files");
    EXPECT_EQ(Load(ogg).Kind, DetailsKind::Ogg);
    EXPECT_TRUE(File().IsOgg()) << "a tag would overwrite its end";
    EXPECT_FALSE(Load(wave).CanEdit);
}

TEST_F(FileDetailsTest, NulsAndBlanksGoFromTheFieldsOfVersion1) {
    using namespace std::string_literals;
    const std::string tag = TagV1("\0A\0B "s, "  P"s, "\0\0 Al\0bum"s, "19\0"s, "Wort\0 \0x\0\x07"s, 5);
    const FileDetails shown = Load(AddBytes("a.mp3", std::string(5000, '\0') + tag));
    EXPECT_EQ(shown.Texts, (DetailsTexts{"AB", "P", "Album", "19", "", "Wort x\x07", ""}));
}

TEST_F(FileDetailsTest, ABlankVersion1TagIsNamedAfterItsFile) {
    const std::string tag = TagV1("   ", "", "Album", "", "", 5);
    const FileDetails shown = Load(AddBytes("Wer - Was.mp3", std::string(5000, '\0') + tag));
    EXPECT_EQ(shown.Kind, DetailsKind::Id3v1);
    EXPECT_EQ(shown.Texts.Performer, "Wer");
    EXPECT_EQ(shown.Texts.Title, "Was");
    EXPECT_EQ(SelectedGenre(), "none") << "the names from the file bring no genre";
}

TEST_F(FileDetailsTest, AVersion1TagOfGenre255OpensWithoutASelectedEntry) {
    Load(AddBytes("a.mp3", std::string(5000, '\0') + TagV1("T", "P")));
    EXPECT_EQ(SelectedGenre(), "none");
    EXPECT_EQ(File().DetailsGenre(), NoGenre);
}

TEST_F(FileDetailsTest, AGenreThatTheLibraryDoesNotKnowSelectsNone) {
    Load(AddBytes("a.mp3", std::string(5000, '\0') + TagV1("T", "P", "", "", "", 200)));
    EXPECT_EQ(SelectedGenre(), "none");
}

TEST_F(FileDetailsTest, AVersion2FileThatIsSwitchedToVersion1SelectsNumber0) {
    Load(AddCopy(TaggedMp3("--id3v2-only"), "a.mp3"));
    EXPECT_EQ(SelectedGenre(), "Blues");
}

TEST_F(FileDetailsTest, TheGenresAreTheWholeTableByName) {
    const DetailsGenres genres = File().FillDetailsGenres();
    ASSERT_EQ(genres.Entries.size(), 149U);
    EXPECT_EQ(genres.Entries.front().Genre, "A Capella");
    EXPECT_EQ(genres.Entries.front().ItemData, 123);
    EXPECT_EQ(genres.Entries.back().Genre, "Vocal");
}

TEST_F(FileDetailsTest, MinutesAreRoundedAndThenCutAndSecondsAreTheRest) {
    EXPECT_EQ(LengthOf(0), "0:00 min");
    EXPECT_EQ(LengthOf(59), "0:59 min");
    EXPECT_EQ(LengthOf(60), "1:00 min");
    EXPECT_EQ(LengthOf(3599), "59:59 min");
    EXPECT_EQ(LengthOf(3600), "60:00 min");
    EXPECT_EQ(LengthOf(16776), "279:36 min");
}

TEST_F(FileDetailsTest, TheDecimalSignOfTheSystemIsCutWithTheMinutes) {
    services.regional.decimalSeparator = ".";
    services.regional.groupSeparator = ",";
    EXPECT_EQ(LengthOf(754), "12:34 min");
    EXPECT_EQ(Load(AddLong(754)).Size, "11.51 MB");
}

TEST_F(FileDetailsTest, TheSizeHasTwoDecimalsAndThousands) {
    const std::string path = AddCopy(RealWave(), "a.wav");
    std::filesystem::resize_file(path, 1024 * 1024 + 5243);
    EXPECT_EQ(Load(path).Size, "1,01 MB");
    std::filesystem::resize_file(path, std::uintmax_t{2000} * 1024 * 1024);
    EXPECT_EQ(Load(path).Size, "2.000,00 MB");
    std::filesystem::resize_file(path, 0);
    EXPECT_EQ(Load(path).Size, "0,00 MB");
}

TEST_F(FileDetailsTest, AnOggFileShowsWhatTheToolPrints) {
    const std::string path = AddOgg("a b.ogg", {"TITLE=Lied", "ARTIST=Künstler", "ALBUM=Größe", "GENRE=Rock",
                                                "DATE=1999", "COMMENT=Wort"});
    const FileDetails shown = Load(path);
    EXPECT_EQ(shown.Kind, DetailsKind::Ogg);
    EXPECT_EQ(shown.Texts, (DetailsTexts{"Lied", "Künstler", "Größe", "1999", "Rock", "Wort", ""}));
    EXPECT_EQ(shown.Caption, "Details");
    EXPECT_TRUE(shown.CanEdit);
    EXPECT_EQ(shown.Path, path);
    EXPECT_EQ(shown.Length, "0:03 min");
    EXPECT_EQ(shown.Frequency, "44100");
    EXPECT_EQ(shown.Mode, "stereo");
    EXPECT_THAT(shown.Quality, StartsWith("1")) << "a nominal rate of more than a hundred";
    EXPECT_EQ(shown.Layer + shown.Version, "");
    EXPECT_EQ(shown.Size.substr(shown.Size.size() - 3), " MB") << "of the file, not of its data";
    EXPECT_EQ(Load(AddBytes("m.ogg", EncodedOgg::Mono())).Mode, "mono");
}

TEST_F(FileDetailsTest, NothingOfTheFileBeforeShowsInAnOggFile) {
    Load(AddCopy(TaggedMp3("--id3v2-only"), "a.mp3"));
    const FileDetails shown = Load(AddOgg("a.ogg", {}));
    EXPECT_EQ(shown.Texts, DetailsTexts());
    EXPECT_EQ(shown.Layer + shown.Version, "");
}

TEST_F(FileDetailsTest, TheLinesOfAnOggFileAreMatchedLoosely) {
    const FileDetails shown = Load(AddOgg("a.ogg", {"X=my title song", "ALBUMARTIST=Various"}));
    EXPECT_EQ(shown.Texts.Title, "song");
    EXPECT_EQ(shown.Texts.Performer, "Various");
    EXPECT_EQ(shown.Texts.Album, "RTIST=Various");
}

TEST_F(FileDetailsTest, KeysInSmallLettersAreTheSameKeys) {
    const FileDetails shown = Load(AddOgg(
        "a.ogg", {"title=Lied", "artist=Abba", "album=Best", "genre=Rock", "date=1999", "comment=Wort"}));
    EXPECT_EQ(shown.Texts, (DetailsTexts{"Lied", "Abba", "Best", "1999", "Rock", "Wort", ""}));
}

TEST_F(FileDetailsTest, AnOggFileWithoutATellingLineIsShownAllTheSame) {
    const FileDetails shown = Load(AddBytes("a.ogg", "no Ogg file at all"));
    EXPECT_EQ(shown.Kind, DetailsKind::Ogg);
    EXPECT_EQ(shown.Length, "");
    EXPECT_EQ(shown.Size, "0,00 MB");
    const std::string text = WithLastGranule(EncodedOgg::Stereo(), std::int64_t{44100} * 60 * 600);
    EXPECT_EQ(Load(AddBytes("long.ogg", text)).Length, "") << "ten hours overflow";
}

TEST_F(FileDetailsTest, AFileThatHasVanishedLeavesTheOneBeforeAsItIs) {
    const std::string path = AddCopy(TaggedMp3("--id3v1-only"), "a.mp3");
    Load(path);
    EXPECT_EQ(NumberOf([&] { Load(folder / "gone.ogg"); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(File().Path(), path);
    EXPECT_FALSE(File().IsOgg());
    EXPECT_EQ(SelectedGenre(), "Rock");
}

TEST_F(FileDetailsTest, WhatRunsInItsEventsChangesNothingOfItAndItNothingElse) {
    const std::string other = AddBytes("b.mp3", TagV2(3, TextFrame(3, "TALB", "Other")));
    const std::string path = AddCopy(TaggedMp3("--id3v2-only"), "a.mp3");
    mainModule.CurrentFile.CurrentPath = mainModule.CurrentFile.FileTitle = "a scan's";
    CurrentFile scanned;
    events.onDoEvents = [&] {
        events.onDoEvents = nullptr;
        mainModule.TagComponent->LoadFile(other);
        mainModule.CurrentFile.FileTitle = "changed";
    };
    EXPECT_EQ(Load(path).Texts.Album, "Größe");
    EXPECT_EQ(mainModule.CurrentFile.FileTitle, "changed");
    EXPECT_EQ(mainModule.CurrentFile.CurrentPath, "a scan's");
    EXPECT_EQ(mainModule.CurrentFile.HasTagV2, false);
}

TEST_F(FileDetailsTest, AFileThatMayNotBeReadIsShownByItsNames) {
    const std::string path = AddBytes("a.mp3", "");
    const FileDetails shown = Load(path);
    EXPECT_EQ(shown.Texts.Title, "Waterloo");
    EXPECT_EQ(shown.Quality, "0");
    EXPECT_EQ(shown.Length, "0:00 min");
}

} // namespace quavernet::test
