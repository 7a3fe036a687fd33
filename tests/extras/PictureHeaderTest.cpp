#include "extras/PictureHeader.h"

#include "support/LogicTest.h"
#include "support/TemporaryFolder.h"
#include "support/TestFiles.h"

#include <limits>

namespace quavernet::test {

namespace {

constexpr std::uint64_t TooMuch = std::numeric_limits<std::uint64_t>::max();

class PictureHeaderTest : public LogicTest {
protected:
    std::unique_ptr<BinaryFile> File(const std::string& bytes) {
        WriteFile(folder / "picture", bytes);
        return services.files->Open(folder / "picture", BinaryFile::Access::Read);
    }
    PictureFormat Format(const std::string& bytes) { return FormatOfPicture(*File(bytes)); }
    std::uint64_t Coefficients(const std::string& bytes) { return JpegCoefficientBytes(*File(bytes)); }

    TemporaryFolder folder;
};

const std::string Start = Bytes({0xFF, 0xD8});

/// A marker with its length and contents.
std::string Segment(int marker, const std::string& contents) {
    return Bytes({0xFF, marker}) + Big(contents.size() + 2, 2) + contents;
}

std::string FrameOf(int marker, int width, int height, int components) {
    return Segment(marker, Bytes({8}) + Big(static_cast<std::uint64_t>(height), 2) +
                               Big(static_cast<std::uint64_t>(width), 2) + Bytes({components}) +
                               std::string(static_cast<std::size_t>(components) * 3, '\1'));
}

std::string ScanOf(int components) {
    return Segment(0xDA,
                   Bytes({components}) + std::string(static_cast<std::size_t>(components) * 2 + 3, '\0'));
}

} // namespace

TEST_F(PictureHeaderTest, TheFirstBytesTellTheFormat) {
    EXPECT_EQ(Format("BM" + std::string(20, '\0')), PictureFormat::Bmp);
    EXPECT_EQ(Format("GIF87a"), PictureFormat::Gif);
    EXPECT_EQ(Format("GIF89a"), PictureFormat::Gif);
    EXPECT_EQ(Format(Bytes({0xFF, 0xD8, 0xFF, 0xE0})), PictureFormat::Jpeg);
    EXPECT_EQ(Format("\x89PNG\r\n\x1A\n"), PictureFormat::Png);
    EXPECT_EQ(Format("RIFF1234WEBPVP8 "), PictureFormat::WebP);
    for (const char* other : {"", "B", "GIF90a", "\xFF\xD8", "RIFF1234WAVE", "RIFFWEBP", "<svg>", "%PDF-1.4",
                              "P6 1 1 255 ", "II*", "#define x_width 1", "WEBP"}) {
        EXPECT_EQ(Format(other), PictureFormat::None) << other;
    }
}

TEST_F(PictureHeaderTest, AJpegOfOneScanIsDecodedLineByLine) {
    for (const int marker : {0xC0, 0xC1, 0xC3, 0xC9}) {
        EXPECT_EQ(Coefficients(Start + FrameOf(marker, 30000, 30000, 3) + ScanOf(3)), 0U);
    }
    EXPECT_EQ(Coefficients(Start + FrameOf(0xC0, 30000, 30000, 1) + ScanOf(1)), 0U) << "grey";
}

TEST_F(PictureHeaderTest, AProgressiveJpegCostsTwoBytesForEachSampleOfItsBlocks) {
    for (const int marker : {0xC2, 0xC6, 0xCA, 0xCE}) {
        EXPECT_EQ(Coefficients(Start + FrameOf(marker, 16, 24, 3) + ScanOf(3)), 2U * 3U * 64U * 2U * 3U);
        EXPECT_EQ(Coefficients(Start + FrameOf(marker, 17, 17, 1) + ScanOf(1)), 3U * 3U * 64U * 2U);
    }
    EXPECT_EQ(Coefficients(Start + FrameOf(0xC2, 30000, 30000, 3) + ScanOf(3)), 30000ULL * 30000U * 2U * 3U);
}

TEST_F(PictureHeaderTest, SoDoesAnyOtherThatBeginsWithLessThanAllComponents) {
    EXPECT_EQ(Coefficients(Start + FrameOf(0xC0, 8, 8, 3) + ScanOf(1)), 64U * 2U * 3U);
    EXPECT_EQ(Coefficients(Start + FrameOf(0xC0, 8, 8, 4) + ScanOf(3)), 64U * 2U * 4U);
}

TEST_F(PictureHeaderTest, SegmentsAndRubbishBeforeTheFrameArePassedOver) {
    const std::string app = Segment(0xE1, std::string(65000, '\xFF')); // Holds no marker of its own.
    const std::string rest = FrameOf(0xC2, 8, 8, 1) + ScanOf(1);
    EXPECT_EQ(Coefficients(Start + app + app + rest), 128U);
    EXPECT_EQ(Coefficients(Start + "rubbish" + std::string(3, '\xFF') + rest), 128U);
    EXPECT_EQ(Coefficients(Start + Bytes({0xFF, 0x01, 0xFF, 0xD0, 0xFF, 0x00}) + rest), 128U);
    EXPECT_EQ(Coefficients(Start + Segment(0xC4, "tables") + Segment(0xC8, "x") + Segment(0xCC, "x") + rest),
              128U)
        << "markers among those of the frames";
    EXPECT_EQ(Coefficients(Start + FrameOf(0xC0, 999, 999, 3) + rest), 128U) << "the last frame counts";
}

TEST_F(PictureHeaderTest, AFileWithoutAScanCostsNothing) {
    const std::string frame = FrameOf(0xC2, 3000, 3000, 3);
    EXPECT_EQ(Coefficients(Start), 0U);
    EXPECT_EQ(Coefficients(""), 0U);
    EXPECT_EQ(Coefficients(Start + frame), 0U);
    EXPECT_EQ(Coefficients(Start + frame.substr(0, 7)), 0U);
    EXPECT_EQ(Coefficients(Start + Bytes({0xFF, 0xD9}) + frame + ScanOf(3)), 0U);
    EXPECT_EQ(Coefficients(Start + Bytes({0xFF, 0xE0, 0, 1}) + frame + ScanOf(3)), 0U) << "a length of 1";
    EXPECT_EQ(Coefficients(Start + Bytes({0xFF, 0xC2, 0, 3, 8}) + ScanOf(3)), 0U) << "too short a frame";
    for (std::size_t size = 0; size < frame.size(); ++size) {
        EXPECT_EQ(Coefficients(Start + frame.substr(0, size)), 0U);
    }
}

TEST_F(PictureHeaderTest, MoreScansThanAnyProgramWritesAreTooMuch) {
    const auto withScans = [](int scans) {
        std::string bytes = Start + FrameOf(0xC2, 8, 8, 1);
        for (int i = 0; i < scans; ++i) {
            bytes += ScanOf(1) + Bytes({0x12, 0xFF, 0x00, 0xDA, 0xFF, 0xD1, 0x34});
        }
        return bytes;
    };
    EXPECT_EQ(Coefficients(withScans(30)), 128U);
    EXPECT_EQ(Coefficients(withScans(31)), TooMuch);
    EXPECT_EQ(Coefficients(withScans(30) + Bytes({0xFF, 0xD9}) + ScanOf(1)), 128U) << "after the end";
}

TEST_F(PictureHeaderTest, MoreSegmentsThanAnyProgramWritesAreTooMuch) {
    const auto withSegments = [](int segments) {
        std::string bytes = Start;
        for (int i = 0; i < segments; ++i) {
            bytes += Segment(0xFE, "");
        }
        return bytes + FrameOf(0xC0, 8, 8, 1) + ScanOf(1);
    };
    EXPECT_EQ(Coefficients(withSegments(9998)), 0U);
    EXPECT_EQ(Coefficients(withSegments(9999)), TooMuch);
}

TEST_F(PictureHeaderTest, MoreBytesInFrontOfAJpegsScanThanAnyProfileHasAreTooMuch) {
    const auto withSegments = [](int segments) {
        std::string bytes = Start;
        for (int i = 0; i < segments; ++i) {
            bytes += Segment(0xE2, std::string(64998, 'x'));
        }
        return bytes + FrameOf(0xC0, 8, 8, 1) + ScanOf(1);
    };
    EXPECT_EQ(Coefficients(withSegments(400)), 0U) << "26 MB";
    EXPECT_EQ(Coefficients(withSegments(500)), TooMuch) << "32.5 MB";
}

TEST_F(PictureHeaderTest, MoreTextsInAPngThanAnyProgramWritesAreTooMuch) {
    const auto chunk = [](const std::string& type, const std::string& data) {
        return Big(data.size(), 4) + type + data + "crc.";
    };
    const auto png = [&](const std::string& type, int before, int after, std::size_t size = 3) {
        std::string bytes = "\x89PNG\r\n\x1A\n" + chunk("IHDR", std::string(13, '\0'));
        for (int i = 0; i < before; ++i) {
            bytes += chunk(type, std::string(size, 'x'));
        }
        for (int i = 0; i < 50; ++i) {
            bytes += chunk("IDAT", std::string(400000, 'x'));
        }
        for (int i = 0; i < after; ++i) {
            bytes += chunk(type, std::string(size, 'x'));
        }
        return bytes + chunk("IEND", "");
    };
    const auto tooMuch = [&](const std::string& bytes) { return HasOversizedTexts(*File(bytes)); };
    for (const char* packed : {"zTXt", "iTXt", "iCCP"}) {
        EXPECT_FALSE(tooMuch(png(packed, 6, 0))) << packed;
        EXPECT_TRUE(tooMuch(png(packed, 7, 0))) << packed;
        EXPECT_FALSE(tooMuch(png(packed, 3, 3))) << packed;
        EXPECT_TRUE(tooMuch(png(packed, 3, 4))) << packed << ": after the pixels as well";
    }
    EXPECT_FALSE(tooMuch(png("tEXt", 100, 100)));
    EXPECT_FALSE(tooMuch(png("tEXt", 3, 0, 5000000)));
    EXPECT_TRUE(tooMuch(png("tEXt", 4, 0, 5000000)));
    EXPECT_FALSE(tooMuch(png("tEXt", 1, 0).substr(0, 50))) << "cut";
    std::string many = "\x89PNG\r\n\x1A\n";
    for (int i = 0; i < 100001; ++i) {
        many += chunk("IDAT", "");
    }
    EXPECT_TRUE(tooMuch(many));
}

} // namespace quavernet::test
