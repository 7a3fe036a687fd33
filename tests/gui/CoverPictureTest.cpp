#include "extras/CoverPicture.h"

#include "adapters/qt/QtText.h"
#include "extras/CoverBox.h"
#include "support/LogicTest.h"
#include "support/TemporaryFolder.h"
#include "support/TestFiles.h"

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>

#include <filesystem>
#include <random>

#include <sys/stat.h>

namespace quavernet::test {

namespace {

constexpr QSize BoxSize(367, 367);

/// Left half red, right half blue.
QImage TwoColours(const QSize& size) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    QPainter(&image).fillRect(size.width() / 2, 0, size.width(), size.height(), Qt::blue);
    return image;
}

std::string Encoded(const QImage& image, const char* format, bool progressive = false) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(progressive);
    EXPECT_TRUE(writer.write(image)) << format;
    return buffer.data().toStdString();
}

/// Of two colours, the left one red. The codes are as wide as pixels: a clear code before each pair keeps the
/// decoder's table from growing.
std::string Gif(int width, int height) {
    std::string gif = "GIF89a" + Little(static_cast<std::uint64_t>(width), 2) +
                      Little(static_cast<std::uint64_t>(height), 2) + Bytes({0xF0, 0, 0}) +
                      Bytes({255, 0, 0, 0, 0, 255}) + Bytes({0x2C, 0, 0, 0, 0}) +
                      Little(static_cast<std::uint64_t>(width), 2) +
                      Little(static_cast<std::uint64_t>(height), 2) + Bytes({0, 2});
    std::string codes;
    std::uint32_t bits = 0;
    int held = 0;
    const auto put = [&](std::uint32_t code) { // Three bits each, the lowest first.
        bits |= code << held;
        for (held += 3; held >= 8; held -= 8) {
            codes += static_cast<char>(bits & 0xFF);
            bits >>= 8;
        }
    };
    constexpr std::uint32_t Clear = 4;
    constexpr std::uint32_t End = 5;
    for (int i = 0; i < width * height; ++i) {
        if (i % 2 == 0) {
            put(Clear);
        }
        put(i % width < width / 2 ? 0 : 1);
    }
    put(End);
    codes += static_cast<char>(bits & 0xFF);
    for (std::size_t at = 0; at < codes.size(); at += 255) {
        const std::string block = codes.substr(at, 255);
        gif += static_cast<char>(block.size()) + block;
    }
    return gif + Bytes({0, 0x3B});
}

