#include "inspect/OggInfoText.h"

#include <gtest/gtest.h>

namespace quavernet::test {

namespace {

/// The values after one file's start and these lines.
OggFileInfo Read(const std::string& lines) {
    const auto files = ReadOggInfo("Processing file \"/m/x.ogg\"...\n" + lines);
    EXPECT_EQ(files.size(), 1U);
    return files.empty() ? OggFileInfo() : files.front();
}

std::string LengthOf(const std::string& value) {
    const OggFileInfo file = Read("\tPlayback length: " + value + "\n");
    return file.failure.empty() ? file.length : file.failure;
}

std::string SizeOf(const std::string& value) {
    const OggFileInfo file = Read("\tTotal data length: " + value + "\n");
    return file.failure.empty() ? file.size : file.failure;
}

} // namespace

TEST(OggInfoTextTest, TheOutputForOneFileFillsAllValues) {
    const auto files = ReadOggInfo("Processing file \"/music/a b/x.ogg\"...\n"
                                   "\n"
                                   "New logical stream (#1, serial: 442b2319): type vorbis\n"
                                   "Vorbis headers parsed for stream 1, information follows...\n"
                                   "Version: 0\n"
                                   "Vendor: Xiph.Org libVorbis I 20200704 (Reducing Environment)\n"
                                   "Channels: 2\n"
                                   "Rate: 44100\n"
                                   "\n"
                                   "Nominal bitrate: 112.000000 kb/s\n"
                                   "Upper bitrate not set\n"
                                   "Lower bitrate not set\n"
                                   "User comments section follows...\n"
                                   "\tTITLE=Song\n"
                                   "\tARTIST=Blue\n"
                                   "\tALBUM=Best\n"
                                   "\tGENRE=Rock\n"
                                   "\tDATE=2001\n"
                                   "\tCOMMENT=nice\n"
                                   "Vorbis stream 1:\n"
                                   "\tTotal data length: 7840 bytes\n"
                                   "\tPlayback length: 3m:25.500s\n"
                                   "\tAverage bitrate: 20.906667 kb/s\n"
                                   "Logical stream 1 ended\n");
    OggFileInfo expected;
    expected.path = "/music/a b/x.ogg";
    expected.name = "x.ogg";
    expected.bitRate = "112";
    expected.title = "Song";
    expected.performer = "Blue";
    expected.album = "Best";
    expected.genre = "Rock";
    expected.size = "7840";
    expected.length = "206";
    expected.comment = "nice";
    expected.year = "2001";
    expected.frequency = "44100";
    expected.channels = "2";
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files[0], expected);
}

TEST(OggInfoTextTest, NoOutputGivesNoFile) {
    EXPECT_TRUE(ReadOggInfo("").empty());
    EXPECT_TRUE(ReadOggInfo("\tTITLE=Song\n").empty());
}

TEST(OggInfoTextTest, TheNextPathCompletesAFileAndClearsAllValues) {
    const auto files = ReadOggInfo("Processing file \"/a.ogg\"...\n\tTITLE=One\n\tALBUM=Best\n"
                                   "Processing file \"/b.ogg\"...\n\tARTIST=Blue\n");
    ASSERT_EQ(files.size(), 2U);
    EXPECT_EQ(files[0].title, "One");
    EXPECT_EQ(files[1].path, "/b.ogg");
    EXPECT_EQ(files[1].title, "");
    EXPECT_EQ(files[1].album, "");
    EXPECT_EQ(files[1].performer, "Blue");
}

TEST(OggInfoTextTest, ValuesBeforeTheFirstPathStay) {
    const auto files =
        ReadOggInfo("Error opening input file \"/title x\": none\nProcessing file \"/a.ogg\"...\n");
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files[0].title, "x\": none");
}

TEST(OggInfoTextTest, KeysAreFoundAnywhereInALineWhateverTheirCase) {
    EXPECT_EQ(Read("the subTitLe=Song\n").title, "Song");
    EXPECT_EQ(Read("\tmy Artists\n").performer, "");
    EXPECT_EQ(Read("\talbumartist=Blue\n").performer, "Blue");
    EXPECT_EQ(Read("\talbumartist=Blue\n").album, "rtist=Blue");
    EXPECT_EQ(Read("x playBACK LENGTH: 0m:01.000s\n").length, "1");
    EXPECT_EQ(Read("x TOTAL data length: 5 bytes\n").size, "5");
    EXPECT_EQ(ReadOggInfo("x PROCESSING FILE \"/b.ogg\"...\n").at(0).path, "/b.ogg");
}

