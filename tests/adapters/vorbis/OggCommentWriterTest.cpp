#include "adapters/vorbis/OggCommentWriter.h"

#include "adapters/vorbis/OggCommentTest.h"
#include "platform/RuntimeError.h"

#include <set>
#include <string_view>

namespace quavernet::test {

namespace {

class OggCommentWriterTest : public OggCommentTest {
protected:
    static constexpr std::uint32_t OtherSerial = 77;

    /// A stream under another serial number.
    static std::vector<ForgedPage> Renamed(const std::string& ogg, std::uint32_t serial) {
        std::vector<ForgedPage> pages = SplitPages(ogg);
        for (ForgedPage& page : pages) {
            page.serial = serial;
        }
        return pages;
    }

    /// Two streams side by side, page by page; the other one's pages come first where `otherFirst`.
    static std::string Multiplexed(const std::string& ogg, const std::vector<ForgedPage>& other,
                                   bool otherFirst) {
        const std::vector<ForgedPage> ours = SplitPages(ogg);
        std::vector<ForgedPage> pages;
        for (std::size_t i = 0; i < std::max(ours.size(), other.size()); ++i) {
            for (const auto* stream : {otherFirst ? &other : &ours, otherFirst ? &ours : &other}) {
                if (i < stream->size()) {
                    pages.push_back((*stream)[i]);
                }
            }
        }
        return JoinPages(pages);
    }

    /// The file with comment packet and setup packet on pages of their own.
    static std::string WithPagesApart(const std::string& ogg) {
        std::vector<ForgedPage> pages = SplitPages(ogg);
        const std::uint32_t serial = pages[0].serial;
        const auto packets = PacketsOf({pages[1]});
        EXPECT_EQ(packets.size(), 2u);
        std::vector<ForgedPage> apart = {pages[0]};
        for (std::uint32_t i = 0; i < 2; ++i) {
            apart.push_back(PackPages({packets[i]}, serial, i + 1)[0]);
        }
        for (std::size_t i = 2; i < pages.size(); ++i) {
            ++pages[i].sequence;
            apart.push_back(pages[i]);
        }
        return JoinPages(apart);
    }

