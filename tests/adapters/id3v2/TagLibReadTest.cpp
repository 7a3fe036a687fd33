#include "adapters/id3v2/TagLibComponent.h"

#include "adapters/id3v2/Id3v2Frames.h"
#include "adapters/id3v2/Id3v2Layout.h"
#include "support/RealFiles.h"
#include "support/TagBytes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <span>

#include <sys/stat.h>

namespace quavernet::test {

class TagLibReadTest : public ::testing::Test {
protected:
    using T = TagComponent;

    bool Load(std::string_view contents) {
        WriteFile(folder / "a.mp3", contents);
        component->LoadFile(folder / "a.mp3");
        return component->HasV2Tag();
    }

    std::string Field(int index) { return component->TagField(index); }

    // The title in a tag of these frames.
    std::string TitleOf(int major, const std::string& frames, int flags = 0) {
        EXPECT_TRUE(Load(TagV2(major, frames, 0, flags) + Audio));
        return Field(T::Title);
    }

    const std::string Audio = std::string(500, 'a');
    TemporaryFolder folder;
    std::unique_ptr<TagComponent> component = CreateTagLibComponent(RealFiles());
};

TEST_F(TagLibReadTest, ReadsTheSevenFieldsOfVersion3) {
    ASSERT_TRUE(Load(TagV2(3, TextFrame(3, "TIT2", "Titel") + TextFrame(3, "TPE1", "Wer") +
                                  TextFrame(3, "TALB", "Album") + TextFrame(3, "TYER", "1999") +
                                  TextFrame(3, "TCON", "(17)Rock") + CommentFrame(3, "deu", "", "Bemerkung") +
                                  TextFrame(3, "TPUB", "Verlag")) +
                     Audio));
    EXPECT_EQ(Field(T::Title), "Titel");
    EXPECT_EQ(Field(T::Performer), "Wer");
    EXPECT_EQ(Field(T::Album), "Album");
    EXPECT_EQ(Field(T::Year), "1999");
    EXPECT_EQ(Field(T::Genre), "(17)Rock") << "as it is";
    EXPECT_EQ(Field(T::Comment), "Bemerkung");
    EXPECT_EQ(Field(T::Publisher), "Verlag");
    EXPECT_EQ(Field(0), "");
    EXPECT_EQ(Field(99), "");
}

TEST_F(TagLibReadTest, AFrameThatIsReadTheShortWayReadsAsOnTheLongOne) {
    std::mt19937 chance(7);
    const auto below = [&chance](unsigned limit) { return static_cast<unsigned>(chance() % limit); };
    static constexpr const char* pieces[] = {"a",    "Lied", "ä",    "\xE4", "\x80", "\x81",
                                             "😀",    "日",   " ",    "\xFF", "\xFE", "\xEF\xBB\xBF",
                                             "\xC3", "\n",   "(17)", "/"};
    std::size_t plain = 0;
    for (int round = 0; round < 20000; ++round) {
        const unsigned encoding = below(5);
        std::string contents(1, static_cast<char>(encoding));
        if (encoding == 1 && below(8) != 0) {
            contents += "\xFF\xFE";
        }
        for (unsigned count = below(7); count > 0; --count) {
            if (below(8) == 0) {
                contents += '\0';
            } else if (encoding == 1 && below(4) != 0) {
                contents += static_cast<char>(below(256));
                contents += static_cast<char>(below(6) == 0 ? below(256) : below(4));
            } else {
                contents += pieces[below(std::size(pieces))];
            }
        }
        const int major = 2 + static_cast<int>(below(3));
        std::string frame = major == 2 ? "TT2" : "TIT2";
        const auto size = static_cast<char>(contents.size());
        frame += major == 2 ? std::string{0, 0, size} : std::string{0, 0, 0, size, 0, 0};
        frame += contents;
        const id3v2::ByteView bytes = std::as_bytes(std::span(frame));
        const id3v2::TagHeader header{static_cast<unsigned char>(major), 0, 0, 1000};
        if (const auto text = id3v2::DecodePlainText(header, bytes)) {
            ++plain;
            EXPECT_EQ(*text, id3v2::DecodeAnyFrame(header, id3v2::Field::Title, bytes).text)
                << testing::PrintToString(frame);
        }
    }
    EXPECT_GT(plain, 5000u);
}

TEST_F(TagLibReadTest, ATagInsideTheHeadReadsWithoutItsFileAndALongerOneWithIt) {
    const std::string frames = TextFrame(3, "TIT2", "Titel") + TextFrame(3, "TPE1", "Wer");
    for (const std::string& tag :
         {TagV2(3, frames), TagV2(4, TextFrame(4, "TIT2", "Titel", 3) + TextFrame(4, "TPE1", "Wer", 3)),
          TagV2(3, TextFrame(3, "TXXX", std::string(3000, 'x')) + frames)}) {
        const std::string contents = tag + Audio;
        WriteFile(folder / "long.mp3", contents);
        for (const std::size_t size : {contents.size(), tag.size(), tag.size() - 1, std::size_t{10}}) {
            const auto head = std::as_bytes(std::span(contents)).first(size);
            component->LoadHead(folder / "missing.mp3", head);
            EXPECT_EQ(component->HasV2Tag(), size >= tag.size());
            EXPECT_EQ(Field(T::Title), size >= tag.size() ? "Titel" : "");
            component->LoadHead(folder / "long.mp3", head);
            EXPECT_TRUE(component->HasV2Tag());
            EXPECT_EQ(Field(T::Title), "Titel");
            EXPECT_EQ(Field(T::Performer), "Wer");
        }
    }
    component->LoadHead(folder / "missing.mp3", {});
    EXPECT_FALSE(component->HasV2Tag());
    EXPECT_EQ(Field(T::Title), "");
}

TEST_F(TagLibReadTest, ReadsTheSevenFieldsOfVersion4) {
    ASSERT_TRUE(Load(TagV2(4, TextFrame(4, "TIT2", "Lied für 日本 😀", 3) + TextFrame(4, "TPE1", "Wer", 3) +
                                  TextFrame(4, "TALB", "Album", 3) + TextFrame(4, "TDRC", "1999-12-31", 3) +
                                  TextFrame(4, "TCON", "17", 3) + CommentFrame(4, "deu", "", "Bemerkung") +
                                  TextFrame(4, "TPUB", "Verlag", 3)) +
                     Audio));
    EXPECT_EQ(Field(T::Title), "Lied für 日本 😀");
    EXPECT_EQ(Field(T::Performer), "Wer");
    EXPECT_EQ(Field(T::Album), "Album");
    EXPECT_EQ(Field(T::Year), "1999-12-31");
    EXPECT_EQ(Field(T::Genre), "17");
    EXPECT_EQ(Field(T::Comment), "Bemerkung");
    EXPECT_EQ(Field(T::Publisher), "Verlag");
}

TEST_F(TagLibReadTest, ReadsTheSevenFieldsOfVersion2) {
    ASSERT_TRUE(Load(TagV2(2, TextFrame(2, "TT2", "Titel") + TextFrame(2, "TP1", "Wer") +
                                  TextFrame(2, "TAL", "Album") + TextFrame(2, "TYE", "1999") +
                                  TextFrame(2, "TCO", "(17)") + CommentFrame(2, "deu", "", "Bemerkung") +
                                  TextFrame(2, "TPB", "Verlag")) +
                     Audio));
    EXPECT_EQ(Field(T::Title), "Titel");
    EXPECT_EQ(Field(T::Performer), "Wer");
    EXPECT_EQ(Field(T::Album), "Album");
    EXPECT_EQ(Field(T::Year), "1999");
    EXPECT_EQ(Field(T::Genre), "(17)");
    EXPECT_EQ(Field(T::Comment), "Bemerkung");
    EXPECT_EQ(Field(T::Publisher), "Verlag");
}

TEST_F(TagLibReadTest, ReadsAllEncodings) {
    EXPECT_EQ(TitleOf(3, TextFrame(3, "TIT2", "\x80 \xFC")), "€ ü") << "encoding 0 is Windows-1252";
    EXPECT_EQ(TitleOf(3, FrameV2(3, "TIT2", Bytes({1, 0xFF, 0xFE, 0xFC, 0x00}))), "ü");
    EXPECT_EQ(TitleOf(3, FrameV2(3, "TIT2", Bytes({1, 0xFE, 0xFF, 0x00, 0xFC}))), "ü");
    EXPECT_EQ(TitleOf(3, FrameV2(3, "TIT2", Bytes({1, 0xFF, 0xFE, 0x3D, 0xD8, 0x00, 0xDE}))), "😀");
    EXPECT_EQ(TitleOf(4, FrameV2(4, "TIT2", Bytes({2, 0x00, 0xFC}))), "ü");
    EXPECT_EQ(TitleOf(4, TextFrame(4, "TIT2", "ü", 3)), "ü");
    EXPECT_EQ(TitleOf(2, FrameV2(2, "TT2", Bytes({1, 0xFF, 0xFE, 0xFC, 0x00}))), "ü");
}

TEST_F(TagLibReadTest, ACommentInEncodingZeroIsWindows1252Too) {
    Load(TagV2(3, CommentFrame(3, "deu", "", "\x84Zitat\x93")) + Audio);
    EXPECT_EQ(Field(T::Comment), "„Zitat“");
}

TEST_F(TagLibReadTest, TheFirstFrameAndItsFirstValueCount) {
    EXPECT_EQ(TitleOf(3, TextFrame(3, "TIT2", "Eins") + TextFrame(3, "TIT2", "Zwei")), "Eins");
    EXPECT_EQ(TitleOf(4, TextFrame(4, "TIT2", std::string("Eins\0Zwei", 9), 3)), "Eins");
    Load(TagV2(3, CommentFrame(3, "eng", "x", "Erste") + CommentFrame(3, "deu", "", "Zweite")) + Audio);
    EXPECT_EQ(Field(T::Comment), "Erste");
}

TEST_F(TagLibReadTest, AYearIsNotPutTogetherWithADay) {
    Load(
        TagV2(3, TextFrame(3, "TYER", "1999") + TextFrame(3, "TDAT", "3112") + TextFrame(3, "TIME", "2359")) +
        Audio);
    EXPECT_EQ(Field(T::Year), "1999");
}

TEST_F(TagLibReadTest, OtherFramesArePassedOverHoweverLarge) {
    EXPECT_EQ(TitleOf(3, FrameV2(3, "APIC", std::string(300000, 'x')) + TextFrame(3, "TIT2", "Titel")),
              "Titel");
}

TEST_F(TagLibReadTest, ATagSpansManyWindows) {
    std::string frames;
    for (int i = 0; i < 2000; ++i) {
        frames += TextFrame(3, "TXXX", std::string(static_cast<std::size_t>(i % 50) + 1, 'x'));
    }
    EXPECT_EQ(TitleOf(3, frames + TextFrame(3, "TIT2", "Titel")), "Titel");
}

TEST_F(TagLibReadTest, ATextOfMoreThanAMegabyteIsPassedOver) {
    const std::string longest((1 << 20) - 11, 'x'); // With its header and its encoding a frame of a megabyte.
    EXPECT_EQ(TitleOf(3, TextFrame(3, "TIT2", longest)), longest);
    EXPECT_EQ(TitleOf(3, TextFrame(3, "TIT2", longest + "x")), "");
}

TEST_F(TagLibReadTest, NoMoreThan65536FramesAreLookedAt) {
    std::string frames;
    for (int i = 0; i < 65535; ++i) {
        frames += TextFrame(2, "TXX", "");
    }
    EXPECT_EQ(TitleOf(2, frames + TextFrame(2, "TT2", "Titel")), "Titel");
    EXPECT_EQ(TitleOf(2, frames + TextFrame(2, "TXX", "") + TextFrame(2, "TT2", "Titel")), "");
}

TEST_F(TagLibReadTest, AnEmptyTagCounts) {
    for (int major = 2; major <= 4; ++major) {
        EXPECT_TRUE(Load(TagV2(major, "") + Audio)) << major;
        EXPECT_TRUE(Load(TagV2(major, "", 500))) << major;
        EXPECT_EQ(Field(T::Title), "");
    }
}

TEST_F(TagLibReadTest, WhatIsNoTagIsNone) {
    EXPECT_FALSE(Load(""));
    EXPECT_FALSE(Load("ID3"));
    EXPECT_FALSE(Load(TagV2(3, "").substr(0, 9)));
    EXPECT_FALSE(Load("id3" + TagV2(3, "").substr(3)));
    EXPECT_FALSE(Load(TagV2(1, "") + Audio));
    EXPECT_FALSE(Load(TagV2(5, "") + Audio));
    for (std::size_t i = 6; i < 10; ++i) {
        EXPECT_FALSE(Load(Put(TagV2(3, ""), i, "\x80") + Audio)) << i;
    }
    EXPECT_FALSE(Load("x" + TagV2(3, TextFrame(3, "TIT2", "Titel")))) << "only at the file's beginning";
}

TEST_F(TagLibReadTest, AFileThatCanNotBeReadEmptiesTheFields) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const std::string& path : {folder / "missing", folder.Path(), folder / "pipe", std::string()}) {
        Load(TagV2(3, TextFrame(3, "TIT2", "Titel")) + Audio);
        component->LoadFile(path);
        EXPECT_FALSE(component->HasV2Tag()) << path;
        EXPECT_EQ(Field(T::Title), "") << path;
    }
}

