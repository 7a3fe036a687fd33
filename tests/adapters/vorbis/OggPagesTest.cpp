#include "adapters/vorbis/OggPages.h"

#include "adapters/vorbis/OggInfoReader.h"
#include "platform/RuntimeError.h"
#include "support/OggFiles.h"

#include <gtest/gtest.h>

namespace quavernet::test {

namespace {

using vorbis::ByteSource;
using vorbis::OggPageReader;

constexpr std::size_t LargestPage = 27 + 255 + 255 * 255;

/// A source in memory that counts what is read of it, and can stop delivering.
class CountedSource : public ByteSource {
public:
    explicit CountedSource(std::string bytes) : m_bytes(std::move(bytes)) {}

    std::uint64_t Size() const override { return claimedSize != 0 ? claimedSize : m_bytes.size(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> target) override {
        const std::size_t got =
            offset >= m_bytes.size()
                ? 0
                : m_bytes.copy(reinterpret_cast<char*>(target.data()), target.size(), offset);
        largest = std::max(largest, target.size());
        total += got;
        return got;
    }

    std::uint64_t claimedSize = 0;
    std::size_t largest = 0;
    std::size_t total = 0;

private:
    std::string m_bytes;
};

std::size_t CountPages(ByteSource& source) {
    OggPageReader reader(source);
    ogg_page page{};
    std::size_t count = 0;
    while (reader.Next(page)) {
        ++count;
    }
    return count;
}

/// A file on a medium that fails from an offset on.
class FaultyFile : public BinaryFile {
public:
    FaultyFile(std::string bytes, std::size_t fault) : m_bytes(std::move(bytes)), m_fault(fault) {}

    std::uint64_t Size() const override { return m_bytes.size(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> target) const override {
        if (offset + target.size() > m_fault) {
            throw RuntimeError(ErrorNumber::DeviceInputOutput, "Input/output error");
        }
        return m_bytes.copy(reinterpret_cast<char*>(target.data()), target.size(), offset);
    }
    std::uint64_t NextData(std::uint64_t offset) const override { return offset; }
    void Overwrite(std::uint64_t, std::span<const std::byte>, std::span<const std::byte>, SaveTimes,
                   WithoutCopy) override {}
    void Rewrite(const std::function<void(FileCopy&)>&) override {}

private:
    std::string m_bytes;
    std::size_t m_fault;
};

} // namespace

TEST(OggPagesTest, PagesBeforeTheFaultOfAMediumCount) {
    const std::string& ogg = EncodedOgg::Long();
    const std::vector<ForgedPage> pages = SplitPages(ogg);
    for (const std::size_t fault : {std::size_t{0}, std::size_t{4096}, std::size_t{81920}}) {
        std::size_t whole = 0;
        for (std::size_t end = 0; whole < pages.size(); ++whole) {
            end += JoinPages({pages[whole]}).size();
            if (end > fault) {
                break;
            }
        }
        EXPECT_LT(whole, pages.size());
        const auto source = vorbis::OpenFile(std::make_unique<FaultyFile>(ogg, fault));
        EXPECT_EQ(CountPages(*source), whole) << fault;
    }
}

TEST(OggPagesTest, TheChecksumOfARealPageIsTheOneItCarries) {
    const std::string& ogg = EncodedOgg::Stereo();
    EXPECT_EQ(JoinPages(SplitPages(ogg)), ogg);
}

TEST(OggPagesTest, AWalkReadsAboutTheFileOnce) {
    CountedSource source(EncodedOgg::Long());
    EXPECT_EQ(CountPages(source), SplitPages(EncodedOgg::Long()).size());
    EXPECT_LT(source.total, EncodedOgg::Long().size() + 2 * LargestPage);
}

TEST(OggPagesTest, APageThatClaimsMoreThanTheFileHoldsEndsTheWalk) {
    std::string bytes = EncodedOgg::Mono();
    bytes.resize(bytes.size() - 1);
    CountedSource source(bytes);
    EXPECT_EQ(CountPages(source), SplitPages(EncodedOgg::Mono()).size() - 1);
    EXPECT_LE(source.largest, bytes.size());
}

TEST(OggPagesTest, AFileThatIsShorterThanItsSizeEndsTheWalk) {
    CountedSource source(EncodedOgg::Mono().substr(0, 5000));
    source.claimedSize = std::uint64_t{1} << 40;
    EXPECT_LE(CountPages(source), 2U);
    EXPECT_LT(source.total, 1000000U);
}

TEST(OggPagesTest, FalseMarksCostNoMoreThanASmallMultipleOfTheFile) {
    // Each mark claims a page of the greatest size, which must be read before it can be told to be none.
    std::string bytes;
    while (bytes.size() < 2000000) {
        bytes += std::string("OggS\0\0", 6) + std::string(20, '\0') + '\xff' + std::string(28, '\xff');
    }
    CountedSource source(bytes + std::string(LargestPage, '\0') + EncodedOgg::Mono());
    EXPECT_EQ(CountPages(source), 0U) << "the walk ends before the good pages after the false ones";
    EXPECT_LT(source.total, 12 * bytes.size());
}

TEST(OggPagesTest, AFileOfManyStreamsKeepsTheHeadersOfAThousand) {
    std::vector<ForgedPage> pages = SplitPages(EncodedOgg::Mono());
    std::string bytes;
    for (std::size_t page = 0; page < 3; ++page) {
        for (std::uint32_t serial = 1; serial <= 1100; ++serial) {
            pages[page].serial = serial;
            bytes += JoinPages({pages[page]});
        }
    }
    const auto source =
        vorbis::OpenMemory(std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
    std::string lines;
    vorbis::AppendOggInfo("x.ogg", *source, lines);
    EXPECT_NE(lines.find("New logical stream (#1100,"), std::string::npos);
    EXPECT_NE(lines.find("Vorbis headers parsed for stream 1024,"), std::string::npos);
    EXPECT_EQ(lines.find("Vorbis headers parsed for stream 1025,"), std::string::npos);
}

TEST(OggPagesTest, APacketThatDoesNotEndIsNotKept) {
    // The second header packet goes on over all pages: 80 MB, of which the reader may keep 64.
    std::vector<ForgedPage> pages = SplitPages(EncodedOgg::Mono());
    pages.resize(1);
    ForgedPage endless{0,
                       0,
                       pages[0].serial,
                       1,
                       std::vector<std::uint8_t>(255, 255),
                       std::string(std::size_t{255} * 255, 'c')};
    endless.body.replace(0, 7, "\x03vorbis");
    std::string bytes = JoinPages({pages[0], endless});
    endless.flags = 1;
    for (endless.sequence = 2; bytes.size() < std::size_t{80} << 20; ++endless.sequence) {
        bytes += JoinPages({endless});
    }
    const std::string ended = bytes + JoinPages({{1, 0, endless.serial, endless.sequence, {1}, "c"}});
    const auto source =
        vorbis::OpenMemory(std::span(reinterpret_cast<const std::uint8_t*>(ended.data()), ended.size()));
    std::string lines;
    vorbis::AppendOggInfo("x.ogg", *source, lines);
    EXPECT_EQ(lines.find("Nominal bitrate"), std::string::npos);
    EXPECT_NE(lines.find("New logical stream"), std::string::npos);
    EXPECT_LT(lines.capacity(), std::size_t{1} << 20);
}

} // namespace quavernet::test
