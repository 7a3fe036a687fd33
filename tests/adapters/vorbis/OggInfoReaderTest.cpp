// The reader beside the real tool, on files that an encoder made or could have made.
#include "adapters/vorbis/OggInfoReader.h"

#include "support/OggComparison.h"
#include "support/RealFiles.h"

#include <filesystem>

#include <sys/stat.h>

namespace quavernet::test {

using OggInfoReaderTest = OggComparison;

TEST_F(OggInfoReaderTest, AStereoFileGivesTheToolsOwnLines) {
    const auto file = ExpectAsTheTool("a.ogg", EncodedOgg::Stereo());
    EXPECT_EQ(file.path, folder / "a.ogg");
    EXPECT_EQ(file.name, "a.ogg");
    EXPECT_EQ(file.title, "Über den Wolken");
    EXPECT_EQ(file.performer, "Die Ärzte");
    EXPECT_EQ(file.album, "Größe");
    EXPECT_EQ(file.genre, "Rock");
    EXPECT_EQ(file.year, "2001");
    EXPECT_EQ(file.comment, "nice");
    EXPECT_EQ(file.bitRate, "112");
    EXPECT_EQ(file.length, "3");
    EXPECT_EQ(file.channels, "2");
    EXPECT_EQ(file.frequency, "44100");
}

TEST_F(OggInfoReaderTest, AMonoFileWithoutCommentsGivesNoTexts) {
    const auto file = ExpectAsTheTool("m.ogg", EncodedOgg::Mono());
    EXPECT_EQ(file.channels, "1");
    EXPECT_EQ(file.frequency, "22050");
    EXPECT_EQ(file.title, "");
    EXPECT_EQ(file.performer, "");
    EXPECT_EQ(file.length, "2");
}

TEST_F(OggInfoReaderTest, AManagedBitRateIsTheNominalOne) {
    EXPECT_EQ(ExpectAsTheTool("b.ogg", EncodedOgg::Managed()).bitRate, "128");
}

TEST_F(OggInfoReaderTest, AFileOfManyPagesIsSummedUpToItsEnd) {
    const auto file = ExpectAsTheTool("long.ogg", EncodedOgg::Long());
    EXPECT_EQ(file.length, "20");
    EXPECT_GT(SplitPages(EncodedOgg::Long()).size(), 30U);
}

TEST_F(OggInfoReaderTest, TenFilesInOneRunKeepTheirOrder) {
    std::vector<std::string> paths;
    for (int i = 0; i < 10; ++i) {
        paths.push_back(
            Write("f" + std::to_string(i) + ".ogg", i % 2 == 0 ? EncodedOgg::Stereo() : EncodedOgg::Mono()));
    }
    const auto files = ExpectAsTheTool(paths);
    ASSERT_EQ(files.size(), 10U);
    EXPECT_EQ(files[9].path, paths[9]);
    EXPECT_EQ(files[9].title, "") << "the values of the file before are gone";
}

TEST_F(OggInfoReaderTest, CommentsKeepOrderSpellingAndCase) {
    const auto bytes = WithComments(EncodedOgg::Stereo(),
                                    {"Artist=One", "aLBum=Two", "TITLE=Drei", "genre=Vier", "DATE=1999",
                                     "ARTIST=Last wins", "X=a=b=c", "=no key", "EMPTY=", "K= blanks "});
    const auto file = ExpectAsTheTool("c.ogg", bytes);
    EXPECT_EQ(file.performer, "Last wins");
    EXPECT_EQ(file.album, "Two");
}

TEST_F(OggInfoReaderTest, CommentsThatSpeakOfKeysOverwriteTheirValues) {
    const auto bytes =
        WithComments(EncodedOgg::Stereo(), {"TITLE=Real", "NOTE=the subtitle is long", "ARTIST=Real",
                                            "X=no ARTISTs here", "NOTE=an album, a genre and a date"});
    const auto file = ExpectAsTheTool("c.ogg", bytes);
    EXPECT_EQ(file.title, "is long");
    EXPECT_EQ(file.performer, " here");
    EXPECT_EQ(file.album, " a genre and a date");
    EXPECT_EQ(file.genre, "and a date");
    EXPECT_EQ(file.year, "");
}

TEST_F(OggInfoReaderTest, APathThatHoldsKeysFillsTheirValues) {
    const std::string sub = folder / "My Album of title and Artist genre date";
    std::filesystem::create_directory(sub);
    WriteWhole(sub + "/x.ogg", EncodedOgg::Mono());
    const auto files = ExpectAsTheTool({sub + "/x.ogg"});
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files[0].album, "of title and Artist genre date/x.ogg\"...");
    EXPECT_EQ(files[0].title, "and Artist genre date/x.ogg\"...");
}