TEST_F(TagLibReadTest, ReadsUnsynchronisedTags) {
    // 0xFF 0x00 stands for 0xFF in the whole body of version 2.3: the BOM of the title becomes FF 00 FE.
    EXPECT_EQ(TitleOf(3, "TIT2" + Big(5, 4) + Bytes({0, 0, 1, 0xFF, 0x00, 0xFE, 0xFC, 0x00}), 0x80), "ü");
    EXPECT_EQ(TitleOf(2, "TT2" + Big(5, 3) + Bytes({1, 0xFF, 0x00, 0xFE, 0xFC, 0x00}), 0x80), "ü");
    EXPECT_EQ(TitleOf(4, FrameV2(4, "TIT2", Bytes({1, 0xFF, 0x00, 0xFE, 0xFC, 0x00}), 0x0002), 0x80), "ü");
}

TEST_F(TagLibReadTest, AnExtendedHeaderIsPassedOver) {
    EXPECT_EQ(TitleOf(3, Big(6, 4) + std::string(6, '\0') + TextFrame(3, "TIT2", "Titel"), 0x40), "Titel");
    EXPECT_EQ(TitleOf(4, SyncSafe(6) + Bytes({1, 0}) + TextFrame(4, "TIT2", "Titel"), 0x40), "Titel");
}

