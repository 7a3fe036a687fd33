// The reader beside the real tool, on files that are cut, damaged, muddled or forged.
#include "adapters/vorbis/OggInfoReader.h"

#include "support/OggComparison.h"
#include "support/RealFiles.h"

#include <limits>

namespace quavernet::test {

using OggDamageTest = OggComparison;

TEST_F(OggDamageTest, ACutFileCountsItsWholePagesOnly) {
    const std::string& whole = EncodedOgg::Long();
    for (const std::size_t size : {whole.size() - 1, whole.size() / 2, whole.size() / 3, std::size_t{9000}}) {
        const auto file = ExpectAsTheTool("cut.ogg", whole.substr(0, size));
        EXPECT_EQ(file.failure, "");
        EXPECT_LT(std::stoul(file.size), size);
    }
}

TEST_F(OggDamageTest, AFileCutAtAnyByteOfItsHeadersIsDescribedAsTheToolDoes) {
    const std::string& whole = EncodedOgg::Stereo();
    for (std::size_t size = 0; size < 5000; size += 97) {
        ExpectAsTheTool("cut.ogg", whole.substr(0, size));
    }
}

TEST_F(OggDamageTest, ACutHeaderLeavesARecordWithoutABitRate) {
    const auto pages = SplitPages(EncodedOgg::Stereo());
    const auto only = ExpectAsTheTool("id.ogg", JoinPages({pages[0]}));
    EXPECT_EQ(only.bitRate, "");
    EXPECT_EQ(only.size, "0");
    EXPECT_EQ(ExpectAsTheTool("three.ogg", JoinPages({pages[0], pages[1]})).bitRate, "112");
}

TEST_F(OggDamageTest, AMissingLastPageFlagIsWarnedOf) {
    auto pages = SplitPages(EncodedOgg::Stereo());
    pages.back().flags = 0;
    ExpectAsTheTool("noend.ogg", JoinPages(pages));
}

TEST_F(OggDamageTest, AStreamThatBeginsBeforeTheLastOneEndedDoesNotCount) {
    auto pages = SplitPages(EncodedOgg::Stereo());
    pages.back().flags = 0;
    auto second = SplitPages(EncodedOgg::Mono());
    const auto file = ExpectAsTheTool("a.ogg", JoinPages(pages) + JoinPages(second));
    EXPECT_EQ(file.bitRate, "112");
    second.back().flags = 0;
    EXPECT_EQ(ExpectAsTheTool("b.ogg", JoinPages(pages) + JoinPages(second)).failure, "Overflow");
    ExpectAsTheTool("c.ogg", EncodedOgg::Long().substr(0, 60000) + EncodedOgg::Mono());
}

TEST_F(OggDamageTest, PagesAfterTheLastOneDoNotCount) {
    auto pages = SplitPages(EncodedOgg::Stereo());
    pages.push_back(pages.back());
    pages.back().granule = std::int64_t{44100} * 9;
    EXPECT_EQ(ExpectAsTheTool("after.ogg", JoinPages(pages)).length, "3");
    ExpectAsTheTool("twice.ogg", EncodedOgg::Stereo() + EncodedOgg::Stereo());
}

TEST_F(OggDamageTest, ALengthThatNoNumberHoldsIsToldAsTheToolTellsIt) {
    auto pages = SplitPages(EncodedOgg::Stereo());
    pages[0].body.replace(12, 4, std::string("\x01\0\0\0", 4)); // The rate, in Hz.
    constexpr auto longest = std::numeric_limits<std::int64_t>::max();
    // A double has 53 bits: the last 512 numbers are rounded up, to one that no whole number holds.
    for (const std::int64_t granule : {longest, longest - 511, longest - 512, longest - 1023, longest / 2}) {
        pages.back().granule = granule;
        EXPECT_EQ(ExpectAsTheTool("long.ogg", JoinPages(pages)).failure, "Overflow") << granule;
    }
}

TEST_F(OggDamageTest, AMissingPageIsNotMissedInTheSum) {
    auto pages = SplitPages(EncodedOgg::Long());
    pages.erase(pages.begin() + 10, pages.begin() + 13);
    ExpectAsTheTool("gap.ogg", JoinPages(pages));
}

TEST_F(OggDamageTest, AHeaderPageOfAnotherVersionIsTakenAsTheToolTakesIt) {
    const auto whole = SplitPages(EncodedOgg::Stereo());
    ASSERT_GT(whole.size(), 3U);
    for (std::size_t page = 0; page < whole.size(); ++page) {
        auto pages = whole;
        pages[page].version = 1;
        const auto file = ExpectAsTheTool(std::to_string(page) + ".ogg", JoinPages(pages));
        EXPECT_EQ(file.bitRate, page < 2 ? "" : "112") << page;
    }
}

TEST_F(OggDamageTest, AMissingHeaderPageLeavesNoStream) {
    auto pages = SplitPages(WithComments(EncodedOgg::Stereo(), {"TITLE=" + std::string(100000, 'x')}));
    for (std::size_t gone = 0; gone < 4; ++gone) {
        auto rest = pages;
        rest.erase(rest.begin() + static_cast<std::ptrdiff_t>(gone));
        ExpectAsTheTool("gap.ogg", JoinPages(rest));
    }
}

TEST_F(OggDamageTest, MuddledFlagsAndNumbersOfTheFirstPagesAreTakenAsTheToolTakesThem) {
    const auto pages = SplitPages(WithComments(EncodedOgg::Stereo(), {"TITLE=" + std::string(100000, 'x')}));
    for (std::size_t page = 0; page < 3; ++page) {
        for (const int flags : {0, 1, 2, 3, 4, 6}) {
            auto muddled = pages;
            muddled[page].flags = static_cast<std::uint8_t>(flags);
            ExpectAsTheTool("flags.ogg", JoinPages(muddled));
        }
        for (const std::uint32_t sequence : {0U, 1U, 5U, 0xffffffffU}) {
            auto muddled = pages;
            muddled[page].sequence = sequence;
            ExpectAsTheTool("sequence.ogg", JoinPages(muddled));
        }
    }
}

TEST_F(OggDamageTest, EverySerialIsTaken) {
    for (const std::uint32_t serial : {0U, 0xffffffffU, 0x80000000U}) {
        auto pages = SplitPages(EncodedOgg::Stereo());
        for (auto& page : pages) {
            page.serial = serial;
        }
        ExpectAsTheTool("serial.ogg", JoinPages(pages));
    }
}

TEST_F(OggDamageTest, BytesBetweenPagesArePassedOver) {
    const auto pages = SplitPages(EncodedOgg::Long());
    const auto head = JoinPages({pages.begin(), pages.begin() + 8});
    const auto tail = JoinPages({pages.begin() + 8, pages.end()});
    ExpectAsTheTool("front.ogg", std::string(70000, 'x') + head + tail);
    ExpectAsTheTool("middle.ogg", head + std::string(100, 'x') + tail);
    ExpectAsTheTool("zeros.ogg", head + std::string(200000, '\0') + tail);
    ExpectAsTheTool("marks.ogg", head + "OggSOggSOgOggS" + tail);
    ExpectAsTheTool("behind.ogg", head + tail + "TAG" + std::string(125, '\0'));
    ExpectAsTheTool("falsepage.ogg",
                    head + std::string("OggS\0\0", 6) + std::string(20, '\0') + "\x01\x05hello" + tail);
}

TEST_F(OggDamageTest, ADamagedHeaderPageIsNoPage) {
    std::string bytes = EncodedOgg::Stereo();
    bytes[300] = static_cast<char>(bytes[300] ^ 1);
    EXPECT_EQ(ExpectAsTheTool("header.ogg", bytes).bitRate, "");
    bytes = EncodedOgg::Stereo();
    bytes[40] = static_cast<char>(bytes[40] ^ 1);
    ExpectAsTheTool("first.ogg", bytes);
}

TEST_F(OggDamageTest, ADamagedLastPageDoesNotCount) {
    std::string bytes = EncodedOgg::Long();
    bytes[bytes.size() - 3] = static_cast<char>(bytes[bytes.size() - 3] ^ 1);
    ExpectAsTheTool("last.ogg", bytes);
}

TEST_F(OggDamageTest, ADamagedPageMarkLosesThatPageAlone) {
    const auto pages = SplitPages(EncodedOgg::Long());
    std::string bytes = JoinPages(pages);
    const std::size_t at = JoinPages({pages.begin(), pages.begin() + 9}).size();
    bytes[at] = 'X';
    ExpectAsTheTool("mark.ogg", bytes);
    bytes[at] = 'O';
    bytes[at + 27] = static_cast<char>(bytes[at + 27] ^ 1);
    ExpectAsTheTool("lacing.ogg", bytes);
}

TEST_F(OggDamageTest, ADamagedPageOfAudioIsLeftOutOfTheDataLengthAlone) {
    std::string bytes = EncodedOgg::Long();
    const auto whole = ExpectAsTheTool("audio.ogg", bytes);
    bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 1);
    const auto damaged = ExpectAsTheTool("audio.ogg", bytes);
    EXPECT_LT(std::stoul(damaged.size), std::stoul(whole.size));
    EXPECT_EQ(damaged.length, whole.length);
    for (std::size_t at = 5000; at < bytes.size(); at += bytes.size() / 23) {
        bytes[at] = static_cast<char>(bytes[at] ^ 0x40);
        ExpectAsTheTool("audio.ogg", bytes);
    }
}

