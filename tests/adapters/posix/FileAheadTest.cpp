#include "adapters/posix/FileAhead.h"

#include "support/RefusedCalls.h"
#include "support/TemporaryFolder.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <memory>
#include <numeric>
#include <span>
#include <string>
#include <thread>

#include <sys/syscall.h>

namespace quavernet::test {
namespace {

namespace fs = std::filesystem;

class FileAheadTest : public ::testing::Test {
protected:
    std::string Write(const std::string& name, const std::string& bytes) {
        WriteFile(music / name, bytes);
        return music / name;
    }

    TemporaryFolder music;
};

TEST_F(FileAheadTest, AFileThatWasReadAheadHasTheSameBytesAtEveryPlace) {
    std::string bytes(70000, '\0');
    std::iota(bytes.begin(), bytes.end(), '\1');
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{1}, std::size_t{127}, std::size_t{5120}, std::size_t{8192},
          std::size_t{8193}, std::size_t{8300}, std::size_t{70000}}) {
        const std::string path = Write("a.mp3", bytes.substr(0, size));
        const posix::FileAhead file(path);
        for (const std::size_t offset :
             {std::size_t{0}, std::size_t{4000}, std::size_t{8191}, std::size_t{8192}, std::size_t{40000},
              size > 128 ? size - 128 : 0, size, size + 1}) {
            for (const std::size_t count :
                 {std::size_t{1}, std::size_t{128}, std::size_t{5120}, std::size_t{80000}}) {
                std::string got(count, '\0');
                got.resize(file.ReadAt(offset, std::as_writable_bytes(std::span(got))));
                EXPECT_EQ(got, offset < size ? bytes.substr(0, size).substr(offset, count) : "")
                    << size << " bytes, " << count << " at " << offset;
            }
        }
    }
}

TEST_F(FileAheadTest, WhatCouldNotBeReadIsAskedAgain) {
    const std::string path = Write("a.mp3", std::string(20000, 'a'));
    std::unique_ptr<posix::FileAhead> file;
    std::thread([&] { // The device fails for this thread.
        ASSERT_TRUE(Refuse({{SYS_pread64, 0, 0, EIO}}));
        file = std::make_unique<posix::FileAhead>(path);
    })
        .join();
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(file->IsStill());
    Write("a.mp3", std::string(20000, 'b'));
    for (const std::uint64_t offset : {0, 4000, 19872}) {
        std::string got(128, '\0');
        got.resize(file->ReadAt(offset, std::as_writable_bytes(std::span(got))));
        EXPECT_EQ(got, std::string(128, 'b')) << offset;
    }
}

// A tag with a cover between its frames.
std::string TagWithCover(char major, std::size_t cover) {
    const auto frame = [major](const std::string& name, const std::string& body) {
        const auto size = body.size();
        const std::string sizeBytes =
            major == 2   ? Big(size, 3)
            : major == 3 ? Big(size, 4)
                         : Bytes({static_cast<int>(size >> 21 & 127), static_cast<int>(size >> 14 & 127),
                                  static_cast<int>(size >> 7 & 127), static_cast<int>(size & 127)});
        return (major == 2 ? name.substr(0, 3) : name) + sizeBytes +
               (major == 2 ? "" : std::string(2, '\0')) + body;
    };
    const std::string body = frame("TPE1", "performer") + frame("APIC", std::string(cover, 'c')) +
                             frame("TIT2", "title") + std::string(6000, '\0');
    const auto size = body.size();
    return "ID3" + std::string{major, '\0', '\0'} +
           Bytes({static_cast<int>(size >> 21 & 127), static_cast<int>(size >> 14 & 127),
                  static_cast<int>(size >> 7 & 127), static_cast<int>(size & 127)}) +
           body;
}

TEST_F(FileAheadTest, TheFramesAfterACoverAreReadAheadToo) {
    for (const char major : {'\2', '\3', '\4'}) {
        const std::string tag = TagWithCover(major, 100000);
        const std::string path = Write("cover.mp3", tag + std::string(300000, 'm'));
        const posix::FileAhead file(path);
        const std::size_t after = tag.size() - 6000 - (major == 2 ? 6 : 10) - 5;
        // What was read ahead is still there when the file has lost it.
        fs::resize_file(path, 8192);
        std::string frames(4096, '\0');
        frames.resize(file.ReadAt(after, std::as_writable_bytes(std::span(frames))));
        EXPECT_EQ(frames, tag.substr(after, 4096)) << "version 2." << static_cast<int>(major);
    }
}

TEST_F(FileAheadTest, ATagThatMakesNoSenseIsReadNoFurther) {
    for (const std::string& head : {std::string("ID3"), "ID3" + Bytes({3, 0, 0, 127, 127, 127, 127}),
                                    TagWithCover('\3', 9000).substr(0, 9000),
                                    "ID3" + Bytes({3, 0, 0, 127, 127, 127, 127}) + "APIC" +
                                        Bytes({255, 255, 255, 255, 0, 0}) + std::string(9000, 'x'),
                                    "ID3" + Bytes({9, 0, 0, 0, 0, 127, 127}) + std::string(9000, 'x')}) {
        const std::string path = Write("a.mp3", head);
        std::string all(20000, '\0');
        all.resize(posix::FileAhead(path).ReadAt(0, std::as_writable_bytes(std::span(all))));
        EXPECT_EQ(all, head);
    }
}

} // namespace
} // namespace quavernet::test