TEST_F(TagLibReadTest, PlainFrameSizesInVersion4AreUnderstood) {
    const std::string text(200, 'x');
    const std::string frame = "TIT2" + Big(201, 4) + Bytes({0, 0, 0}) + text;
    EXPECT_EQ(TitleOf(4, frame + TextFrame(4, "TPE1", "Wer")), text);
    EXPECT_EQ(Field(T::Performer), "Wer");
    EXPECT_EQ(TitleOf(4, TextFrame(4, "TIT2", text) + TextFrame(4, "TPE1", "Wer")), text)
        << "and the right ones";
}

TEST_F(TagLibReadTest, HostileTagsGiveEmptyFields) {
    const std::pair<const char*, std::string> hostile[] = {
        {"declared larger than the file", Put(TagV2(3, ""), 6, Bytes({0x7F, 0x7F, 0x7F, 0x7F}))},
        {"frame larger than the tag", TagV2(3, "TIT2" + Big(0xFFFFFFFF, 4) + std::string(10, 'x'))},
        {"frame header cut off", TagV2(3, "TIT2" + Big(5, 4))},
        {"frame of no bytes", TagV2(3, FrameV2(3, "TIT2", ""))},
        {"encoding alone", TagV2(3, FrameV2(3, "TIT2", Bytes({1})))},
        {"unknown encoding", TagV2(3, FrameV2(3, "TIT2", Bytes({9, 65})))},
        {"half a UTF-16 unit", TagV2(3, FrameV2(3, "TIT2", Bytes({1, 0xFF})))},
        {"comment cut off", TagV2(3, FrameV2(3, "COMM", Bytes({1, 'd', 'e'})))},
        {"compressed rubbish", TagV2(3, FrameV2(3, "TIT2", Big(0xFFFFFFFF, 4) + "rubbish", 0x0080))},
        {"encrypted", TagV2(3, FrameV2(3, "TIT2", "\1secret", 0x0040))},
        {"compressed version 2", TagV2(2, TextFrame(2, "TT2", "Titel"), 0, 0x40)},
        {"no frame id", TagV2(3, "????" + TextFrame(3, "TIT2", "Titel"))},
        {"extended header larger than the tag",
         TagV2(3, Big(0xFFFFFFFF, 4) + TextFrame(3, "TIT2", "T"), 0, 0x40)},
    };
    for (const auto& [what, contents] : hostile) {
        SCOPED_TRACE(what);
        EXPECT_TRUE(Load(contents));
        EXPECT_EQ(Field(T::Comment), "");
        if (std::string_view(what) != "unknown encoding") {
            EXPECT_EQ(Field(T::Title), "");
        }
    }
}