TEST_F(OggDamageTest, InvalidIdentificationsLeaveNoStream) {
    const auto one = [](char byte) { return std::string(1, byte); };
    const std::string& ogg = EncodedOgg::Stereo();
    ExpectAsTheTool("version.ogg", WithIdentification(ogg, 7, LittleEndian32(1)));
    ExpectAsTheTool("channels.ogg", WithIdentification(ogg, 11, one(0)));
    ExpectAsTheTool("rate.ogg", WithIdentification(ogg, 12, LittleEndian32(0)));
    ExpectAsTheTool("rate1.ogg", WithIdentification(ogg, 12, LittleEndian32(1)));
    ExpectAsTheTool("rate2.ogg", WithIdentification(ogg, 12, LittleEndian32(0x80000000)));
    for (const int blocks : {0x11, 0x68, 0xe6, 0xb5, 0x00}) {
        ExpectAsTheTool("blocks.ogg", WithIdentification(ogg, 28, one(static_cast<char>(blocks))));
    }
    ExpectAsTheTool("framing.ogg", WithIdentification(ogg, 29, one(0)));
    ExpectAsTheTool("mark.ogg", WithIdentification(ogg, 1, "Vorbis"));
    auto pages = SplitPages(ogg);
    pages[0].body.pop_back();
    pages[0].lacing[0] = 29;
    EXPECT_EQ(ExpectAsTheTool("short.ogg", JoinPages(pages)).failure, "Overflow");
    pages[0].body += "xx";
    pages[0].lacing[0] = 31;
    ExpectAsTheTool("long.ogg", JoinPages(pages));
}

