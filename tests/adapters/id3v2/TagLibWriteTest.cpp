#include "adapters/id3v2/TagLibComponent.h"

#include "platform/RuntimeError.h"
#include "support/OrdinaryUser.h"
#include "support/RealAudio.h"
#include "support/RealFiles.h"
#include "support/TagBytes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>

namespace quavernet::test {

class TagLibWriteTest : public ::testing::Test {
protected:
    using T = TagComponent;

    // Writes the contents, changes fields and saves; gives the file's contents back.
    std::string Save(std::string_view contents, const std::vector<std::pair<int, std::string>>& fields) {
        WriteFile(path, contents);
        return SaveAgain(fields);
    }

    std::string SaveAgain(const std::vector<std::pair<int, std::string>>& fields) {
        component->LoadFile(path);
        for (const auto& [index, text] : fields) {
            component->SetTagField(index, text);
        }
        component->SaveFile(path);
        return ReadFile(path);
    }

    std::string FieldOf(int index) {
        const auto reader = CreateTagLibComponent(RealFiles());
        reader->LoadFile(path);
        return reader->TagField(index);
    }

    static ino_t Inode(const std::string& file) {
        struct stat facts {};
        EXPECT_EQ(::stat(file.c_str(), &facts), 0);
        return facts.st_ino;
    }

