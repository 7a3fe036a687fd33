// How the comment writer treats the file that it changes, and what it refuses.
#include "adapters/vorbis/OggCommentWriter.h"

#include "adapters/vorbis/OggCommentTest.h"
#include "platform/RuntimeError.h"
#include "support/FileSizeLimit.h"
#include "support/OrdinaryUser.h"

#include <functional>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace quavernet::test {

namespace {

namespace fs = std::filesystem;

/// The real files with something happening after each read of their bytes.
class WatchedFiles : public UserFiles {
public:
    explicit WatchedFiles(std::function<void(std::uint64_t offset)> onRead) : m_onRead(std::move(onRead)) {}

    std::unique_ptr<BinaryFile> Open(const std::string& path, BinaryFile::Access access) override {
        return std::make_unique<File>(RealFiles().Open(path, access), m_onRead);
    }
    std::unique_ptr<NewFile> Create(const std::string& path) override { return RealFiles().Create(path); }
    std::unique_ptr<NewFile> CreatePrivate(const std::string& path) override {
        return RealFiles().CreatePrivate(path);
    }

private:
    class File : public BinaryFile {
    public:
        File(std::unique_ptr<BinaryFile> file, const std::function<void(std::uint64_t)>& onRead)
            : m_file(std::move(file)), m_onRead(onRead) {}

        std::uint64_t Size() const override { return m_file->Size(); }
        std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const override {
            const std::size_t count = m_file->ReadAt(offset, bytes);
            m_onRead(offset);
            return count;
        }
        std::uint64_t NextData(std::uint64_t offset) const override { return m_file->NextData(offset); }
        void Overwrite(std::uint64_t offset, std::span<const std::byte> oldBytes,
                       std::span<const std::byte> bytes, SaveTimes times, WithoutCopy without) override {
            m_file->Overwrite(offset, oldBytes, bytes, times, without);
        }
        void Rewrite(const std::function<void(FileCopy&)>& compose) override { m_file->Rewrite(compose); }

    private:
        std::unique_ptr<BinaryFile> m_file;
        const std::function<void(std::uint64_t)>& m_onRead;
    };

    std::function<void(std::uint64_t)> m_onRead;
};

class OggCommentSaveTest : public OggCommentTest {
protected:
    OggCommentSaveTest() { WriteWhole(path, old); }

    struct stat Facts() const {
        struct stat facts {};
        EXPECT_EQ(::stat(path.c_str(), &facts), 0);
        return facts;
    }

    int Failure(const Texts& comments) {
        return NumberOf([&] { writer.Write(path, comments); });
    }

    void ExpectOld() const {
        EXPECT_EQ(ReadWhole(path), old);
        EXPECT_EQ(Names(), Texts{"a.ogg"});
    }

