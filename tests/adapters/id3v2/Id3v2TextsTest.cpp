#include "adapters/id3v2/TagLibComponent.h"

#include "support/RealFiles.h"
#include "support/TagBytes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace quavernet::test {

// Texts in all the forms that frames of the versions have.
class Id3v2TextsTest : public ::testing::Test {
protected:
    // The title in a tag of this one frame.
    std::string TitleOf(int major, const std::string& frame) {
        return FieldOf(TagComponent::Title, major, frame);
    }

    std::string FieldOf(int index, int major, const std::string& frame) {
        WriteFile(folder / "a.mp3", TagV2(major, frame) + std::string(500, 'a'));
        component->LoadFile(folder / "a.mp3");
        EXPECT_TRUE(component->HasV2Tag());
        return component->TagField(index);
    }

    // The comment in these bytes of a frame after the encoding and the language.
    std::string CommentOf(std::initializer_list<int> contents) {
        return FieldOf(TagComponent::Comment, 3, FrameV2(3, "COMM", Bytes({1}) + "deu" + Bytes(contents)));
    }

    TemporaryFolder folder;
    std::unique_ptr<TagComponent> component = CreateTagLibComponent(RealFiles());
    const std::string group = "\x85";
};

TEST_F(Id3v2TextsTest, AnEmptyFirstValueIsTheValue) {
    EXPECT_EQ(TitleOf(4, TextFrame(4, "TIT2", std::string("\0Zwei", 5), 3)), "");
    EXPECT_EQ(TitleOf(3, TextFrame(3, "TIT2", std::string("\0Zwei", 5))), "");
    const std::string second = Bytes({0xFF, 0xFE, 'Z', 0});
    EXPECT_EQ(TitleOf(3, FrameV2(3, "TIT2", Bytes({1, 0xFF, 0xFE, 0, 0}) + second)), "");
    EXPECT_EQ(TitleOf(3, FrameV2(3, "TIT2", Bytes({1, 0, 0}) + second)), "");
    EXPECT_EQ(TitleOf(4, FrameV2(4, "TIT2", Bytes({2, 0, 0, 0, 'Z'}))), "");
    EXPECT_EQ(TitleOf(3, TextFrame(3, "TIT2", "") + TextFrame(3, "TIT2", "Zwei")), "")
        << "an empty first frame";
}

TEST_F(Id3v2TextsTest, TheByteOfAFramesGroupIsNoPartOfItsText) {
    EXPECT_EQ(TitleOf(3, FrameV2(3, "TIT2", group + '\0' + "Titel", 0x0020)), "Titel");
    EXPECT_EQ(TitleOf(3, FrameV2(3, "TIT2", group + Bytes({1, 0xFF, 0xFE, 0xFC, 0}), 0x0020)), "ü");
    EXPECT_EQ(TitleOf(4, FrameV2(4, "TIT2", group + '\3' + "Lied für", 0x0040)), "Lied für");
    EXPECT_EQ(TitleOf(3, FrameV2(3, "TIT2", group, 0x0020)), "");
    EXPECT_EQ(FieldOf(TagComponent::Comment, 3,
                      FrameV2(3, "COMM", group + '\0' + "deukurz" + '\0' + "lang", 0x0020)),
              "lang");
}

