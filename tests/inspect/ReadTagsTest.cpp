#include "inspect/InspectTest.h"

#include "inspect/Id3v1.h"
#include "platform/RuntimeError.h"
#include "support/OrdinaryUser.h"

#include <filesystem>
#include <utility>
#include <vector>

#include <sys/stat.h>

namespace quavernet::test {

class ReadTagsTest : public InspectTest {
protected:
    // Flags of the file before, so that a test sees whether they are touched.
    void SetFlags(bool v1, bool v2) {
        file.HasTagV1 = v1;
        file.HasTagV2 = v2;
    }
    const Id3v1Tag& ReadTagsOf(const std::string& name, std::string_view contents) {
        const std::string path = File(name, contents);
        file.CurrentFileName = name;
        ReadTags(path, file);
        return file.Id3v1Tag;
    }
};

const std::string Audio(1000, 'a');

TEST_F(ReadTagsTest, Version1FieldsKeepTheirFullWidth) {
    const Id3v1Tag& tag =
        ReadTagsOf("a.mp3", Audio + TagV1("Titel  ", "K\xFCnstler", "Album", "1999", "Bemerkung", 17));
    EXPECT_EQ(tag.TagTitle, "Titel  " + std::string(23, '\0'));
    EXPECT_EQ(tag.TagArtist, "Künstler" + std::string(22, '\0'));
    EXPECT_EQ(tag.TagAlbum, "Album" + std::string(25, '\0'));
    EXPECT_EQ(tag.TagYear, "1999");
    EXPECT_EQ(tag.TagComment, "Bemerkung" + std::string(21, '\0'));
    EXPECT_EQ(tag.TagGenre, 17);
    EXPECT_TRUE(file.HasTagV1);
    EXPECT_FALSE(file.HasTagV2);
    EXPECT_FALSE(file.HasNoTag);
}

TEST_F(ReadTagsTest, Version1TextsAreWindows1252) {
    EXPECT_EQ(ReadTagsOf("a.mp3", Audio + TagV1("\x80\x93\xDF\x94\xFF", "x")).TagTitle.substr(0, 13),
              "€“ß”ÿ");
}

TEST_F(ReadTagsTest, ACommentThatEndsInANulAndATrackNumberKeepsIt) {
    const std::string comment = std::string(28, 'c') + '\0' + '\7';
    EXPECT_EQ(ReadTagsOf("a.mp3", Audio + TagV1("t", "a", "", "", comment)).TagComment, comment);
}

TEST_F(ReadTagsTest, TheMarkIsComparedInBinary) {
    EXPECT_EQ(ReadTagsOf("x.mp3", Audio + Put(TagV1("t", "a"), 0, "tag")).TagTitle, "x");
    EXPECT_FALSE(file.HasTagV1);
}

TEST_F(ReadTagsTest, AFileThatIsOnlyATagIsRead) {
    EXPECT_EQ(ReadTagsOf("x.mp3", TagV1("t", "a")).TagTitle[0], 't');
}

TEST_F(ReadTagsTest, AFileWithoutATagIsNamedAfterItsNameAndLeavesTheFlags) {
    for (const bool v1 : {false, true}) {
        SetFlags(v1, !v1);
        const Id3v1Tag& tag = ReadTagsOf("Künstler - Lied.mp3", Audio);
        EXPECT_EQ(tag.TagArtist, "Künstler");
        EXPECT_EQ(tag.TagTitle, "Lied");
        EXPECT_EQ(file.HasTagV1, v1);
        EXPECT_EQ(file.HasTagV2, !v1);
        EXPECT_FALSE(file.HasNoTag);
    }
}

TEST_F(ReadTagsTest, FilesOfUnder128BytesAreNamedAfterTheirName) {
    for (const std::size_t size : {0u, 1u, 127u}) {
        EXPECT_EQ(ReadTagsOf("a - b.mp3", TagV1("t", "a").substr(0, size)).TagTitle, "b") << size;
    }
}

TEST_F(ReadTagsTest, AFileThatCanNotBeOpenedLeavesTheTagAlone) {
    file.CurrentFileName = "a - b.mp3";
    SetFlags(true, false);
    ReadTags(folder / "missing.mp3", file);
    EXPECT_EQ(file.Id3v1Tag.TagTitle, "");
    ReadTags(folder.Path(), file);
    EXPECT_EQ(file.Id3v1Tag.TagTitle, "");
    EXPECT_TRUE(file.HasTagV1);
}

TEST_F(ReadTagsTest, Version2WinsOverVersion1AndGivesTitleAndPerformerAlone) {
    const std::string frames = TextFrame(3, "TIT2", "T\xEAtel") + TextFrame(3, "TPE1", "Zwei") +
                               TextFrame(3, "TALB", "Album 2") + TextFrame(3, "TCON", "(17)");
    file.Id3v1Tag.TagAlbum = "before";
    const Id3v1Tag& tag =
        ReadTagsOf("a.mp3", TagV2(3, frames) + Audio + TagV1("Eins", "Eins", "Album 1", "", "", 9));
    EXPECT_EQ(tag.TagTitle, "Têtel");
    EXPECT_EQ(tag.TagArtist, "Zwei");
    EXPECT_EQ(tag.TagAlbum, "before") << "not set by a version 2 tag";
    EXPECT_EQ(tag.TagGenre, 255);
    EXPECT_TRUE(file.HasTagV2);
    EXPECT_FALSE(file.HasTagV1);
}

TEST_F(ReadTagsTest, Version2TextsAreCutAt30Characters) {
    const std::string frames =
        TextFrame(4, "TIT2", std::string(29, 'x') + "äöü", 3) + TextFrame(4, "TPE1", std::string(40, 'y'), 3);
    const Id3v1Tag& tag = ReadTagsOf("a.mp3", TagV2(4, frames) + Audio);
    EXPECT_EQ(tag.TagTitle, std::string(29, 'x') + "ä") << "characters, not bytes";
    EXPECT_EQ(tag.TagArtist, std::string(30, 'y'));
}

TEST_F(ReadTagsTest, AnEmptyVersion2TagCountsAndIsNotReplacedByVersion1) {
    file.Id3v1Tag.TagTitle = "before";
    const Id3v1Tag& tag = ReadTagsOf("n - m.mp3", TagV2(3, "") + Audio + TagV1("Eins", "Eins"));
    EXPECT_EQ(tag.TagTitle, "");
    EXPECT_EQ(tag.TagArtist, "");
    EXPECT_TRUE(file.HasTagV2);
}

TEST_F(ReadTagsTest, ABrokenVersion2HeaderIsNone) {
    for (const std::string& header :
         {Bytes({'I', 'D', '3', 5, 0, 0, 0, 0, 0, 10}), Bytes({'I', 'D', '3', 1, 0, 0, 0, 0, 0, 10}),
          Bytes({'I', 'D', '3', 3, 0, 0, 0x80, 0, 0, 10}), std::string("ID3")}) {
        EXPECT_EQ(ReadTagsOf("n - m.mp3", header + Audio + TagV1("Eins", "Zwei")).TagTitle[0], 'E');
        EXPECT_TRUE(file.HasTagV1);
    }
}

/// Records what the component is asked for, and fails where it is told to.
class RecordingTagComponent : public TagComponent {
public:
    static RecordingTagComponent& Install() {
        auto owned = std::make_unique<RecordingTagComponent>();
        RecordingTagComponent& component = *owned;
        mainModule.TagComponent = std::move(owned);
        return component;
    }