    std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    const std::string Audio =
        std::string(400, 'a') + std::string("ID3 TAG \0\xFF\xFB", 11) + std::string(400, 'b');
    const std::string V1 = TagV1("Eins", "Erster", "Album 1", "1999", "Text", 17);
    TemporaryFolder folder;
    std::string path = folder / "a.mp3";
    std::unique_ptr<TagComponent> component = CreateTagLibComponent(RealFiles());
};

TEST_F(TagLibWriteTest, InPlaceWithPaddingEveryOtherByteStays) {
    const std::string before = FrameV2(3, "RVAD", "volume") + TextFrame(3, "TRDA", "some day");
    const std::string behind =
        TextFrame(3, "TCON", "17") + TextFrame(3, "TCON", "18") + TextFrame(3, "TSIZ", "9");
    const std::string old = TagV2(3, before + TextFrame(3, "TIT2", "Alt") + behind, 100) + Audio + V1;
    const std::string expected =
        TagV2(3, before + TextFrame(3, "TIT2", "Ein neuer Titel") + behind, 88) + Audio + V1;
    WriteFile(path, old);
    const ino_t inode = Inode(path);
    EXPECT_EQ(Save(old, {{T::Title, "Ein neuer Titel"}}), expected);
    EXPECT_EQ(Inode(path), inode) << "written in place";
}

TEST_F(TagLibWriteTest, AShorterFieldLeavesPadding) {
    EXPECT_EQ(Save(TagV2(3, TextFrame(3, "TIT2", "Ein langer Titel")) + Audio, {{T::Title, "Kurz"}}),
              TagV2(3, TextFrame(3, "TIT2", "Kurz"), 12) + Audio);
}

TEST_F(TagLibWriteTest, ATagThatMustGrowGetsACopyWithPadding) {
    WriteFile(path, TagV2(3, TextFrame(3, "TIT2", "Alt")) + Audio + V1);
    const ino_t inode = Inode(path);
    EXPECT_EQ(SaveAgain({{T::Title, "Ein neuer Titel"}}),
              TagV2(3, TextFrame(3, "TIT2", "Ein neuer Titel"), 1024) + Audio + V1);
    EXPECT_NE(Inode(path), inode);
    EXPECT_EQ(Names(), std::vector<std::string>{"a.mp3"}) << "no copy is left over";
    const ino_t grown = Inode(path);
    SaveAgain({{T::Title, "Noch ein längerer neuer Titel"}});
    EXPECT_EQ(Inode(path), grown) << "the next edit fits";
}

TEST_F(TagLibWriteTest, TheVersionOfTheTagStays) {
    EXPECT_EQ(Save(TagV2(2, TextFrame(2, "TT2", "Alt") + FrameV2(2, "XYZ", "unknown"), 50) + Audio,
                   {{T::Title, "Neu"}, {T::Year, "2001"}}),
              TagV2(2,
                    TextFrame(2, "TT2", "Neu") + FrameV2(2, "XYZ", "unknown") + TextFrame(2, "TYE", "2001"),
                    39) +
                  Audio);
    EXPECT_EQ(Save(TagV2(3, TextFrame(3, "TIT2", "Alt"), 50) + Audio, {{T::Year, "2001"}}),
              TagV2(3, TextFrame(3, "TIT2", "Alt") + TextFrame(3, "TYER", "2001"), 35) + Audio);
    EXPECT_EQ(Save(TagV2(4, TextFrame(4, "TIT2", "Alt", 3), 50) + Audio, {{T::Year, "2001"}}),
              TagV2(4, TextFrame(4, "TIT2", "Alt", 3) + TextFrame(4, "TDRC", "2001", 3), 35) + Audio);
}

TEST_F(TagLibWriteTest, AllSevenFieldsAreWrittenAndReadBackInEveryVersion) {
    const std::vector<std::pair<int, std::string>> fields = {{T::Title, "Lied für O'Hara"},
                                                             {T::Performer, "日本"},
                                                             {T::Album, "€ „Größe“"},
                                                             {T::Year, "2001"},
                                                             {T::Genre, "(17)"},
                                                             {T::Comment, "Ein 😀 mehr"},
                                                             {T::Publisher, "Verlag"}};
    for (int major = 2; major <= 4; ++major) {
        Save(TagV2(major, "") + Audio + V1, fields);
        for (const auto& [index, text] : fields) {
            EXPECT_EQ(FieldOf(index), text) << major << " " << index;
        }
        EXPECT_EQ(ReadFile(path).substr(3, 1), Bytes({major}));
        EXPECT_TRUE(ReadFile(path).ends_with(Audio + V1)) << major;
    }
}

TEST_F(TagLibWriteTest, NothingIsWrittenIfNoFieldChanged) {
    const std::string contents = TagV2(3, TextFrame(3, "TCON", std::string("a\0b", 3)) + "rubbish") + Audio;
    WriteFile(path, contents);
    const auto time = std::filesystem::last_write_time(path);
    EXPECT_EQ(SaveAgain({{T::Genre, "a"}}), contents);
    EXPECT_EQ(std::filesystem::last_write_time(path), time);
}

TEST_F(TagLibWriteTest, AnEmptiedFieldLosesItsFrame) {
    EXPECT_EQ(
        Save(TagV2(3, TextFrame(3, "TIT2", "Alt") + TextFrame(3, "TPE1", "Wer")) + Audio, {{T::Title, ""}}),
        TagV2(3, TextFrame(3, "TPE1", "Wer"), 14) + Audio);
}

TEST_F(TagLibWriteTest, AnEmptiedFieldDoesNotLetTheNextFrameStepForward) {
    const std::string second = TextFrame(3, "TIT2", "Zwei");
    EXPECT_EQ(Save(TagV2(3, TextFrame(3, "TIT2", "Eins") + second) + Audio, {{T::Title, ""}}),
              TagV2(3, TextFrame(3, "TIT2", "") + second, 4) + Audio);
    EXPECT_EQ(FieldOf(T::Title), "");
}

TEST_F(TagLibWriteTest, ACommentKeepsItsLanguageAndDescriptionAndTheOthers) {
    const std::string other = CommentFrame(3, "eng", "iTunNORM", " 0001");
    EXPECT_EQ(Save(TagV2(3, CommentFrame(3, "deu", "Was", "Alt") + other) + Audio, {{T::Comment, "Neu"}}),
              TagV2(3, CommentFrame(3, "deu", "Was", "Neu") + other) + Audio);
    EXPECT_EQ(Save(TagV2(3, "", 50) + Audio, {{T::Comment, "Neu"}}),
              TagV2(3, CommentFrame(3, "eng", "", "Neu"), 32) + Audio);
}

TEST_F(TagLibWriteTest, TextsBeyondLatin1AreUtf16BeforeVersion4) {
    EXPECT_EQ(Save(TagV2(3, "", 50) + Audio, {{T::Title, "ü"}}),
              TagV2(3, TextFrame(3, "TIT2", "\xFC"), 38) + Audio);
    EXPECT_EQ(Save(TagV2(3, "", 50) + Audio, {{T::Title, "€"}}),
              TagV2(3, FrameV2(3, "TIT2", Bytes({1, 0xFF, 0xFE, 0xAC, 0x20})), 35) + Audio);
    EXPECT_EQ(Save(TagV2(4, "", 50) + Audio, {{T::Title, "€"}}),
              TagV2(4, TextFrame(4, "TIT2", "€", 3), 36) + Audio);
}

TEST_F(TagLibWriteTest, NulsAreLeftOut) {
    Save(TagV2(3, "", 50) + Audio, {{T::Title, std::string("a\0b", 3)}});
    EXPECT_EQ(FieldOf(T::Title), "ab");
}

TEST_F(TagLibWriteTest, BytesAfterTheFramesThatAreNoPaddingStay) {
    EXPECT_EQ(Save(TagV2(3, TextFrame(3, "TIT2", "Alt") + "???" + std::string(20, '\0')) + Audio,
                   {{T::Title, "Neue"}}),
              TagV2(3, TextFrame(3, "TIT2", "Neue") + "???" + std::string(19, '\0')) + Audio);
}

TEST_F(TagLibWriteTest, AFrameThatWasCutOffGetsNoPaddingThatWouldMakeItWhole) {
    const std::string cut = "TPE1" + Big(40, 4) + Bytes({0, 0, 0}) + "Cut";
    const auto tagOf = [&](const std::string& title, std::size_t padding) {
        return TagV2(3, TextFrame(3, "TIT2", title) + cut, padding) + Audio;
    };
    EXPECT_EQ(Save(tagOf("Titel", 0), {{T::Title, "Ein laengerer"}}), tagOf("Ein laengerer", 0));
    EXPECT_EQ(FieldOf(T::Performer), "");
    // Shorter by one byte of padding it stays cut off, and the tag in its place; by 36 it would not.
    EXPECT_EQ(Save(tagOf("Titel", 0), {{T::Title, "Kurz"}}), tagOf("Kurz", 1));
    const std::string longTitle(40, 'x');
    EXPECT_EQ(Save(tagOf(longTitle, 0), {{T::Title, "xxxx"}}), tagOf("xxxx", 0));
    EXPECT_EQ(FieldOf(T::Performer), "");
}

TEST_F(TagLibWriteTest, AnUnsynchronisedTagIsWrittenPlain) {
    const std::string priv = FrameV2(3, "PRIV", Bytes({0xFF, 0xE0}));
    const std::string raw =
        "PRIV" + Big(2, 4) + Bytes({0, 0, 0xFF, 0x00, 0xE0}) + TextFrame(3, "TIT2", "Alt");
    EXPECT_EQ(Save(TagV2(3, raw, 20, 0x80) + Audio, {{T::Title, "Neu"}}),
              TagV2(3, priv + TextFrame(3, "TIT2", "Neu"), 21) + Audio);
}

TEST_F(TagLibWriteTest, AnUnsynchronisedTagOfVersion4KeepsItsFrames) {
    const std::string frame = FrameV2(4, "PRIV", Bytes({0xFF, 0x00, 0xE0}), 0x0002);
    EXPECT_EQ(Save(TagV2(4, frame + TextFrame(4, "TIT2", "Alt", 3), 20, 0x80) + Audio, {{T::Title, "ÿß"}}),
              TagV2(4, frame + TextFrame(4, "TIT2", "ÿß", 3), 19, 0x80) + Audio);
    EXPECT_EQ(FieldOf(T::Title), "ÿß");
}

TEST_F(TagLibWriteTest, AFooterBecomesPadding) {
    const std::string frames = TextFrame(4, "TIT2", "Alt", 3);
    const std::string footer = "3DI" + Bytes({4, 0, 0x10}) + SyncSafe(frames.size());
    const std::string written = Save(TagV2(4, frames, 0, 0x10) + footer + Audio, {{T::Title, "Neu"}});
    EXPECT_EQ(written, TagV2(4, TextFrame(4, "TIT2", "Neu", 3), 10) + Audio);
}

TEST_F(TagLibWriteTest, AnExtendedHeaderIsDropped) {
    const std::string extended = Big(6, 4) + std::string(6, '\0');
    EXPECT_EQ(Save(TagV2(3, extended + TextFrame(3, "TIT2", "Alt"), 0, 0x40) + Audio, {{T::Title, "Neu"}}),
              TagV2(3, TextFrame(3, "TIT2", "Neu"), 10) + Audio);
}

TEST_F(TagLibWriteTest, AFileWithoutATagGetsOneOfVersion3) {
    EXPECT_EQ(Save(Audio + V1, {{T::Title, "Neu"}}),
              TagV2(3, TextFrame(3, "TIT2", "Neu"), 1024) + Audio + V1);
    EXPECT_EQ(Save(Audio + V1, {{T::Title, ""}}), Audio + V1) << "but none for nothing";
}

TEST_F(TagLibWriteTest, FieldsCanBeSavedIntoAnotherFile) {
    WriteFile(folder / "b.mp3",
              TagV2(3, TextFrame(3, "TIT2", "B") + TextFrame(3, "TALB", "Album"), 50) + Audio);
    WriteFile(path, TagV2(3, TextFrame(3, "TIT2", "A")) + Audio);
    component->LoadFile(path);
    component->SaveFile(folder / "b.mp3");
    EXPECT_EQ(ReadFile(folder / "b.mp3"), TagV2(3, TextFrame(3, "TIT2", "A"), 66) + Audio);
}

TEST_F(TagLibWriteTest, WhatAnotherProgramChangedSinceTheLoadStays) {
    const auto tagOf = [&](const std::string& title, const std::string& performer, const std::string& album) {
        return TagV2(3,
                     TextFrame(3, "TIT2", title) + TextFrame(3, "TPE1", performer) +
                         TextFrame(3, "TALB", album),
                     60 - title.size() - performer.size() - album.size()) +
               Audio + V1;
    };
    WriteFile(path, tagOf("Titel", "Wer", "Album"));
    component->LoadFile(path);
    WriteFile(path, tagOf("Titel", "Ein anderer", "Ein anderes"));
    // As a dialog does it: all seven, of which one is new.
    for (const int index : {T::Title, T::Performer, T::Album, T::Year, T::Genre, T::Comment, T::Publisher}) {
        component->SetTagField(index, index == T::Title ? "Neu" : component->TagField(index));
    }
    component->SaveFile(path);
    EXPECT_EQ(ReadFile(path), tagOf("Neu", "Ein anderer", "Ein anderes"));
    component->SetTagField(T::Performer, "Ich"); // Both changed it: what the user wants counts.
    component->SaveFile(path);
    EXPECT_EQ(ReadFile(path), tagOf("Neu", "Ich", "Ein anderes"));
}

TEST_F(TagLibWriteTest, ATagThatAnotherProgramWroteSinceTheLoadKeepsItsFields) {
    WriteFile(path, Audio + V1);
    component->LoadFile(path);
    WriteFile(path, TagV2(4, TextFrame(4, "TPE1", "Wer", 3), 50) + Audio + V1);
    component->SetTagField(T::Title, "Neu");
    component->SetTagField(T::Performer, "");
    component->SaveFile(path);
    EXPECT_EQ(ReadFile(path),
              TagV2(4, TextFrame(4, "TPE1", "Wer", 3) + TextFrame(4, "TIT2", "Neu", 3), 36) + Audio + V1);
}

TEST_F(TagLibWriteTest, ASavedFieldCanBeSetBackToTheLoadedText) {
    Save(TagV2(3, TextFrame(3, "TIT2", "Alt"), 50) + Audio, {{T::Title, "Neu"}});
    component->SetTagField(T::Title, "Alt");
    EXPECT_EQ(component->TagField(T::Title), "Alt");
    component->SaveFile(path);
    EXPECT_EQ(FieldOf(T::Title), "Alt");
}

TEST_F(TagLibWriteTest, WithoutALoadedFileOnlyTheFieldsThatWereSetAreWritten) {
    const std::string contents =
        TagV2(3, TextFrame(3, "TIT2", "Alt") + TextFrame(3, "TALB", "Album"), 50) + Audio;
    const std::string expected =
        TagV2(3, TextFrame(3, "TIT2", "Neu") + TextFrame(3, "TALB", "Album"), 50) + Audio;
    for (const std::string& loaded : {std::string(), folder / "missing.mp3"}) {
        WriteFile(path, contents);
        component->LoadFile(loaded);
        component->SetTagField(T::Title, "Neu");
        component->SaveFile(path);
        EXPECT_EQ(ReadFile(path), expected);
        component->SetTagField(T::Title, "Alt");
        component->SaveFile(path);
        EXPECT_EQ(ReadFile(path), contents);
    }
    WriteFile(path, contents);
    const auto fresh = CreateTagLibComponent(RealFiles());
    fresh->SetTagField(T::Title, "Neu");
    fresh->SaveFile(path);
    EXPECT_EQ(ReadFile(path), expected);
}

TEST_F(TagLibWriteTest, RightsAndTimesStay) {
    for (const std::size_t padding : {0u, 100u}) {
        WriteFile(path, TagV2(3, TextFrame(3, "TIT2", "Alt"), padding) + Audio);
        ::chmod(path.c_str(), 0640);
        const struct timespec times[2] = {{1000000000, 123}, {1100000000, 456}};
        ::utimensat(AT_FDCWD, path.c_str(), times, 0);
        SaveAgain({{T::Title, "Ein neuer Titel"}});
        struct stat facts {};
        ASSERT_EQ(::stat(path.c_str(), &facts), 0);
        EXPECT_EQ(facts.st_mode & 07777, 0640u);
        EXPECT_EQ(facts.st_mtim.tv_sec, 1100000000);
        EXPECT_EQ(facts.st_mtim.tv_nsec, 456);
    }
}

TEST_F(TagLibWriteTest, TheUsersOwnAttributesStayWhereTheFileSystemKeepsAny) {
    WriteFile(path, TagV2(3, TextFrame(3, "TIT2", "Alt")) + Audio);
    const bool keeps = ::setxattr(path.c_str(), "user.rating", "5", 1, 0) == 0;
    const ino_t before = Inode(path);
    SaveAgain({{T::Title, "Ein neuer Titel"}});
    ASSERT_NE(Inode(path), before) << "a copy";
    char value = 0;
    EXPECT_EQ(::getxattr(path.c_str(), "user.rating", &value, 1) == 1 && value == '5', keeps);
}

TEST_F(TagLibWriteTest, ControlCharactersAreNotTakenForWindows1252) {
    Save(TagV2(3, "", 200) + Audio, {{T::Title, "a\xC2\x85z"}});
    EXPECT_EQ(FieldOf(T::Title), "a\xC2\x85z");
}

TEST_F(TagLibWriteTest, ALinkStaysALink) {
    std::filesystem::create_directory(folder / "music");
    WriteFile(folder / "music/real.mp3", TagV2(3, TextFrame(3, "TIT2", "Alt")) + Audio);
    std::filesystem::create_symlink("music/real.mp3", path);
    SaveAgain({{T::Title, "Ein neuer Titel"}});
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(ReadFile(folder / "music/real.mp3"),
              TagV2(3, TextFrame(3, "TIT2", "Ein neuer Titel"), 1024) + Audio);
}

// While it lives, no write reaches beyond so many bytes of a file.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &m_old), 0);
        const struct rlimit small = {bytes, m_old.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    }
    ~FullDisk() {
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &m_old), 0);
        std::signal(SIGXFSZ, m_handler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    void (*m_handler)(int);
    struct rlimit m_old {};
};