TEST(Id3v2LayoutTest, ABodyThatIsCutWhileItIsReadEndsItsFrames) {
    // Tells its old size and gives what is left.
    class CutBody : public id3v2::TagBody {
    public:
        CutBody(std::string_view held, std::size_t size)
            : m_held(AsBytes(held).begin(), AsBytes(held).end()), m_size(size) {}
        std::size_t Size() const override { return m_size; }
        id3v2::ByteView View(std::size_t offset, std::size_t count) override {
            return id3v2::MemoryBody(m_held).View(offset, count);
        }

    private:
        id3v2::Bytes m_held;
        std::size_t m_size;
    };
    for (const int major : {2, 3, 4}) {
        const std::string first = TextFrame(major, major == 2 ? "TT2" : "TIT2", "Titel");
        const std::string body = first + TextFrame(major, major == 2 ? "TP1" : "TPE1", "Interpret");
        const auto header = id3v2::ParseTagHeader(AsBytes(TagV2(major, body)));
        ASSERT_TRUE(header);
        for (std::size_t held = 0; held < first.size() + 4; ++held) {
            CutBody cut(std::string_view(body).substr(0, held), body.size());
            const auto list = id3v2::ListFrames(*header, cut);
            EXPECT_LE(list.frames.size(), 2u);
            EXPECT_LE(list.end, body.size());
            EXPECT_TRUE(held > 0 || list.frames.empty());
        }
    }
}