TEST_F(OggInfoReaderTest, ACommentReplacesTheAlbumOfThePath) {
    const std::string sub = folder / "Album";
    std::filesystem::create_directory(sub);
    WriteWhole(sub + "/x.ogg", EncodedOgg::Stereo());
    EXPECT_EQ(ExpectAsTheTool(std::vector{sub + "/x.ogg"})[0].album, "Größe");
}

TEST_F(OggInfoReaderTest, APathOfUmlautsApostrophesAndRawBytesStaysAsItIs) {
    for (const std::string name :
         {"Größe.ogg", "it's.ogg", "a \"quoted\".ogg", "\xe4\xff.ogg", "a;b$c.ogg"}) {
        EXPECT_EQ(ExpectAsTheTool(name, EncodedOgg::Mono()).path, folder / name);
    }
}

TEST_F(OggInfoReaderTest, TheVendorIsReadForKeysToo) {
    const auto bytes = WithCommentPacket(EncodedOgg::Mono(), CommentPacket({}, "the title vendor"));
    EXPECT_EQ(ExpectAsTheTool("v.ogg", bytes).title, "vendor");
}

TEST_F(OggInfoReaderTest, CommentsOfSeveralLinesAreSeveralLines) {
    const auto bytes =
        WithComments(EncodedOgg::Stereo(), {"TITLE=one\ntwo", "GENRE=a\r\nALBUM=inner", "ARTIST=a\rb"});
    const auto file = ExpectAsTheTool("l.ogg", bytes);
    EXPECT_EQ(file.title, "one");
    EXPECT_EQ(file.genre, "a");
    EXPECT_EQ(file.album, "inner");
    EXPECT_EQ(file.performer, "a\rb");
}

TEST_F(OggInfoReaderTest, ACommentEndsAtItsFirstNul) {
    const auto bytes =
        WithComments(EncodedOgg::Stereo(), {std::string("TITLE=a\0b", 9), std::string("x\0=", 3)});
    EXPECT_EQ(ExpectAsTheTool("n.ogg", bytes).title, "a");
}

TEST_F(OggInfoReaderTest, AWarningAboutACommentIsReadForKeysToo) {
    const auto bytes =
        WithComments(EncodedOgg::Stereo(), {"my title of nothing", "bad\x01key=the album of", "k~=1",
                                            "k\xc3\xa4=genre 5", "ARTIST=\xc0\x80 artist rest"});
    const auto file = ExpectAsTheTool("w.ogg", bytes);
    EXPECT_EQ(file.title, "of nothing\"");
    EXPECT_EQ(file.album, "of\"");
    EXPECT_EQ(file.genre, "5\"");
    EXPECT_TRUE(file.performer.starts_with("?? artist rest\": 41 52")) << file.performer;
}

TEST_F(OggInfoReaderTest, EveryKindOfBadUtf8IsToldAsTheToolTellsIt) {
    ExpectAsTheTool("u.ogg", WithComments(EncodedOgg::Stereo(), {"A=\xff tail",
                                                                 "B=\x80",
                                                                 "C=\xfe",
                                                                 "D=\xe2\x80",
                                                                 "E=\xc3(",
                                                                 "F=\xe2(\xa1",
                                                                 "G=\xc0\x80",
                                                                 "H=\xe0\x80\x80",
                                                                 "I=\xf0\x80\x80\x80",
                                                                 "J=\xed\xa0\x80",
                                                                 "K=\xf4\x90\x80\x80",
                                                                 "L=\xf7\xbf\xbf\xbf",
                                                                 "M=\xfb\xbf\xbf\xbf\xbf",
                                                                 "N=\xfd\xbf\xbf\xbf\xbf\xbf",
                                                                 "O=\x01\t\x7f\xc0\x80",
                                                                 "P=\xf0\x9f\x98\x80",
                                                                 "Q=\xef\xbf\xbf\xef\xbf\xbe",
                                                                 "R=\xf4\x8f\xbf\xbf",
                                                                 "S=\xdf\xbf\xe0\xa0\x80",
                                                                 "\xff\xff=x",
                                                                 "T=\xc1\xbf",
                                                                 "U=\xfc\x84\x80\x80\x80\x80",
                                                                 "V=\x1b[31m"}));
}