class TagLibWriteFailureTest : public TagLibWriteTest {
protected:
    void ExpectFailure(const std::string& target) {
        try {
            component->SaveFile(target);
            FAIL() << target;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), ErrorNumber::PathFileAccess);
            EXPECT_FALSE(error.Description().empty());
        }
    }
};

TEST_F(TagLibWriteFailureTest, WhatCanNotBeOpenedIsAnAccessFailure) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    component->SetTagField(T::Title, "Neu");
    ExpectFailure(folder / "missing");
    ExpectFailure(folder.Path());
    ExpectFailure(folder / "pipe");
    ExpectFailure("");
}

TEST_F(TagLibWriteFailureTest, AReadOnlyFileStays) {
    const std::string contents = TagV2(3, TextFrame(3, "TIT2", "Alt")) + Audio;
    WriteFile(path, contents);
    ::chmod(path.c_str(), 0444);
    ::chmod(folder.Path().c_str(), 0777);
    component->SetTagField(T::Title, "Ein neuer Titel");
    {
        const OrdinaryUser user;
        ExpectFailure(path);
    }
    EXPECT_EQ(ReadFile(path), contents);
}

TEST_F(TagLibWriteFailureTest, AFileThatCouldNotBeReadWhenItWasLoadedIsNotWritten) {
    const std::string contents =
        TagV2(3, TextFrame(3, "TIT2", "Alt") + TextFrame(3, "TALB", "Album"), 50) + Audio;
    WriteFile(path, contents);
    ::chmod(folder.Path().c_str(), 0777);
    for (const bool byHead : {false, true}) {
        ::chmod(path.c_str(), 0);
        {
            const OrdinaryUser user;
            byHead ? component->LoadHead(path, {}) : component->LoadFile(path);
        }
        ::chmod(path.c_str(), 0644);
        EXPECT_EQ(component->TagField(T::Album), "");
        component->SetTagField(T::Title, "Neu");
        component->SetTagField(T::Album, component->TagField(T::Album));
        ExpectFailure(path);
        EXPECT_EQ(ReadFile(path), contents);
    }
    component->LoadFile(path);
    component->SetTagField(T::Title, "Neu");
    component->SaveFile(path);
    EXPECT_EQ(FieldOf(T::Title), "Neu") << "once it could be read";
    EXPECT_EQ(FieldOf(T::Album), "Album");
}