    static const Texts Many;
};

const OggCommentWriterTest::Texts OggCommentWriterTest::Many = {
    "TITLE=Neu", "ARTIST=Die Ärzte", "GENRE=",      "ALBUM=Größe",
    "DATE=2026", "COMMENT=",         "X-NOTE=kept", "x-note=twice"};

} // namespace

TEST_F(OggCommentWriterTest, AListGivesTheCommentsInTheirOrder) {
    WriteWhole(path, EncodedOgg::Stereo());
    EXPECT_EQ(writer.List(path), (Texts{"COMMENT=nice", "X-NOTE=kept", "title=Über den Wolken",
                                        "artist=Die Ärzte", "genre=Rock", "date=2001", "album=Größe"}));
    WriteWhole(path, EncodedOgg::Mono());
    EXPECT_EQ(writer.List(path), Texts());
}

TEST_F(OggCommentWriterTest, WhatIsListedAndWrittenAgainLeavesEveryByte) {
    for (const std::string* ogg : {&EncodedOgg::Stereo(), &EncodedOgg::Mono(), &EncodedOgg::Managed()}) {
        WriteWhole(path, *ogg);
        writer.Write(path, writer.List(path));
        EXPECT_EQ(ReadWhole(path), *ogg);
    }
}

TEST_F(OggCommentWriterTest, VendorTextAudioAndOtherPagesOfRealFilesStay) {
    for (const std::string* ogg :
         {&EncodedOgg::Stereo(), &EncodedOgg::Mono(), &EncodedOgg::Managed(), &EncodedOgg::Long()}) {
        const std::string saved = ExpectSaved(*ogg, Many);
        EXPECT_EQ(Decoded(saved), Decoded(*ogg));
        EXPECT_EQ(ExpectSaved(saved, Many), saved) << "the same again";
    }
}

TEST_F(OggCommentWriterTest, TheSameCommentsGiveTheSameBytesWhateverWasThereBefore) {
    const std::string direct = Saved(EncodedOgg::Long(), Many);
    const std::string large = Saved(EncodedOgg::Long(), {std::string(500'000, 'x')});
    EXPECT_EQ(Saved(large, Many), direct);
}

TEST_F(OggCommentWriterTest, ACommentOfAnyBytesKeepsThem) {
    const Texts odd = {"",
                       "without equals sign",
                       "=",
                       "=without key",
                       "latin1=\xE4\xF6\xFC",
                       std::string("nul=a\0b", 7),
                       "lines=one\ntwo\r\nthree\r",
                       "key with blank = value ",
                       "\xFF\xFE",
                       "TITLE=\xF0\x9F\x8E\xB5",
                       std::string(1, '\0')};
    const std::string forged = WithComments(EncodedOgg::Stereo(), odd);
    WriteWhole(path, forged);
    EXPECT_EQ(writer.List(path), odd);
    ExpectSaved(EncodedOgg::Stereo(), odd);
    Texts more = odd;
    more.insert(more.begin(), "TITLE=first");
    ExpectSaved(forged, more);
}

TEST_F(OggCommentWriterTest, AVendorTextOfAnyBytesStays) {
    const std::string vendor("odd \xE4\n\0 vendor", 14);
    const std::string forged = WithCommentPacket(EncodedOgg::Stereo(), CommentPacket({"a=b"}, vendor));
    ExpectSaved(forged, Many);
    ExpectSaved(WithCommentPacket(EncodedOgg::Stereo(), CommentPacket({"a=b"}, "")), Many);
}

TEST_F(OggCommentWriterTest, RoomAfterTheCommentsThatAnotherProgramLeftGoes) {
    const std::string roomy =
        WithCommentPacket(EncodedOgg::Stereo(), CommentPacket({"a=b"}) + std::string(2000, '\0'));
    ExpectSaved(roomy, {"a=b"});
    EXPECT_LT(ReadWhole(path).size(), roomy.size() - 1900);
}

TEST_F(OggCommentWriterTest, HeadersGrowAndShrinkAcrossThePagesEnds) {
    constexpr std::size_t page = 255 * 255;
    const std::string apart = WithPagesApart(EncodedOgg::Mono());
    for (const std::string* ogg : {&EncodedOgg::Mono(), &apart}) {
        std::string before = *ogg;
        const std::size_t setup = PacketsOf(SplitPages(*ogg))[2].size();
        std::vector<std::size_t> sizes;
        for (const std::size_t around : {page, page - setup, 3 * page - setup}) {
            for (const std::size_t less : {300u, 255u, 200u, 100u, 0u}) {
                sizes.push_back(around - less);
            }
        }
        std::set<std::size_t> counts;
        for (const std::size_t size : sizes) {
            const std::string saved = ExpectSaved(before, {std::string(size, 'x')});
            counts.insert(HeaderPageCount(saved));
            ExpectSaved(saved, {"TITLE=small"});
            before = saved;
        }
        EXPECT_GE(counts.size(), 3u);
        EXPECT_EQ(Decoded(before), Decoded(*ogg));
    }
}

TEST_F(OggCommentWriterTest, APacketThatEndsWhereAPageEndsIsFollowedByTheNext) {
    // A length of whole segments takes one more, empty, which may come to lie on the next page.
    const std::size_t around = 255 * 254 - CommentPacket({""}, "v").size();
    for (std::size_t size = around - 2; size <= around + 2; ++size) {
        for (const std::string& ogg : {EncodedOgg::Stereo(), WithPagesApart(EncodedOgg::Stereo())}) {
            const std::string before = WithCommentPacket(ogg, CommentPacket({"a=b"}, "v"));
            ExpectSaved(before, {std::string(size, 'x')});
            ExpectSaved(before, {std::string(size + 255, 'x')});
        }
    }
}

TEST_F(OggCommentWriterTest, ASetupPacketOnPagesOfItsOwnStaysThere) {
    const std::string apart = WithPagesApart(EncodedOgg::Stereo());
    EXPECT_EQ(HeaderPageCount(ExpectSaved(apart, Many)), 3u);
    EXPECT_EQ(HeaderPageCount(ExpectSaved(EncodedOgg::Stereo(), Many)), 2u);
}

TEST_F(OggCommentWriterTest, HeadersOnManySmallPagesBecomeWholeOnes) {
    std::vector<ForgedPage> pages = SplitPages(EncodedOgg::Stereo());
    std::vector<ForgedPage> small = {pages[0]};
    std::size_t at = 0;
    for (std::size_t i = 0; i < pages[1].lacing.size(); ++i) {
        ForgedPage page;
        page.serial = pages[1].serial;
        page.sequence = static_cast<std::uint32_t>(small.size());
        page.flags = i > 0 && pages[1].lacing[i - 1] == 255 ? 1 : 0;
        page.lacing = {pages[1].lacing[i]};
        page.granule = pages[1].lacing[i] == 255 ? -1 : 0;
        page.body = pages[1].body.substr(at, pages[1].lacing[i]);
        at += pages[1].lacing[i];
        small.push_back(page);
    }
    ASSERT_GT(small.size(), 10u);
    const auto more = static_cast<std::uint32_t>(small.size()) - 2;
    for (std::size_t i = 2; i < pages.size(); ++i) {
        pages[i].sequence += more;
        small.push_back(pages[i]);
    }
    EXPECT_EQ(Decoded(ExpectSaved(JoinPages(small), Many)), Decoded(EncodedOgg::Stereo()));
    EXPECT_EQ(HeaderPageCount(ReadWhole(path)), 3u) << "the setup packet began a page";
}

TEST_F(OggCommentWriterTest, APictureOfTwentyMegabytesIsKept) {
    std::string data(15'000'000, '\0'); // Twenty in the alphabet of the comment.
    for (std::size_t i = 0; i < data.size(); ++i) {
        data[i] = static_cast<char>(i * 7919 >> 8);
    }
    Texts comments = {"title=Old", PictureComment(3, "image/jpeg", "Front", data), "X-NOTE=after"};
    const std::string with = WithComments(EncodedOgg::Stereo(), comments);
    EXPECT_GT(HeaderPageCount(with), 300u);
    comments[0] = "TITLE=Another";
    const std::string again = ExpectSaved(with, comments);
    EXPECT_EQ(Decoded(again), Decoded(EncodedOgg::Stereo()));
}

TEST_F(OggCommentWriterTest, ALaterChainedStreamStaysByteForByte) {
    const std::string second = JoinPages(Renamed(EncodedOgg::Managed(), OtherSerial));
    const std::string chained = EncodedOgg::Stereo() + second;
    for (const Texts& comments : {Many, Texts{std::string(200'000, 'x')}, Texts()}) {
        const std::string saved = ExpectSaved(chained, comments);
        EXPECT_TRUE(saved.ends_with(second));
        EXPECT_EQ(Decoded(saved), Decoded(chained));
    }
}

TEST_F(OggCommentWriterTest, ALaterStreamUnderTheSameSerialNumberStaysByteForByte) {
    const std::string& one = EncodedOgg::Stereo();
    const std::string saved = ExpectSaved(one + one, {std::string(200'000, 'x')});
    EXPECT_TRUE(saved.ends_with(one));
    EXPECT_EQ(Decoded(saved), Decoded(one + one));
}

TEST_F(OggCommentWriterTest, AStreamBesideTheFirstStaysByteForByte) {
    const auto other = Renamed(EncodedOgg::Managed(), OtherSerial);
    auto video = Renamed(EncodedOgg::Managed(), OtherSerial);
    video[0].body.replace(0, 7, "\x80theora");
    const auto large = Renamed(WithComments(EncodedOgg::Managed(), {std::string(150'000, 'y')}), OtherSerial);
    for (const auto& stream : {other, video, large}) {
        for (const bool otherFirst : {false, true}) {
            const std::string file = Multiplexed(EncodedOgg::Stereo(), stream, otherFirst);
            for (const Texts& comments : {Many, Texts{std::string(200'000, 'x')}, Texts()}) {
                ExpectSaved(file, comments);
            }
            ExpectSaved(ExpectSaved(file, {std::string(200'000, 'x')}), Many);
        }
    }
}

TEST_F(OggCommentWriterTest, TheFirstVorbisStreamIsFoundAfterStreamsOfOtherKinds) {
    auto video = Renamed(EncodedOgg::Managed(), OtherSerial);
    video[0].body.replace(0, 7, "\x80theora");
    ExpectSaved(JoinPages(video) + EncodedOgg::Stereo(), Many);
    ExpectSaved(JoinPages(video) + EncodedOgg::Stereo(), {std::string(200'000, 'x')});
}

TEST_F(OggCommentWriterTest, WhatLiesBeforeAndAfterThePagesStays) {
    const std::string before = "ID3\x03 a tag that has no business here";
    const std::string after = std::string("TAG") + std::string(125, 'x') + "OggS and more";
    const std::string& ogg = EncodedOgg::Long();
    const std::string cut = ogg.substr(0, ogg.size() - 100);
    std::vector<ForgedPage> whole = SplitPages(ogg);
    const std::string last = JoinPages({whole.back()});
    whole.pop_back();
    for (const Texts& comments : {Many, Texts{std::string(200'000, 'x')}}) {
        EXPECT_EQ(Saved(before + ogg + after, comments), before + Saved(ogg, comments) + after);
        EXPECT_EQ(Saved(cut, comments),
                  Saved(JoinPages(whole), comments) + last.substr(0, last.size() - 100));
    }
}

TEST_F(OggCommentWriterTest, ADamagedPageStaysDamagedAndTheGapInTheNumbersAGap) {
    const std::string& ogg = EncodedOgg::Long();
    std::vector<ForgedPage> pages = SplitPages(ogg);
    const std::size_t number = pages.size() / 2;
    const std::string damaged = JoinPages({pages[number]}).replace(200, 4, "####");
    const std::vector<ForgedPage> head(pages.begin(), pages.begin() + static_cast<std::ptrdiff_t>(number));
    const std::vector<ForgedPage> tail(pages.begin() + static_cast<std::ptrdiff_t>(number) + 1, pages.end());
    const Texts large = {std::string(200'000, 'x')};
    const std::string saved = Saved(JoinPages(head) + damaged + JoinPages(tail), large);
    const std::string whole = ExpectSaved(ogg, large);
    pages = SplitPages(whole);
    pages.erase(pages.begin() + static_cast<std::ptrdiff_t>(number + HeaderPageCount(whole)) - 2);
    const std::size_t place = saved.find(damaged);
    ASSERT_NE(place, std::string::npos);
    EXPECT_EQ(saved.substr(0, place) + saved.substr(place + damaged.size()), JoinPages(pages));
}

TEST_F(OggCommentWriterTest, AStreamOfHeadersAloneKeepsItsEnd) {
    std::vector<ForgedPage> pages = SplitPages(EncodedOgg::Stereo());
    pages.resize(2);
    pages[1].flags |= 4;
    for (const Texts& comments : {Many, Texts{std::string(200'000, 'x')}}) {
        const auto saved = SplitPages(ExpectSaved(JoinPages(pages), comments));
        EXPECT_EQ(saved.back().flags & 4, 4);
        EXPECT_EQ(std::count_if(saved.begin(), saved.end(),
                                [](const ForgedPage& page) { return (page.flags & 4) != 0; }),
                  1);
    }
}

TEST_F(OggCommentWriterTest, PagesOfHeadersTellPositionsAsTheFormatWants) {
    // 0 where a packet ends, -1 where none does.
    const auto pages = SplitPages(Saved(EncodedOgg::Stereo(), {std::string(200'000, 'x')}));
    for (std::size_t i = 1; i < HeaderPageCount(ReadWhole(path)); ++i) {
        const bool endsPacket =
            std::any_of(pages[i].lacing.begin(), pages[i].lacing.end(), [](int size) { return size < 255; });
        EXPECT_EQ(pages[i].granule, endsPacket ? 0 : -1) << i;
    }
}

} // namespace quavernet::test