TEST(OggInfoTextTest, TheBitRateAloneIsSearchedByCase) {
    EXPECT_EQ(Read("nominal bitrate: 112.0 kb/s\n").bitRate, "");
    EXPECT_EQ(Read("\tX=Nominal bitrate: 64.0\n").bitRate, "64");
    EXPECT_EQ(Read("Nominal bitrate not set\n").bitRate, "");
}

TEST(OggInfoTextTest, ALineWithSeveralKeysFillsThemAll) {
    const OggFileInfo file = Read("\tGENRE of ALBUM=x\n");
    EXPECT_EQ(file.genre, "of ALBUM=x");
    EXPECT_EQ(file.album, "x");
}

TEST(OggInfoTextTest, OnlyTheFirstOccurrenceInALineCountsAndALaterLineWins) {
    EXPECT_EQ(Read("\tTITLE=a TITLE=b\n").title, "a TITLE=b");
    EXPECT_EQ(Read("\tTITLE=a\n\tTITLE=b\n").title, "b");
    EXPECT_EQ(Read("\tTITLE=a\n\tthe title\n").title, "");
}

TEST(OggInfoTextTest, APathWithKeysFillsTheirValuesFromThePathsLine) {
    const auto files = ReadOggInfo("Processing file \"/Album One/x.ogg\"...\n");
    EXPECT_EQ(files.at(0).album, "One/x.ogg\"...");
    EXPECT_EQ(ReadOggInfo("Processing file \"/Album One/x.ogg\"...\n\tALBUM=Two\n").at(0).album, "Two");
}

TEST(OggInfoTextTest, TheOffsetCountsCharactersNotBytes) {
    EXPECT_EQ(Read("\tTITLEäx\n").title, "x");
    EXPECT_EQ(ReadOggInfo("Processing file \"/ä.oggäöüß\n").at(0).path, "/ä.ogg");
}

TEST(OggInfoTextTest, ABitRateLosesItsFractionAfterPointAndComma) {
    EXPECT_EQ(Read("Nominal bitrate: 112.000000 kb/s\n").bitRate, "112");
    EXPECT_EQ(Read("Nominal bitrate: 112,000000 kb/s\n").bitRate, "112");
    EXPECT_EQ(Read("Nominal bitrate: 1.234,5 kb/s\n").bitRate, "1.234");
    EXPECT_EQ(Read("Nominal bitrate: 1,234.5 kb/s\n").bitRate, "1");
    EXPECT_EQ(Read("Nominal bitrate: 112 kb/s\n").bitRate, "");
    EXPECT_EQ(Read("Nominal bitrate: 1.0\nNominal bitrate: 112\n").bitRate, "");
}

TEST(OggInfoTextTest, TheDataLengthEndsOneCharacterBeforeBytes) {
    EXPECT_EQ(SizeOf("7840 bytes"), "7840");
    EXPECT_EQ(SizeOf("7840bytes"), "784");
    EXPECT_EQ(SizeOf("7840 Bytes"), "7840");
    EXPECT_EQ(SizeOf("7840 BYTES"), "7840");
    EXPECT_EQ(SizeOf(" bytes"), "");
    EXPECT_EQ(SizeOf("bytes"), "Invalid procedure call or argument");
    EXPECT_EQ(SizeOf("7840"), "Invalid procedure call or argument");
}

TEST(OggInfoTextTest, ThePlayLengthIsMinutesBySixtyAndSecondsRoundedHalfToEven) {
    EXPECT_EQ(LengthOf("0m:00.000s"), "0");
    EXPECT_EQ(LengthOf("3m:25.499s"), "205");
    EXPECT_EQ(LengthOf("3m:25.500s"), "206");
    EXPECT_EQ(LengthOf("3m:24.500s"), "204");
    EXPECT_EQ(LengthOf("3m:24.501s"), "205");
    EXPECT_EQ(LengthOf("0m:59.999s"), "60");
    EXPECT_EQ(LengthOf("3M:25.500s"), "206");
    EXPECT_EQ(LengthOf("3m:25,500s"), "206");
    EXPECT_EQ(LengthOf("3m:05x"), "185");
}