class CoverPictureTest : public LogicTest {
protected:
    QImage ReadBytes(const std::string& bytes, const QSize& size = BoxSize) {
        WriteFile(folder / "picture", bytes);
        return ReadCoverPicture(folder / "picture", size);
    }
    static void ExpectTwoColours(const QImage& picture, const std::string& what) {
        ASSERT_EQ(picture.size(), BoxSize) << what;
        const auto near = [&](int x, const QColor& colour) {
            const QColor seen = picture.pixelColor(x, 180);
            EXPECT_LE(std::abs(seen.red() - colour.red()) + std::abs(seen.blue() - colour.blue()), 30)
                << what << " at " << x;
        };
        near(40, Qt::red);
        near(330, Qt::blue);
    }
    /// A small picture of each format.
    static std::vector<std::pair<std::string, std::string>> Formats() {
        const QImage image = TwoColours({64, 48});
        return {{"bmp", Encoded(image, "bmp")},   {"gif", Gif(64, 48)},
                {"jpeg", Encoded(image, "jpeg")}, {"progressive jpeg", Encoded(image, "jpeg", true)},
                {"png", Encoded(image, "png")},   {"interlaced png", InterlacedPng()},
                {"webp", Encoded(image, "webp")}};
    }
    /// 2 x 2 pixels in seven passes (Adam7): red, blue, red, blue.
    static std::string InterlacedPng() {
        const std::string rows = Bytes({0, 255, 0, 0}) + Bytes({0, 0, 0, 255}) +
                                 Bytes({0, 255, 0, 0, 0, 0, 255}); // Passes 1, 6 and 7.
        QByteArray packed = qCompress(QByteArray::fromStdString(rows)).mid(4);
        return "\x89PNG\r\n\x1A\n" + Chunk("IHDR", Big(2, 4) + Big(2, 4) + Bytes({8, 2, 0, 0, 1})) +
               Chunk("IDAT", packed.toStdString()) + Chunk("IEND", "");
    }
    static std::string Chunk(const std::string& type, const std::string& data) {
        return Big(data.size(), 4) + type + data + Big(Crc(type + data), 4);
    }
    static std::uint32_t Crc(const std::string& bytes) {
        std::uint32_t crc = 0xFFFFFFFFU;
        for (const char c : bytes) {
            crc ^= static_cast<unsigned char>(c);
            for (int bit = 0; bit < 8; ++bit) {
                crc = (crc & 1U) != 0 ? crc >> 1 ^ 0xEDB88320U : crc >> 1;
            }
        }
        return ~crc;
    }
    /// A PNG of this size that ends after its header.
    static std::string PngHeader(int width, int height) {
        return "\x89PNG\r\n\x1A\n" +
               Chunk("IHDR", Big(static_cast<std::uint64_t>(width), 4) +
                                 Big(static_cast<std::uint64_t>(height), 4) + Bytes({8, 2, 0, 0, 0}));
    }
    /// A BMP of 24 bits whose pixels are the hole of a sparse file: black.
    std::string SparseBmp(int side) {
        const std::uint64_t row = (static_cast<std::uint64_t>(side) * 3 + 3) / 4 * 4;
        const std::uint64_t size = 54 + row * static_cast<std::uint64_t>(side);
        const std::string path = folder / "sparse.bmp";
        WriteFile(path, "BM" + Little(size, 4) + Little(0, 4) + Little(54, 4) + Little(40, 4) +
                            Little(static_cast<std::uint64_t>(side), 4) +
                            Little(static_cast<std::uint64_t>(side), 4) + Little(1, 2) + Little(24, 2) +
                            std::string(24, '\0'));
        std::filesystem::resize_file(path, size);
        return path;
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(CoverPictureTest, EveryFormatIsStretchedToTheSize) {
    for (const auto& [name, bytes] : Formats()) {
        ExpectTwoColours(ReadBytes(bytes), name);
    }
    EXPECT_EQ(ReadBytes(Formats()[0].second, {20, 50}).size(), QSize(20, 50));
}

TEST_F(CoverPictureTest, TheContentsCountAndNotTheName) {
    WriteFile(folder / "letter.txt", Formats()[2].second);
    EXPECT_FALSE(ReadCoverPicture(folder / "letter.txt", BoxSize).isNull());
    WriteFile(folder / "b\xE9.gif", Formats()[4].second);
    EXPECT_FALSE(ReadCoverPicture(folder / "b\xE9.gif", BoxSize).isNull()) << "a name that is not UTF-8";
}

TEST_F(CoverPictureTest, WhatIsNoFileIsNoPicture) {
    const std::string pipe = folder / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {std::string(), folder / "missing", folder.Path(), pipe,
                                    std::string("/dev/zero"), std::string("x\0y", 3)}) {
        EXPECT_TRUE(ReadCoverPicture(path, BoxSize).isNull()) << path;
    }
    EXPECT_TRUE(ReadBytes("").isNull());
}

TEST_F(CoverPictureTest, OtherFormatsThatTheToolkitReadsAreNoCovers) {
    EXPECT_TRUE(QImageReader::supportedImageFormats().contains("svg")) << "it would read them";
    const QImage image = TwoColours({8, 8});
    for (const char* format : {"ppm", "xpm", "xbm"}) {
        EXPECT_TRUE(ReadBytes(Encoded(image, format)).isNull()) << format;
    }
    EXPECT_TRUE(ReadBytes("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'>"
                          "<rect width='9' height='9'/></svg>")
                    .isNull());
}

TEST_F(CoverPictureTest, APictureOnItsSideIsTurned) {
    std::string jpeg = Encoded(TwoColours({64, 48}), "jpeg");
    // Turn by 90 degrees to the right: the left half comes to the top.
    const std::string exif = "Exif" + Bytes({0, 0}) + "II*" + Bytes({0}) + Little(8, 4) + Little(1, 2) +
                             Little(0x112, 2) + Little(3, 2) + Little(1, 4) + Little(6, 4) + Little(0, 4);
    jpeg.insert(2, Bytes({0xFF, 0xE1}) + Big(exif.size() + 2, 2) + exif);
    const QImage picture = ReadBytes(jpeg, {200, 100});
    ASSERT_EQ(picture.size(), QSize(200, 100));
    EXPECT_GT(picture.pixelColor(100, 10).red(), 200);
    EXPECT_GT(picture.pixelColor(100, 90).blue(), 200);
}

TEST_F(CoverPictureTest, CutFilesAreShownAsFarAsTheyGoOrNotAtAll) {
    for (const auto& [name, bytes] : Formats()) {
        const std::size_t step = bytes.size() > 2000 ? 97 : 1;
        for (std::size_t size = 0; size < bytes.size(); size += step) {
            const QImage picture = ReadBytes(bytes.substr(0, size));
            EXPECT_TRUE(picture.isNull() || picture.size() == BoxSize) << name << " " << size;
        }
        EXPECT_TRUE(ReadBytes(bytes.substr(0, 12)).isNull()) << name;
    }
}

TEST_F(CoverPictureTest, FlippedBitsAreShownSomehowOrNotAtAll) {
    std::mt19937 random(7);
    for (const auto& [name, bytes] : Formats()) {
        for (int round = 0; round < 150; ++round) {
            std::string broken = bytes;
            for (int flip = 0; flip < 1 + round % 4; ++flip) {
                // Most of them in the header, where sizes are.
                const std::size_t range =
                    round % 3 == 0 ? broken.size() : std::min<std::size_t>(broken.size(), 64);
                broken[random() % range] ^= static_cast<char>(1U << random() % 8);
            }
            const QImage picture = ReadBytes(broken);
            EXPECT_TRUE(picture.isNull() || picture.size() == BoxSize) << name << " " << round;
        }
    }
}

TEST_F(CoverPictureTest, APictureOf30000PixelsASideIsRefused) {
    EXPECT_TRUE(ReadBytes(PngHeader(30000, 30000)).isNull());
    EXPECT_TRUE(ReadBytes(PngHeader(65500, 65500)).isNull());
    EXPECT_TRUE(ReadBytes(PngHeader(1, 2000000000)).isNull());
    for (const bool progressive : {false, true}) {
        std::string jpeg = Encoded(TwoColours({64, 48}), "jpeg", progressive);
        const std::size_t frame = jpeg.find(Bytes({0xFF, progressive ? 0xC2 : 0xC0, 0}));
        ASSERT_NE(frame, std::string::npos);
        EXPECT_TRUE(ReadBytes(Put(jpeg, frame + 5, Big(30000, 2) + Big(30000, 2))).isNull());
    }
    EXPECT_TRUE(ReadBytes(Put(Gif(64, 48), 6, Little(30000, 2) + Little(30000, 2))).isNull());
    EXPECT_TRUE(ReadCoverPicture(SparseBmp(30000), BoxSize).isNull());
}

TEST_F(CoverPictureTest, WhatWouldTakeMoreThan128MegabytesIsRefused) {
    const int limit = QImageReader::allocationLimit();
    EXPECT_FALSE(ReadCoverPicture(SparseBmp(5000), BoxSize).isNull()) << "100 MB";
    EXPECT_TRUE(ReadCoverPicture(SparseBmp(6000), BoxSize).isNull()) << "144 MB";
    EXPECT_EQ(QImageReader::allocationLimit(), limit) << "that of other pictures stays";
}

TEST_F(CoverPictureTest, ALargeJpegIsDecodedSmallUnlessItsScansAreAllNeeded) {
    const QImage large(6000, 6000, QImage::Format_Grayscale8);
    const std::string baseline = Encoded(large, "jpeg");
    EXPECT_EQ(ReadBytes(baseline).size(), BoxSize);
    const QImage colours = TwoColours({5000, 5000});
    EXPECT_TRUE(ReadBytes(Encoded(colours, "jpeg", true)).isNull()) << "150 MB of coefficients";
    EXPECT_EQ(ReadBytes(Encoded(TwoColours({3000, 3000}), "jpeg", true)).size(), BoxSize);
}

TEST_F(CoverPictureTest, ADecompressionBombIsRefusedOrReadLineByLine) {
    // 12,000 x 12,000 grey pixels in 140 kB: the picture as a whole would be 576 MB.
    constexpr int Side = 12000;
    const QByteArray rows(static_cast<qsizetype>(Side) * (Side + 1), '\0');
    const std::string packed = qCompress(rows).mid(4).toStdString();
    const auto png = [&](int interlaced) {
        return "\x89PNG\r\n\x1A\n" +
               Chunk("IHDR", Big(Side, 4) + Big(Side, 4) + Bytes({8, 0, 0, 0, interlaced})) +
               Chunk("IDAT", packed) + Chunk("IEND", "");
    };
    EXPECT_LT(packed.size(), 200000U);
    const QImage picture = ReadBytes(png(0));
    EXPECT_TRUE(picture.isNull() || picture.size() == BoxSize);
    EXPECT_TRUE(ReadBytes(png(1)).isNull()) << "all its passes are needed";
}

TEST_F(CoverPictureTest, TextsThatUnpackToMegabytesAreNotUnpacked) {
    const std::string text =
        std::string("Comment\0\0", 9) + qCompress(QByteArray(7'000'000, 'x')).mid(4).toStdString();
    const auto png = [&](int texts) {
        const std::string whole = Encoded(TwoColours({64, 48}), "png");
        const std::size_t end = whole.find("IEND") - 4;
        std::string packed;
        for (int i = 0; i < texts; ++i) {
            packed += Chunk("zTXt", text);
        }
        return whole.substr(0, end) + packed + whole.substr(end);
    };
    EXPECT_FALSE(ReadBytes(png(2)).isNull());
    EXPECT_TRUE(ReadBytes(png(1000)).isNull()) << "7 GB in 7 MB";
}

TEST_F(CoverPictureTest, AFileWithAHeadAndAnEndlessRestIsRefused) {
    for (const auto& [name, bytes] : Formats()) {
        WriteFile(folder / "long", bytes);
        std::filesystem::resize_file(folder / "long", 100'000'000);
        EXPECT_FALSE(ReadCoverPicture(folder / "long", BoxSize).isNull()) << name;
        std::filesystem::resize_file(folder / "long", 200'000'000);
        EXPECT_TRUE(ReadCoverPicture(folder / "long", BoxSize).isNull()) << name;
    }
}

TEST_F(CoverPictureTest, ABoxShowsEachPixelOfItsPictureAtEveryScale) {
    for (const qreal scale : {1.0, 1.5, 2.0}) {
        CoverBox box;
        const int side = static_cast<int>(std::lround(box.width() * scale));
        QImage chequered(side, side, QImage::Format_RGB32);
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                chequered.setPixel(x, y, (x + y) % 2 == 0 ? 0xFF000000 : 0xFFFFFFFF);
            }
        }
        const std::string path = folder / "chequered.png";
        ASSERT_TRUE(chequered.save(ToQString(path)));
        box.ShowPicture(path);
        QImage screen(side, side, QImage::Format_RGB32);
        screen.fill(Qt::green);
        screen.setDevicePixelRatio(scale);
        box.render(&screen);
        screen.setDevicePixelRatio(1);
        EXPECT_EQ(box.Picture().size(), chequered.size()) << scale;
        EXPECT_EQ(screen, chequered) << scale;
    }
}

} // namespace quavernet::test