TEST_F(TagLibWriteFailureTest, ARefusedChangeIsStillWantedByTheNextSave) {
    WriteFile(path, TagV2(3, TextFrame(3, "TIT2", "Alt")) + Audio);
    ::chmod(path.c_str(), 0444);
    ::chmod(folder.Path().c_str(), 0777);
    component->LoadFile(path);
    component->SetTagField(T::Title, "Ein neuer Titel");
    {
        const OrdinaryUser user;
        ExpectFailure(path);
    }
    component->SetTagField(T::Performer, "");
    component->SaveFile(path);
    EXPECT_EQ(FieldOf(T::Title), "Ein neuer Titel");
}

TEST_F(TagLibWriteFailureTest, AFolderThatTakesNoCopyLeavesTheFile) {
    const std::string contents = TagV2(3, TextFrame(3, "TIT2", "Alt")) + Audio;
    WriteFile(path, contents);
    ::chmod(path.c_str(), 0666);
    ::chmod(folder.Path().c_str(), 0755);
    component->SetTagField(T::Title, "Ein neuer Titel");
    {
        const OrdinaryUser user;
        ExpectFailure(path);
    }
    EXPECT_EQ(ReadFile(path), contents);
    EXPECT_EQ(Names(), std::vector<std::string>{"a.mp3"});
}