TEST(OggInfoTextTest, APlayLengthBeyondSixteenBitsOverflows) {
    EXPECT_EQ(LengthOf("546m:07.000s"), "32767");
    EXPECT_EQ(LengthOf("546m:07.500s"), "Overflow");
    EXPECT_EQ(LengthOf("546m:08.000s"), "Overflow");
    EXPECT_EQ(LengthOf("547m:00.000s"), "Overflow");
    EXPECT_EQ(LengthOf("32768m:00.000s"), "Overflow");
    EXPECT_EQ(LengthOf("-546m:-8.000s"), "-32768");
    EXPECT_EQ(LengthOf("-153722867280912930m:-8.-9223372036854775808s"), "Overflow");
}

TEST(OggInfoTextTest, APlayLengthThatIsNoneMakesTheRecordUnusable) {
    EXPECT_EQ(LengthOf("long"), "Invalid procedure call or argument");
    EXPECT_EQ(LengthOf("m:1s"), "Type mismatch");
    EXPECT_EQ(LengthOf("1m:"), "Invalid procedure call or argument");
    EXPECT_EQ(LengthOf("1m:s"), "Type mismatch");
    EXPECT_EQ(LengthOf("1m:1.2.3s"), "Type mismatch");
    EXPECT_EQ(LengthOf("1m10s"), "Type mismatch");
    EXPECT_EQ(LengthOf("xm:1s"), "Type mismatch");
}

TEST(OggInfoTextTest, AFailureSpoilsItsOwnRecordAlone) {
    const auto files = ReadOggInfo("Processing file \"/a.ogg\"...\n\tPlayback length: 547m:00.000s\n"
                                   "Processing file \"/b.ogg\"...\n\tPlayback length: 1m:00.000s\n");
    ASSERT_EQ(files.size(), 2U);
    EXPECT_EQ(files[0].failure, "Overflow");
    EXPECT_EQ(files[1].failure, "");
    EXPECT_EQ(files[1].length, "60");
}

TEST(OggInfoTextTest, ALaterLineDoesNotMendAFailure) {
    EXPECT_EQ(Read("Playback length: 547m:00.000s\nPlayback length: 1m:00.000s\n").failure, "Overflow");
}

TEST(OggInfoTextTest, LfAndCrLfEndALineAndALoneCrDoesNot) {
    EXPECT_EQ(Read("\tTITLE=a\r\n\tALBUM=b\r\n").title, "a");
    EXPECT_EQ(Read("\tTITLE=a\rALBUM=b\n").title, "a\rALBUM=b");
    EXPECT_EQ(Read("\tTITLE=a\rALBUM=b\n").album, "b");
    EXPECT_EQ(Read("\tTITLE=no end").title, "no end");
    EXPECT_EQ(Read("\tTITLE=cut\r").title, "cut\r");
}

TEST(OggInfoTextTest, ProcessingFileInsideACommentIsTakenLiterally) {
    const auto files =
        ReadOggInfo("Processing file \"/a.ogg\"...\n\tX=Processing file about noise\n\tTITLE=t\n"
                    "Processing file \"/b.ogg\"...\n");
    ASSERT_EQ(files.size(), 3U);
    EXPECT_EQ(files[0].path, "/a.ogg");
    EXPECT_EQ(files[0].title, "");
    EXPECT_EQ(files[1].path, "bout n");
    EXPECT_EQ(files[1].title, "t");
    EXPECT_EQ(files[2].path, "/b.ogg");
}

TEST(OggInfoTextTest, AProcessingFileLineTooShortForAPathHoldsNone) {
    const auto files = ReadOggInfo("Processing file \"/a.ogg\"...\n\tX=Processing file\n"
                                   "Processing file \"/b.ogg\"...\n\tTITLE=t\n");
    ASSERT_EQ(files.size(), 2U);
    EXPECT_EQ(files[0].path, "/a.ogg");
    EXPECT_EQ(files[1].path, "/b.ogg");
    EXPECT_EQ(files[1].failure, "");
}