    // In place; by a copy; by a copy with other page numbers.
    const std::vector<Texts> ways = {{"COMMENT=nice", "X-NOTE=kepT", "title=Über den Wolken",
                                      "artist=Die Ärzte", "genre=Rock", "date=2001", "album=Größe"},
                                     {"TITLE=Neu"},
                                     {std::string(200'000, 'x')}};
    const std::string old = EncodedOgg::Stereo();
};

} // namespace

TEST_F(OggCommentSaveTest, AChangeOfTheSameSizeWithinAPageIsWrittenInPlaceEveryOtherByACopy) {
    const Texts listed = writer.List(path);
    ASSERT_EQ(listed.size(), ways[0].size());
    ino_t before = Facts().st_ino;
    writer.Write(path, ways[0]);
    EXPECT_EQ(Facts().st_ino, before);
    EXPECT_EQ(writer.List(path), ways[0]);
    for (const Texts& comments : {ways[1], ways[2], listed}) {
        writer.Write(path, comments);
        EXPECT_NE(Facts().st_ino, before);
        EXPECT_EQ(writer.List(path), comments);
        before = Facts().st_ino;
    }
    ExpectOld();
}

TEST_F(OggCommentSaveTest, RightsAndTimesStay) {
    for (const Texts& comments : ways) {
        ::chmod(path.c_str(), 0640);
        const struct timespec times[2] = {{1000000000, 123}, {1100000000, 456}};
        ::utimensat(AT_FDCWD, path.c_str(), times, 0);
        writer.Write(path, comments);
        EXPECT_EQ(writer.List(path), comments);
        EXPECT_EQ(Facts().st_mode & 07777, 0640u);
        EXPECT_EQ(Facts().st_mtim.tv_sec, 1100000000);
        EXPECT_EQ(Facts().st_mtim.tv_nsec, 456);
    }
}

TEST_F(OggCommentSaveTest, ALinkStaysALinkAndOtherNamesKeepTheOldFile) {
    fs::create_directory(folder / "music");
    for (std::size_t way = 1; way < ways.size(); ++way) {
        const std::string real = folder / "music/real.ogg";
        const std::string other = folder / "music/other.ogg";
        WriteWhole(real, old);
        fs::create_hard_link(real, other);
        fs::remove(path);
        fs::create_symlink("music/real.ogg", path);
        writer.Write(path, ways[way]);
        EXPECT_TRUE(fs::is_symlink(path));
        EXPECT_EQ(writer.List(real), ways[way]);
        EXPECT_EQ(ReadWhole(other), old);
        fs::remove(other);
    }
}

TEST_F(OggCommentSaveTest, NothingIsWrittenIfNothingChanged) {
    ::chmod(folder.Path().c_str(), 0755);
    ::chmod(path.c_str(), 0666);
    const struct stat before = Facts();
    {
        const OrdinaryUser user; // Who could make no copy.
        EXPECT_EQ(Failure(writer.List(path)), 0);
    }
    EXPECT_EQ(Facts().st_ctim.tv_nsec, before.st_ctim.tv_nsec);
    ExpectOld();
}

TEST_F(OggCommentSaveTest, AFileOrAFolderThatMayNotBeWrittenStays) {
    ::chmod(folder.Path().c_str(), 0777);
    ::chmod(path.c_str(), 0444);
    for (const Texts& comments : ways) {
        const OrdinaryUser user;
        EXPECT_EQ(Failure(comments), ErrorNumber::PathFileAccess);
    }
    ::chmod(folder.Path().c_str(), 0755);
    ::chmod(path.c_str(), 0666);
    for (std::size_t way = 1; way < ways.size(); ++way) {
        const OrdinaryUser user;
        EXPECT_EQ(Failure(ways[way]), ErrorNumber::PathFileAccess);
    }
    ExpectOld();
}

TEST_F(OggCommentSaveTest, AFullDiskLeavesTheOldFileAndNoCopy) {
    for (std::size_t way = 1; way < ways.size(); ++way) {
        for (const std::size_t room : {std::size_t{0}, std::size_t{4000}, old.size() / 2}) {
            const FileSizeLimit limit(room);
            EXPECT_EQ(Failure(ways[way]), ErrorNumber::DiskFull) << room;
        }
        ExpectOld();
    }
}

TEST_F(OggCommentSaveTest, WhatCanNotBeOpenedIsToldAsWhatItIs) {
    const auto expect = [&](const std::string& place, int number) {
        EXPECT_EQ(NumberOf([&] { writer.List(place); }), number) << place;
        EXPECT_EQ(NumberOf([&] { writer.Write(place, {}); }), number) << place;
    };
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    expect(folder / "missing.ogg", ErrorNumber::FileNotFound);
    expect(path + "/a.ogg", ErrorNumber::PathNotFound);
    expect(folder.Path(), ErrorNumber::PathFileAccess);
    expect(folder / "pipe", ErrorNumber::PathFileAccess);
    EXPECT_EQ(Names(), (Texts{"a.ogg", "pipe"}));
}

TEST_F(OggCommentSaveTest, AFileThatWentSinceItWasListedDoesNotComeBack) {
    writer.List(path);
    fs::remove(path);
    EXPECT_EQ(Failure(ways[1]), ErrorNumber::FileNotFound);
    EXPECT_EQ(Names(), Texts());
}

TEST_F(OggCommentSaveTest, CommentsThatAnotherProgramWroteSinceTheyWereListedAreNotLost) {
    writer.List(path);
    OggCommentWriter(RealFiles()).Write(path, {"TITLE=theirs"});
    const std::string theirs = ReadWhole(path);
    EXPECT_EQ(Failure({"TITLE=ours"}), ErrorNumber::PermissionDenied);
    EXPECT_EQ(ReadWhole(path), theirs);
    EXPECT_EQ(writer.List(path), Texts{"TITLE=theirs"});
    EXPECT_EQ(Failure({"TITLE=ours"}), 0) << "now that it is known";
    EXPECT_EQ(Failure({"TITLE=again"}), 0) << "its own change is known";
    EXPECT_EQ(writer.List(path), Texts{"TITLE=again"});
}

TEST_F(OggCommentSaveTest, AFileThatAnotherProgramChangesWhileItIsWrittenStays) {
    const std::string theirs(old.size(), 't');
    for (const bool replaced : {false, true}) {
        for (const Texts& comments : ways) {
            WriteWhole(path, old);
            const auto change = [&, done = false](std::uint64_t) mutable {
                if (!std::exchange(done, true)) {
                    WriteWhole(replaced ? folder / "new" : path, replaced ? theirs : old + "grown");
                    if (replaced) {
                        fs::rename(folder / "new", path);
                    }
                }
            };
            WatchedFiles files(change);
            OggCommentWriter watched(files);
            EXPECT_EQ(NumberOf([&] { watched.Write(path, comments); }), ErrorNumber::PermissionDenied);
            EXPECT_EQ(ReadWhole(path), replaced ? theirs : old + "grown");
            EXPECT_EQ(Names(), Texts{"a.ogg"});
        }
    }
}

TEST_F(OggCommentSaveTest, ADeviceThatFailsIsNotTakenForTheEndOfTheFile) {
    const std::string ogg = EncodedOgg::Long();
    ASSERT_GT(ogg.size(), 200'000u);
    for (const std::uint64_t fault : {std::uint64_t{0}, std::uint64_t{150'000}}) {
        WriteWhole(path, ogg);
        WatchedFiles files([&](std::uint64_t offset) {
            if (offset + 65536 > fault) {
                throw RuntimeError(ErrorNumber::DeviceInputOutput, "Input/output error");
            }
        });
        OggCommentWriter watched(files);
        EXPECT_EQ(NumberOf([&] { watched.Write(path, ways[2]); }), ErrorNumber::DeviceInputOutput) << fault;
        EXPECT_EQ(ReadWhole(path), ogg);
        EXPECT_EQ(Names(), Texts{"a.ogg"});
    }
}

TEST_F(OggCommentSaveTest, WhatIsNoOggVorbisIsRefused) {
    std::vector<ForgedPage> speech = SplitPages(old);
    speech[0].body.replace(0, 8, "OpusHead");
    for (const std::string& bytes : {std::string(), std::string("OggS"), std::string(100'000, 'x'),
                                     JoinPages(speech), "fLaC" + std::string(2000, '\0')}) {
        ExpectRefused(bytes);
    }
}

TEST_F(OggCommentSaveTest, HeadersThatAreNotWholeAreRefused) {
    const std::size_t headers = JoinPages({SplitPages(old)[0], SplitPages(old)[1]}).size();
    for (std::size_t size = 0; size < headers; size += 37) {
        ExpectRefused(old.substr(0, size));
    }
    ExpectRefused(old.substr(0, headers - 1));
    for (std::size_t at = 0; at < headers; at += 41) {
        std::string damaged = old;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
        ExpectRefused(damaged);
    }
}

TEST_F(OggCommentSaveTest, HeadersThatBreakTheRulesOfTheFormatAreRefused) {
    const auto expectRefused = [&](const std::function<void(std::vector<ForgedPage>&)>& change) {
        std::vector<ForgedPage> pages = SplitPages(old);
        change(pages);
        ExpectRefused(JoinPages(pages));
    };
    using Pages = std::vector<ForgedPage>;
    expectRefused([](Pages& pages) { pages[0].sequence = 5; });
    expectRefused([](Pages& pages) { pages[0].flags |= 1; }); // Goes on with a packet that is not there.
    expectRefused([](Pages& pages) { pages[0].flags |= 4; });
    expectRefused([](Pages& pages) { pages[0].body[29] = 0; }); // The framing bit.
    expectRefused([](Pages& pages) { pages[1].sequence = 2; });
    expectRefused([](Pages& pages) { pages[1].flags |= 1; });
    expectRefused([](Pages& pages) { pages[1].flags |= 2; });
    expectRefused([](Pages& pages) { pages[1].version = 1; });
    expectRefused([](Pages& pages) { pages[1].body[0] = 5; });
    expectRefused([](Pages& pages) { pages.erase(pages.begin() + 1); });
    ExpectRefused("OggS" + std::string(22, '\0') + "\x01\x20" + old); // The remains of a page.
    expectRefused([](Pages& pages) { // A packet after the identification packet on its page.
        pages[0].lacing.push_back(3);
        pages[0].body += "abc";
    });
    expectRefused([](Pages& pages) { // Audio on the page of the setup packet.
        pages[1].lacing.push_back(3);
        pages[1].body += "abc";
    });
    expectRefused([](Pages& pages) { // The stream ends before its setup packet.
        const std::size_t first = PacketsOf({pages[1]})[0].size();
        pages[1].flags |= 4;
        pages[1].lacing.resize(first / 255 + 1);
        pages[1].body.resize(first);
    });
    ExpectRefused(WithCommentPacket(old, "\x03vorbis"));
    ExpectRefused(WithCommentPacket(old, CommentPacket({"a=b"}).substr(0, 20)));
    std::string unframed = CommentPacket({"a=b"});
    unframed.back() = 0;
    ExpectRefused(WithCommentPacket(old, unframed));
}

TEST_F(OggCommentSaveTest, NumbersThatCouldNotGoOnAreRefused) {
    std::vector<ForgedPage> pages = SplitPages(Saved(EncodedOgg::Long(), {std::string(200'000, 'x')}));
    const std::size_t headers = HeaderPageCount(ReadWhole(path));
    for (std::size_t i = headers; i < pages.size(); ++i) {
        pages[i].sequence = static_cast<std::uint32_t>(i - headers); // Counted from 0 by a careless program.
    }
    const std::string bytes = JoinPages(pages);
    WriteWhole(path, bytes);
    EXPECT_EQ(Failure({"TITLE=x"}), ErrorNumber::PathFileAccess);
    EXPECT_EQ(ReadWhole(path), bytes);
    EXPECT_EQ(Names(), Texts{"a.ogg"});
    EXPECT_EQ(Failure({"TITLE=" + std::string(199'990, 'x')}), 0) << "as many pages as before";
}

TEST_F(OggCommentSaveTest, BytesThatWouldTakeForEverToSearchAreRefused) {
    std::string bytes = old;
    for (int i = 0; i < 200'000; ++i) { // Each a page of 65 kilobytes that is none.
        bytes += std::string("OggS") + std::string(22, '\0') + "\xFF" + std::string(4, '\xFF');
    }
    WriteWhole(path, bytes);
    EXPECT_EQ(Failure(ways[2]), ErrorNumber::PathFileAccess);
    EXPECT_EQ(ReadWhole(path), bytes);
    EXPECT_EQ(Failure(ways[1]), 0) << "the audio is copied as it is";
}

TEST_F(OggCommentSaveTest, CommentsThatNoReaderWouldTakeAreRefused) {
    EXPECT_EQ(Failure({std::string(std::size_t{64} << 20, 'x')}), ErrorNumber::PathFileAccess);
    ExpectOld();
    const Texts most = {std::string((std::size_t{64} << 20) - 100, 'x')};
    EXPECT_EQ(Failure(most), 0);
    EXPECT_EQ(writer.List(path), most);
}

} // namespace quavernet::test