TEST_F(OggInfoReaderTest, AnEmbeddedCoverIsDescribedAndReadForKeysToo) {
    const auto bytes =
        WithComments(EncodedOgg::Stereo(),
                     {"ALBUM=Real", "ARTIST=Real", PictureComment(8, "image/png", "Album cover", "1234")});
    const auto file = ExpectAsTheTool("p.ogg", bytes);
    EXPECT_EQ(file.album, "cover");
    EXPECT_EQ(file.performer, "performer)");
}

TEST_F(OggInfoReaderTest, EveryKindOfCoverIsNamedAsTheToolNamesIt) {
    std::vector<std::string> comments;
    for (std::uint32_t kind = 0; kind < 23; ++kind) {
        comments.push_back(PictureComment(kind, "image/png", "d", "x"));
    }
    comments.push_back(PictureComment(0xffffffff, "image/png", "d", "x"));
    ExpectAsTheTool("k.ogg", WithComments(EncodedOgg::Stereo(), comments));
}

TEST_F(OggInfoReaderTest, LinkedEmptyAndBrokenCoversAreToldAsTheToolTellsThem) {
    const std::string key = "METADATA_BLOCK_PICTURE=";
    const std::string good = PictureComment(3, "image/png", "d\nline", "data");
    const std::string code = good.substr(key.size());
    ExpectAsTheTool(
        "p.ogg", WithComments(EncodedOgg::Stereo(),
                              {PictureComment(3, "-->", "", "http://title.example"),
                               PictureComment(3, "image/png", "", ""),
                               PictureComment(3, "", std::string("a\0b", 3), "12"), good, good + "====", key,
                               key + "AAAA", key + " " + code, key + "!" + code, good.substr(0, 60),
                               good.substr(0, 61), key + "====", key + "A===", key + "AA==",
                               "metadata_block_picture=" + code, "METADATA_BLOCK_PICTUREX=" + code}));
}

TEST_F(OggInfoReaderTest, SeveralStreamsInAChainGiveTheLastOnesValues) {
    const auto file =
        ExpectAsTheTool("chain.ogg", EncodedOgg::Stereo() + EncodedOgg::Mono() + EncodedOgg::Managed());
    EXPECT_EQ(file.bitRate, "128");
    EXPECT_EQ(file.title, "Managed");
    EXPECT_EQ(file.album, "Größe");
}

TEST_F(OggInfoReaderTest, StreamsSideBySideEndInTheOrderOfTheirLastPages) {
    const auto a = SplitPages(EncodedOgg::Stereo());
    const auto m = SplitPages(EncodedOgg::Mono());
    std::vector<ForgedPage> pages;
    for (std::size_t i = 0; i < std::max(a.size(), m.size()); ++i) {
        if (i < a.size()) {
            pages.push_back(a[i]);
        }
        if (i < m.size()) {
            pages.push_back(m[i]);
        }
    }
    ExpectAsTheTool("mux.ogg", JoinPages(pages));
}

TEST_F(OggInfoReaderTest, ALengthOf546MinutesAndSevenSecondsIsTheLongest) {
    const std::int64_t rate = 44100;
    EXPECT_EQ(ExpectAsTheTool("a.ogg", WithLastGranule(EncodedOgg::Stereo(), rate * (546 * 60 + 7))).length,
              "32767");
    EXPECT_EQ(ExpectAsTheTool("b.ogg", WithLastGranule(EncodedOgg::Stereo(), rate * (546 * 60 + 8))).failure,
              "Overflow");
    EXPECT_EQ(ExpectAsTheTool("c.ogg", WithLastGranule(EncodedOgg::Stereo(), rate * 547 * 60)).failure,
              "Overflow");
}

TEST_F(OggInfoReaderTest, ForgedLengthsGiveTheToolsOwnNumbers) {
    for (const std::int64_t granule : {std::int64_t{1}, std::int64_t{0}, std::int64_t{-1}, std::int64_t{-5},
                                       std::int64_t{110250}, std::int64_t{2645995}, std::int64_t{66150},
                                       std::int64_t{44100} * 32768 * 60, INT64_MAX, INT64_MIN}) {
        ExpectAsTheTool("g.ogg", WithLastGranule(EncodedOgg::Stereo(), granule));
    }
}