TEST_F(Id3v2TextsTest, TheBytesOfAFramesFlagsComeInTheOrderOfItsVersion) {
    const std::string text = '\0' + std::string("Titel");
    EXPECT_EQ(TitleOf(3, FrameV2(3, "TIT2", Big(text.size(), 4) + Stored(text), 0x0080)), "Titel");
    EXPECT_EQ(TitleOf(3, FrameV2(3, "TIT2", Big(text.size(), 4) + group + Stored(text), 0x00A0)), "Titel")
        << "size, then group";
    const std::string length = SyncSafe(text.size());
    EXPECT_EQ(TitleOf(4, FrameV2(4, "TIT2", length + text, 0x0001)), "Titel");
    EXPECT_EQ(TitleOf(4, FrameV2(4, "TIT2", group + length + text, 0x0041)), "Titel") << "group, then size";
    EXPECT_EQ(TitleOf(4, FrameV2(4, "TIT2", group + length + Stored(text), 0x0049)), "Titel");
    const std::string unsynchronised = Bytes({1, 0xFF, 0, 0xFE, 'a', 0});
    EXPECT_EQ(TitleOf(4, FrameV2(4, "TIT2", unsynchronised, 0x0002)), "a");
    EXPECT_EQ(TitleOf(4, FrameV2(4, "TIT2", group + unsynchronised, 0x0042)), "a");
}

TEST_F(Id3v2TextsTest, AnEncryptedFrameIsEmpty) {
    EXPECT_EQ(TitleOf(3, FrameV2(3, "TIT2", std::string("\x81\0Titel", 7), 0x0040)), "");
    EXPECT_EQ(TitleOf(4, FrameV2(4, "TIT2", std::string("\x81\0Titel", 7), 0x0004)), "");
}

TEST_F(Id3v2TextsTest, Utf16WithoutAMarkIsReadInTheOrderThatMakesLettersOfIt) {
    EXPECT_EQ(TitleOf(3, FrameV2(3, "TIT2", Bytes({1, 0, 'L', 0, 'i', 0, 'e', 0, 'd'}))), "Lied");
    EXPECT_EQ(TitleOf(3, FrameV2(3, "TIT2", Bytes({1, 'L', 0, 'i', 0, 'e', 0, 'd', 0}))), "Lied");
    EXPECT_EQ(TitleOf(3, FrameV2(3, "TIT2", Bytes({1, 0x65, 0xE5, 0x67, 0x2C}))), "日本")
        << "the big end first where nothing tells";
    EXPECT_EQ(TitleOf(3, FrameV2(3, "TIT2", Bytes({1, 0, 'L', 0x26, 0x00, 0, 'd'}))), "L\u2600d")
        << "most of them tell";
}

TEST_F(Id3v2TextsTest, AMarkInEncoding2IsNoPartOfTheText) {
    EXPECT_EQ(TitleOf(4, FrameV2(4, "TIT2", Bytes({2, 0xFE, 0xFF, 0, 0xFC}))), "ü");
    EXPECT_EQ(TitleOf(4, FrameV2(4, "TIT2", Bytes({2, 0xFF, 0xFE, 0xFC, 0}))), "ü") << "as the mark says";
    EXPECT_EQ(TitleOf(4, FrameV2(4, "TIT2", Bytes({2, 'L', 0}))), "\u4C00")
        << "without one, as the encoding says";
}

TEST_F(Id3v2TextsTest, ACommentsTextHasTheByteOrderOfItsDescription) {
    EXPECT_EQ(CommentOf({0xFF, 0xFE, 0, 0, 0xFF, 0xFE, 0xFC, 0}), "ü");
    EXPECT_EQ(CommentOf({0xFF, 0xFE, 0, 0, 0xE5, 0x65}), "日");
    EXPECT_EQ(CommentOf({0xFE, 0xFF, 0, 0, 0x65, 0xE5}), "日");
    EXPECT_EQ(CommentOf({0, 0, 0, 0xFC, 0, 0}), "ü");
    EXPECT_EQ(CommentOf({0xFF, 0xFE, 0xFC, 0}), "") << "nothing ends the description";
    EXPECT_EQ(CommentOf({}), "");
}

TEST_F(Id3v2TextsTest, AnEncodingThatNoVersionKnowsGivesNoText) {
    for (const int encoding : {4, 5, 72, 255}) {
        EXPECT_EQ(TitleOf(3, FrameV2(3, "TIT2", Bytes({encoding}) + "ello")), "") << encoding;
    }
}

} // namespace quavernet::test
