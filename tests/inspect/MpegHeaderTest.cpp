#include "inspect/InspectTest.h"

#include "inspect/MpegHeader.h"

#include <bitset>

namespace quavernet::test {

class MpegHeaderTest : public InspectTest {
protected:
    std::string Header(std::string_view contents) { return ReadMpegHeader(File("a.mp3", contents), file); }
};

const std::string FrameBits = "11111111111110111001000000000000"; // FF FB 90 00

TEST_F(MpegHeaderTest, AnEmptyPathGivesAnEmptyHeader) {
    EXPECT_EQ(ReadMpegHeader("", file), "");
}

TEST_F(MpegHeaderTest, AFileThatCanNotBeOpenedGivesAnEmptyHeader) {
    EXPECT_EQ(ReadMpegHeader(folder / "missing.mp3", file), "");
    EXPECT_EQ(ReadMpegHeader(folder.Path(), file), "");
}

TEST_F(MpegHeaderTest, AFileOf255BytesGivesAnEmptyHeaderAndOneOf256ItsFrame) {
    EXPECT_EQ(Header(Mpeg(255)), "");
    EXPECT_EQ(Header(Mpeg(256)), FrameBits);
}

TEST_F(MpegHeaderTest, OnlyTheSecondBytesFAAndFBMakeAFrame) {
    for (int second = 0; second < 256; ++second) {
        const bool isFrame = second == 0xFA || second == 0xFB;
        const std::string bits = Header(Mpeg(300, 10, Frame(0x90, 0, second)));
        EXPECT_EQ(bits, isFrame
                            ? std::bitset<32>(0xFF009000u | static_cast<unsigned>(second) << 16).to_string()
                            : "")
            << second;
    }
}

TEST_F(MpegHeaderTest, TheLastPositionSearchedIs5000) {
    EXPECT_EQ(Header(Mpeg(6000, 4999)), FrameBits);
    EXPECT_EQ(Header(Mpeg(6000, 5000)), "");
}

TEST_F(MpegHeaderTest, AnFFBeforeTheFrameIsPassedOver) {
    EXPECT_EQ(Header(Mpeg(300, 3, Bytes({0xFF, 0xFF, 0xFF, 0xFB, 0x90, 0x00}))), FrameBits);
}

TEST_F(MpegHeaderTest, TheFirstOfTwoFramesCounts) {
    EXPECT_EQ(Header(Put(Mpeg(300, 20), 100, Frame(0xA0))), FrameBits);
}

TEST_F(MpegHeaderTest, BytesAfterTheEndAreZero) {
    EXPECT_EQ(Header(Mpeg(300, 298, Bytes({0xFF, 0xFB}))), "11111111111110110000000000000000");
    EXPECT_EQ(Header(Mpeg(300, 299, Bytes({0xFF}))), "");
}

TEST_F(MpegHeaderTest, WithoutAFrameTheHeaderIsAZeroAndTheFirstThreeBytesWithoutLeadingZeros) {
    EXPECT_EQ(Header(Mpeg(300, 0, Bytes({0x49, 0x44, 0x33}))), "10010010100010000110011"); // "ID3"
    EXPECT_EQ(Header(Mpeg(300, 0, Bytes({0x00, 0x01, 0x80}))), "110000000");
    EXPECT_EQ(Header(std::string(300, '\0')), "");
}

TEST_F(MpegHeaderTest, AMpeg2FrameIsNotRecognised) {
    EXPECT_EQ(Header(Mpeg(300, 0, Bytes({0xFF, 0xF3, 0x90, 0xC4}))), "111111111111001110010000");
}

TEST_F(MpegHeaderTest, TheXingMarkIs36BytesAfterTheFramesStart) {
    Header(Put(Put(Mpeg(400, 100), 136, "Xing"), 144, Big(0x01020304, 4)));
    EXPECT_TRUE(file.IsVbr);
    EXPECT_EQ(file.VbrFrames, 0x01020304);
}

TEST_F(MpegHeaderTest, NoOtherPlaceAndNoOtherSpellingIsAXingMark) {
    for (const std::size_t offset : {21u, 13u, 35u, 37u}) {
        Header(Put(Mpeg(400), offset, "Xing"));
        EXPECT_FALSE(file.IsVbr) << offset;
    }
    for (const char* mark : {"xing", "XING", "Info", "Xin"}) {
        Header(Put(Mpeg(400), 36, mark));
        EXPECT_FALSE(file.IsVbr) << mark;
    }
}

TEST_F(MpegHeaderTest, TheFlagsOfTheXingMarkAreNotLookedAt) {
    Header(Put(Xing(400, 77), 40, Bytes({0, 0, 0, 0})));
    EXPECT_EQ(file.VbrFrames, 77);
    Header(Put(Xing(400, 78), 40, Bytes({0, 0, 0, 0x0E})));
    EXPECT_EQ(file.VbrFrames, 78);
}

TEST_F(MpegHeaderTest, TheFrameCountIsUnsigned) {
    Header(Xing(400, 0xFFFFFFFF));
    EXPECT_EQ(file.VbrFrames, 4294967295.0);
}

TEST_F(MpegHeaderTest, WithoutAMarkTheFrameCountStays) {
    Header(Xing(400, 77));
    Header(Mpeg(400));
    EXPECT_FALSE(file.IsVbr);
    EXPECT_EQ(file.VbrFrames, 77);
}

TEST_F(MpegHeaderTest, AnEarlyReturnKeepsTheVbrMarkOfTheFileBefore) {
    Header(Xing(400, 77));
    Header(Mpeg(255));
    EXPECT_TRUE(file.IsVbr);
    ReadMpegHeader(folder / "missing.mp3", file);
    EXPECT_TRUE(file.IsVbr);
    ReadMpegHeader("", file);
    EXPECT_TRUE(file.IsVbr);
}

TEST_F(MpegHeaderTest, WithoutAFrameTheXingMarkIsLookedForAtPosition36) {
    Header(Put(Put(std::string(400, 'x'), 35, "Xing"), 43, Big(9, 4)));
    EXPECT_TRUE(file.IsVbr);
    EXPECT_EQ(file.VbrFrames, 9);
}

TEST_F(MpegHeaderTest, AFrameCountAfterTheEndReadsAsZero) {
    Header(Put(Mpeg(300, 258), 294, "Xing"));
    EXPECT_TRUE(file.IsVbr);
    EXPECT_EQ(file.VbrFrames, 0);
}

TEST(HeaderBitsTest, LeadingZerosAreDropped) {
    EXPECT_EQ(BytesToBits(0b10110), "10110");
    EXPECT_EQ(BytesToBits(0), "");
    EXPECT_EQ(BytesToBits(0x80000001), "10000000000000000000000000000001");
}

TEST(HeaderBitsTest, ABitStringIsWeighedByItsLength) {
    EXPECT_EQ(BitsToNumber("10"), 2u);
    EXPECT_EQ(BitsToNumber("1"), 1u);
    EXPECT_EQ(BitsToNumber("0110"), 6u);
    EXPECT_EQ(BitsToNumber(""), 0u);
    EXPECT_EQ(BitsToNumber(std::string(32, '1')), 0xFFFFFFFFu);
}

} // namespace quavernet::test