TEST_F(TagLibReadTest, APackedFrameIsReadUpTo64KilobytesSinceItMayUnpackToFarMore) {
    constexpr std::size_t AroundTheText = 10 + 4 + 7 + 1 + 4; // Headers, the encoding, the check at the end.
    const auto titleOfFrame = [&](std::size_t frame) {
        const std::string contents = '\0' + std::string(frame - AroundTheText, 'x');
        return TitleOf(3, FrameV2(3, "TIT2", Big(contents.size(), 4) + Stored(contents), 0x0080)).size();
    };
    EXPECT_EQ(titleOfFrame(100), 100 - AroundTheText);
    EXPECT_EQ(titleOfFrame(65536), 65536 - AroundTheText);
    EXPECT_EQ(titleOfFrame(65537), 0U);
}

TEST_F(TagLibReadTest, NoMutationOfATagBreaksTheReader) {
    std::mt19937 random(11);
    int titles = 0;
    for (int i = 0; i < 3000; ++i) {
        const int major = static_cast<int>(random() % 3) + 2;
        std::string contents = TagV2(major, TextFrame(major, major == 2 ? "TT2" : "TIT2", "Titel") +
                                                CommentFrame(major, "deu", "x", "Bemerkung") +
                                                TextFrame(major, major == 2 ? "TCO" : "TCON", "(17)"));
        for (auto n = random() % 5; n > 0; --n) {
            contents[random() % contents.size()] = static_cast<char>(random());
        }
        Load(contents.substr(0, random() % 4 == 0 ? random() % contents.size() : contents.size()));
        titles += Field(T::Title) == "Titel";
    }
    EXPECT_GT(titles, 500);
}

// A body in a file that another program cuts while it is read: it delivers less than its size says.
class CutBody : public id3v2::TagBody {
public:
    CutBody(std::string bytes, std::size_t size) : m_bytes(std::move(bytes)), m_size(size) {}
    std::size_t Size() const override { return m_size; }
    id3v2::ByteView View(std::size_t offset, std::size_t count) override {
        m_view = offset < m_bytes.size() ? m_bytes.substr(offset, count) : std::string();
        m_view.shrink_to_fit(); // A read past its end is one past the memory.
        return AsBytes(m_view);
    }

private:
    std::string m_bytes;
    std::string m_view;
    std::size_t m_size;
};

TEST(Id3v2LayoutTest, AFileThatIsCutWhileItIsReadEndsTheListOfFrames) {
    for (const unsigned major : {2U, 3U, 4U}) {
        const std::string frames =
            TextFrame(static_cast<int>(major), major == 2 ? "TT2" : "TIT2", std::string(40, 'x')) +
            TextFrame(static_cast<int>(major), major == 2 ? "TP1" : "TPE1", std::string(40, 'y'));
        for (std::size_t kept = 0; kept <= frames.size(); ++kept) {
            for (const unsigned flags : {0U, 0x40U}) {
                CutBody body(frames.substr(0, kept), frames.size() + 100);
                const id3v2::FrameList list = id3v2::ListFrames({major, 0, flags, 0}, body);
                EXPECT_LE(list.frames.size(), 2U);
                EXPECT_LE(list.end, body.Size());
            }
        }
    }
}

} // namespace quavernet::test