TEST_F(OggInfoReaderTest, BitRatesAreToldAsTheToolTellsThem) {
    const auto set = [](std::uint32_t upper, std::uint32_t nominal, std::uint32_t lower) {
        return WithIdentification(EncodedOgg::Stereo(), 16,
                                  LittleEndian32(upper) + LittleEndian32(nominal) + LittleEndian32(lower));
    };
    EXPECT_EQ(ExpectAsTheTool("a.ogg", set(0, 0, 0)).bitRate, "");
    EXPECT_EQ(ExpectAsTheTool("b.ogg", set(0xffffffff, 0xffffffff, 0xffffffff)).bitRate, "");
    EXPECT_EQ(ExpectAsTheTool("c.ogg", set(320000, 0x7fffffff, 1)).bitRate, "2147483");
    EXPECT_EQ(ExpectAsTheTool("d.ogg", set(320000, 999, 1)).bitRate, "0");
}

TEST_F(OggInfoReaderTest, AnEmptyFileAndAFileThatIsNoOggGiveAnErrorLine) {
    EXPECT_EQ(ExpectAsTheTool("e.ogg", "").bitRate, "");
    ExpectAsTheTool("n.ogg", "This is no Ogg file, not even a short one.");
    ExpectAsTheTool("s.ogg", "OggS");
    ExpectAsTheTool("h.ogg", EncodedOgg::Stereo().substr(0, 20));
}

TEST_F(OggInfoReaderTest, TheErrorLineOfAFileThatIsNoOggIsReadForKeysToo) {
    EXPECT_EQ(ExpectAsTheTool("my title of.ogg", "no ogg").title, "of.ogg\".");
}

TEST_F(OggInfoReaderTest, AMissingFileGivesOneLineThatIsReadForTheFileBefore) {
    const std::string good = Write("a.ogg", EncodedOgg::Mono());
    const auto files = ExpectAsTheTool({good, folder / "missing title x.ogg", good});
    ASSERT_EQ(files.size(), 2U);
    EXPECT_EQ(files[0].title, "x.ogg\": No such file or directory");
    EXPECT_EQ(files[1].title, "");
}

TEST_F(OggInfoReaderTest, AFolderAndAPipeHoldNoOggData) {
    const std::string sub = folder / "folder.ogg";
    std::filesystem::create_directory(sub);
    ExpectAsTheTool(std::vector{sub});
    const std::string pipe = folder / "pipe.ogg";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(OggInfoReader(RealFiles()).Run({pipe}), "Processing file \"" + pipe +
                                                          "\"...\n\nERROR: No Ogg data found in file \"" +
                                                          pipe + "\".\nInput probably not Ogg.\n");
}

TEST_F(OggInfoReaderTest, NoFileGivesNoOutput) {
    EXPECT_EQ(OggInfoReader(RealFiles()).Run({}), "");
}

TEST_F(OggInfoReaderTest, ANameWithLineEndsIsReadLikeAnyOther) {
    const std::string path = folder / "a\nb\r\nc.ogg";
    WriteWhole(path, EncodedOgg::Stereo());
    const auto files = ReadOggInfo(OggInfoReader(RealFiles()).Run({path, folder / "mis\nsing.ogg", path}));
    ASSERT_EQ(files.size(), 2U);
    EXPECT_EQ(files[0].path, path);
    EXPECT_EQ(files[0].name, "a\nb\r\nc.ogg");
    EXPECT_EQ(files[0].title, "Über den Wolken");
    EXPECT_EQ(files[1].path, path);
}

TEST_F(OggInfoReaderTest, AHoleIsPassedOverHoweverLargeItIs) {
    const std::string path = folder / "sparse.ogg";
    WriteWhole(path, EncodedOgg::Stereo());
    const auto size = std::filesystem::file_size(path);
    std::filesystem::resize_file(path, std::uintmax_t{1} << 33);
    const auto files = ReadOggInfo(OggInfoReader(RealFiles()).Run({path}));
    std::filesystem::resize_file(path, size);
    const auto whole = ReadOggInfo(OggInfoReader(RealFiles()).Run({path}));
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files, whole);
    EXPECT_EQ(files[0].length, "3");
}

} // namespace quavernet::test