TEST_F(OggDamageTest, ForgedCommentLengthsLeaveNoStream) {
    const std::string start = "\x03vorbis" + LittleEndian32(1) + "v";
    const std::string good = CommentPacket({"TITLE=x"});
    for (const std::string& packet : {
             start + LittleEndian32(1) + LittleEndian32(0x7fffffff) + "abc\x01",
             start + LittleEndian32(1) + LittleEndian32(0xffffffff) + "abc\x01",
             start + LittleEndian32(0xffffffff) + "abc\x01",
             start + LittleEndian32(100000) + "abc\x01",
             "\x03vorbis" + LittleEndian32(1000) + "v" + LittleEndian32(0) + "\x01",
             "\x03vorbis" + LittleEndian32(0xffffffff) + "v" + LittleEndian32(0) + "\x01",
             std::string("\x03vorbis"),
             good.substr(0, good.size() - 1),
             good.substr(0, good.size() - 1) + std::string(1, '\0'),
             good.substr(0, good.size() - 1) + "\x03",
             good + "behind the end",
             "\x05" + good.substr(1),
             CommentPacket({""}, std::string("v\0w", 3)),
         }) {
        ExpectAsTheTool("c.ogg", WithCommentPacket(EncodedOgg::Stereo(), packet));
    }
}

TEST_F(OggDamageTest, AStreamOfAnotherKindHasNoRecordToStore) {
    auto pages = SplitPages(EncodedOgg::Stereo());
    pages[0].body = "Nothing known";
    pages[0].lacing = {static_cast<std::uint8_t>(pages[0].body.size())};
    const std::string path = Write("other.ogg", JoinPages(pages));
    const auto real = ReadOggInfo(RealOggInfo({path}));
    EXPECT_EQ(ReadOggInfo(OggInfoReader(RealFiles()).Run({path})), real);
    EXPECT_EQ(real.at(0).bitRate, "");
}

} // namespace quavernet::test