TEST_F(TagLibWriteFailureTest, AFullDiskLeavesTheOldFileAndNoCopy) {
    const std::string contents = TagV2(3, TextFrame(3, "TIT2", "Alt")) + std::string(100000, 'a');
    WriteFile(path, contents);
    component->SetTagField(T::Title, "Ein neuer Titel");
    {
        const FullDisk disk(50000);
        ExpectFailure(path);
    }
    EXPECT_EQ(ReadFile(path), contents);
    EXPECT_EQ(Names(), std::vector<std::string>{"a.mp3"});
}

TEST_F(TagLibWriteFailureTest, AWriteInPlaceThatEndsHalfwayPutsTheOldBytesBack) {
    const std::string contents = TagV2(3, TextFrame(3, "TIT2", "Alt"), 200) + Audio;
    WriteFile(path, contents);
    component->SetTagField(T::Title, std::string(100, 'x'));
    {
        const FullDisk disk(60); // Within the title.
        ExpectFailure(path);
    }
    EXPECT_EQ(ReadFile(path), contents);
}

TEST_F(TagLibWriteFailureTest, ATagThatIsLargerThanItsFileIsNotTouched) {
    const std::string contents = Put(TagV2(3, TextFrame(3, "TIT2", "Alt")), 6, Bytes({1, 0, 0, 0})) + Audio;
    WriteFile(path, contents);
    component->SetTagField(T::Title, "Neu");
    ExpectFailure(path);
    EXPECT_EQ(ReadFile(path), contents);
}