    void LoadFile(const std::string& path) override {
        loaded.emplace_back(path, 0);
        FailIf(failLoad);
    }
    void LoadHead(const std::string& path, std::span<const std::byte> head) override {
        loaded.emplace_back(path, head.size());
        FailIf(failLoad);
    }
    bool HasV2Tag() const override {
        FailIf(failQuestion);
        return hasTag;
    }
    std::string TagField(int index) const override {
        FailIf(index == failField);
        return "field " + std::to_string(index);
    }
    void SetTagField(int, const std::string&) override {}
    void SaveFile(const std::string&) override {}

    std::vector<std::pair<std::string, std::size_t>> loaded; ///< Paths, and how much was known of the file.
    bool hasTag = false;
    bool failLoad = false;
    bool failQuestion = false;
    int failField = -1;

private:
    static void FailIf(bool failing) {
        if (failing) {
            throw RuntimeError(ErrorNumber::DeviceInputOutput, "the component is gone");
        }
    }
};

TEST_F(ReadTagsTest, AnEmptyPathAndTheLiteralPatternEndAtOnce) {
    const RecordingTagComponent& component = RecordingTagComponent::Install();
    file.Id3v1Tag.TagTitle = "before";
    ReadTags("", file);
    ReadTags("*.mp3", file);
    EXPECT_TRUE(component.loaded.empty());
    EXPECT_EQ(file.Id3v1Tag.TagTitle, "before");
    ReadTags("*.wav", file);
    EXPECT_EQ(component.loaded.size(), 1u) << "no other pattern is known";
}

TEST_F(ReadTagsTest, AComponentThatFailsIsPassedOver) {
    RecordingTagComponent& component = RecordingTagComponent::Install();
    component.hasTag = true;
    component.failLoad = true;
    EXPECT_EQ(ReadTagsOf("a.mp3", "ID3" + Audio).TagTitle, "field 2") << "the question is asked all the same";

    component.failQuestion = true;
    EXPECT_EQ(ReadTagsOf("b.mp3", Audio + TagV1("Eins", "Wer")).TagTitle[0], 'E');
    EXPECT_TRUE(file.HasTagV1);
}

TEST_F(ReadTagsTest, AFieldThatFailsLeavesBlankWhatIsNotYetRead) {
    RecordingTagComponent& component = RecordingTagComponent::Install();
    component.hasTag = true;
    file.Id3v1Tag.TagTitle = file.Id3v1Tag.TagArtist = "before";
    component.failField = TagComponent::Performer;
    EXPECT_EQ(ReadTagsOf("a.mp3", "ID3" + Audio).TagTitle, "field 2");
    EXPECT_EQ(file.Id3v1Tag.TagArtist, "");
    EXPECT_TRUE(file.HasTagV2);
}

TEST_F(ReadTagsTest, TheComponentGetsEachFileWithTheBeginningThatWasReadOfIt) {
    const RecordingTagComponent& component = RecordingTagComponent::Install();
    ReadTagsOf("a.mp3", Audio);
    ReadTagsOf("b.mp3", "ID3" + std::string(6000, 'a'));
    ReadTags(folder / "missing.mp3", file);
    using Loads = std::vector<std::pair<std::string, std::size_t>>;
    EXPECT_EQ(
        component.loaded,
        (Loads{{folder / "a.mp3", Audio.size()}, {folder / "b.mp3", 5120}, {folder / "missing.mp3", 0}}));
}

TEST_F(ReadTagsTest, AFileThatCouldNotBeReadKeepsItsTagHoweverItsFieldsAreSet) {
    const std::string contents =
        TagV2(3, TextFrame(3, "TIT2", "Titel") + TextFrame(3, "TALB", "Album"), 50) + Audio;
    WriteFile(folder / "a.mp3", contents);
    ::chmod(folder.Path().c_str(), 0777);
    ::chmod((folder / "a.mp3").c_str(), 0);
    {
        const OrdinaryUser user;
        ReadTags(folder / "a.mp3", file);
    }
    ::chmod((folder / "a.mp3").c_str(), 0644);
    for (const int index : {2, 3, 4, 5, 6, 7, 12}) { // As shown, with a new title.
        mainModule.TagComponent->SetTagField(index,
                                             index == 2 ? "Neu" : mainModule.TagComponent->TagField(index));
    }
    EXPECT_THROW(mainModule.TagComponent->SaveFile(folder / "a.mp3"), RuntimeError);
    EXPECT_EQ(ReadFile(folder / "a.mp3"), contents);
}

TEST_F(ReadTagsTest, TheComponentForgetsTheTagOfTheFileBefore) {
    ReadTagsOf("a.mp3", TagV2(3, TextFrame(3, "TALB", "Album")) + Audio);
    EXPECT_EQ(mainModule.TagComponent->TagField(TagComponent::Album), "Album");
    ReadTagsOf("b.mp3", Audio);
    EXPECT_EQ(mainModule.TagComponent->TagField(TagComponent::Album), "");
    EXPECT_FALSE(mainModule.TagComponent->HasV2Tag());
}

TEST_F(ReadTagsTest, SetTagKindKnowsThreeKindsAndLeavesTheFlagsOtherwise) {
    SetTagKind(1, file);
    EXPECT_TRUE(file.HasTagV1 && !file.HasTagV2 && !file.HasNoTag);
    SetTagKind(2, file);
    EXPECT_TRUE(!file.HasTagV1 && file.HasTagV2 && !file.HasNoTag);
    SetTagKind(3, file);
    EXPECT_TRUE(!file.HasTagV1 && !file.HasTagV2 && file.HasNoTag);
    for (const int kind : {4, 0, -1, 5}) {
        SetTagKind(kind, file);
        EXPECT_TRUE(!file.HasTagV1 && !file.HasTagV2 && file.HasNoTag) << kind;
    }
}

TEST(TagTextTest, CleanGenreTextLeavesOutTheParentheses) {
    EXPECT_EQ(CleanGenreText("(17)Rock"), "17Rock");
    EXPECT_EQ(CleanGenreText("a(b)(c"), "abc");
    EXPECT_EQ(CleanGenreText("()"), "");
    EXPECT_EQ(CleanGenreText("Blues"), "Blues");
}

TEST(TagTextTest, RemoveNullsTakesThemFromEverywhere) {
    EXPECT_EQ(RemoveNulls(std::string("\0a\0 b\0\0", 7)), "a b");
    EXPECT_EQ(RemoveNulls(""), "");
    EXPECT_EQ(RemoveNulls(std::string(3, '\0')), "");
}

TEST(Id3v1Test, WhatIsBuiltIsReadBack) {
    Id3v1Tag tag;
    tag.TagTitle = "Ein Lied";
    tag.TagArtist = std::string(31, 'x');
    tag.TagAlbum = "Größe";
    tag.TagYear = "12345";
    tag.TagComment = "日本€";
    tag.TagGenre = 254;
    const Id3v1Record record = BuildId3v1(tag);
    const Id3v1Tag read = ParseId3v1(record);
    EXPECT_EQ(read.TagTitle, "Ein Lied" + std::string(22, ' ')) << "filled with blanks";
    EXPECT_EQ(read.TagArtist, std::string(30, 'x')) << "cut";
    EXPECT_EQ(read.TagAlbum, "Größe" + std::string(25, ' ')) << "widths are in characters";
    EXPECT_EQ(read.TagYear, "1234");
    EXPECT_EQ(read.TagComment, "??€" + std::string(27, ' '));
    EXPECT_EQ(read.TagGenre, 254);
}

} // namespace quavernet::test