TEST(OggInfoTextTest, TheRateCountsOnlyAtTheStartOfItsLine) {
    EXPECT_EQ(Read("rate: 48000\n").frequency, "48000");
    EXPECT_EQ(Read("Nominal bitrate: 112.0\n").frequency, "");
    EXPECT_EQ(Read("\tRate: 1\n").frequency, "");
}

TEST(OggInfoTextTest, CommentDateAndChannelsAreFoundAnywhere) {
    EXPECT_EQ(Read("\tXcomment=a\n").comment, "a");
    EXPECT_EQ(Read("\tcomments\n").comment, "");
    EXPECT_EQ(Read("\tupdated 2001\n").year, " 2001");
    EXPECT_EQ(Read("x channels: 6\n").channels, "6");
}

TEST(OggInfoTextTest, TheDetailsOfOneFileAreNeverCleared) {
    const auto file =
        ReadOggDetails("Processing file \"/a.ogg\"...\n\tTITLE=t\n\tX=Processing file about noise\n");
    EXPECT_EQ(file.path, "bout n");
    EXPECT_EQ(file.title, "t");
}

TEST(OggInfoTextTest, APictureTakesNoTextFromTheDetails) {
    const auto file = ReadOggDetails("Processing file \"/a.ogg\"...\n\tDATE=1999\n"
                                     "\tmetadata_block_picture=AAdateAA\n\tCOVERART=titleAA\n");
    EXPECT_EQ(file.year, "1999");
    EXPECT_EQ(file.title, "");
    EXPECT_TRUE(IsPictureComment("METADATA_BLOCK_PICTURE=x"));
    EXPECT_FALSE(IsPictureComment("COVERARTMIME=image/png"));
}

TEST(OggInfoTextTest, ALineThatCannotBeReadLeavesItsValueInTheDetailsAndAllOthersCount) {
    const auto file = ReadOggDetails("Processing file \"/a.ogg\"...\nPlayback length: 1m:05.000s\n"
                                     "Playback length: 547m:00.000s\nPlayback length: xm:00.000s\n"
                                     "Total data length: 1 bytes\nTotal data length: none\n\tTITLE=t\n");
    EXPECT_EQ(file.length, "65");
    EXPECT_EQ(file.size, "1");
    EXPECT_EQ(file.title, "t");
    EXPECT_EQ(file.path, "/a.ogg");
    EXPECT_EQ(ReadOggDetails("Playback length: 547m:00.000s\n\tGENRE=g\n").genre, "g");
}

TEST(OggInfoTextTest, ANulInAPathStandsForALineEnd) {
    const auto files = ReadOggInfo(std::string("Processing file \"/m/a\0b.ogg\"...\n\tTITLE=t\n", 41));
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files[0].path, "/m/a\nb.ogg");
    EXPECT_EQ(files[0].name, "a\nb.ogg");
    EXPECT_EQ(files[0].title, "t");
}

TEST(OggInfoTextTest, AKeyInAPathWithALineEndGivesAValueWithTheLineEnd) {
    const auto files = ReadOggInfo(std::string("Processing file \"/Album\0b.ogg\"...\n", 34));
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files[0].album, "b.ogg\"...");
    const auto deeper = ReadOggInfo(std::string("Processing file \"/Album/a\0b.ogg\"...\n", 36));
    EXPECT_EQ(deeper.at(0).album, "a\nb.ogg\"...");
}

TEST(OggInfoTextTest, WhatTheLibraryStoresIsCutAt32767CharactersAndTheDetailsAreNot) {
    const std::string longest = "\xC3\xA4" + std::string(32766, 'x');
    const std::string lines = "\tTITLE=" + longest + "y\n\tARTIST=" + longest + "y\n\tALBUM=" + longest +
                              "y\n\tGENRE=" + longest + "y\n";
    const OggFileInfo file = Read(lines);
    EXPECT_EQ(file.title, longest);
    EXPECT_EQ(file.performer, longest);
    EXPECT_EQ(file.album, longest);
    EXPECT_EQ(file.genre, longest);
    EXPECT_EQ(ReadOggDetails(lines).title, longest + "y");
}

} // namespace quavernet::test