TEST_F(TagLibWriteFailureTest, ACompressedTagOfVersion2IsNotTouched) {
    const std::string contents = TagV2(2, "compressed", 0, 0x40) + Audio;
    WriteFile(path, contents);
    component->SetTagField(T::Title, "Neu");
    ExpectFailure(path);
    EXPECT_EQ(ReadFile(path), contents);
}

TEST_F(TagLibWriteFailureTest, AFieldThatCouldNotBeReadBackIsRefused) {
    WriteFile(path, TagV2(3, "") + Audio);
    component->SetTagField(T::Comment, std::string(300000, 'x'));
    ExpectFailure(path);
    EXPECT_EQ(ReadFile(path), TagV2(3, "") + Audio);
}

TEST_F(TagLibWriteTest, ARealFilePlaysOnAfterItsTagGrew) {
    CopyTo(RealMp3({"-b", "128", "--tt", "Lied", "--ta", "Wer", "--add-id3v2", "--id3v2-latin1"}), path);
    const std::string before = ReadFile(path);
    SaveAgain({{T::Title, std::string(5000, 'x')}});
    const std::string after = ReadFile(path);
    EXPECT_EQ(FieldOf(T::Title), std::string(5000, 'x'));
    EXPECT_EQ(FieldOf(T::Performer), "Wer");
    const std::size_t frame = before.find("\xFF\xFB");
    EXPECT_TRUE(after.ends_with(before.substr(frame)));
    RunProgram({"sox", path, "-n"});
}

TEST_F(TagLibWriteTest, ARealFileKeepsTheAlbumThatAnotherProgramGaveItMeanwhile) {
    CopyTo(RealMp3({"-b", "128", "--tt", "Lied", "--ta", "Wer", "--tl", "Album", "--add-id3v2",
                    "--id3v2-latin1"}),
           path);
    component->LoadFile(path);
    {
        const auto other = CreateTagLibComponent(RealFiles());
        other->LoadFile(path);
        other->SetTagField(T::Album, "Ein anderes");
        other->SaveFile(path);
    }
    component->SetTagField(T::Title, "Neu");
    component->SetTagField(T::Album, component->TagField(T::Album));
    component->SaveFile(path);
    EXPECT_EQ(FieldOf(T::Title), "Neu");
    EXPECT_EQ(FieldOf(T::Performer), "Wer");
    EXPECT_EQ(FieldOf(T::Album), "Ein anderes");
    RunProgram({"sox", path, "-n"});
}

} // namespace quavernet::test
