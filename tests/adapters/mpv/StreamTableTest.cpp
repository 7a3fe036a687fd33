#include "adapters/mpv/StreamTable.h"

#include "MpvTest.h"
#include "support/TestFiles.h"

#include <atomic>
#include <thread>

namespace quavernet::test {

namespace {

/// What a table has registered, to be called as the engine calls it.
struct Registered {
    void* table = nullptr;
    mpv_stream_cb_open_ro_fn open = nullptr;
};
Registered registered;

int TakeRegistration(mpv_handle*, const char* protocol, void* table, mpv_stream_cb_open_ro_fn open) {
    EXPECT_STREQ(protocol, "quavernet");
    registered = {table, open};
    return 0;
}

class StreamTableTest : public LogicTest {
protected:
    StreamTableTest() {
        mpv::Library library(mpv::Library::DefaultName);
        library.stream_cb_add_ro = &TakeRegistration;
        table.Register(library, nullptr);
    }

    mpv_stream_cb_info Open(std::uint64_t number, const std::string& path) {
        std::string address = table.Announce(number, path);
        mpv_stream_cb_info stream{};
        EXPECT_EQ(registered.open(registered.table, address.data(), &stream), 0);
        return stream;
    }
    std::string Song() const {
        WriteFile(folder / "song.mp3", "sound");
        return folder / "song.mp3";
    }

    TemporaryFolder folder;
    mpv::StreamTable table{*services.files};
};

TEST_F(StreamTableTest, AStreamReadsItsFileFromAnyPlace) {
    const mpv_stream_cb_info stream = Open(1, Song());
    char bytes[8] = {};
    EXPECT_EQ(stream.size_fn(stream.cookie), 5);
    EXPECT_EQ(stream.read_fn(stream.cookie, bytes, sizeof bytes), 5);
    EXPECT_STREQ(bytes, "sound");
    EXPECT_EQ(stream.seek_fn(stream.cookie, 3), 3);
    EXPECT_EQ(stream.read_fn(stream.cookie, bytes, sizeof bytes), 2);
    EXPECT_EQ(bytes[0], 'n');
    EXPECT_EQ(stream.seek_fn(stream.cookie, -1), MPV_ERROR_GENERIC);
    stream.close_fn(stream.cookie);
}

TEST_F(StreamTableTest, AFileThatWasNotAnnouncedIsNotOpened) {
    mpv_stream_cb_info stream{};
    for (std::string address : {"quavernet://7", "quavernet://", "quavernet://x", "quavernet"}) {
        EXPECT_EQ(registered.open(registered.table, address.data(), &stream), MPV_ERROR_LOADING_FAILED)
            << address;
    }
}

TEST_F(StreamTableTest, TheEngineMayCallAFileOffThatItHasClosed) {
    const mpv_stream_cb_info stream = Open(1, Song());
    stream.close_fn(stream.cookie);
    table.Forget(1);
    stream.cancel_fn(stream.cookie);
    EXPECT_EQ(table.Opened(1), nullptr);
}

TEST_F(StreamTableTest, TheEngineMayCallAFileOffWhileItClosesIt) {
    const std::string song = Song();
    for (std::uint64_t number = 1; number <= 200; ++number) {
        const mpv_stream_cb_info stream = Open(number, song);
        std::atomic<bool> isReady = false;
        std::thread other([&] {
            isReady = true;
            stream.cancel_fn(stream.cookie);
        });
        while (!isReady) {
        }
        table.Forget(number);
        stream.close_fn(stream.cookie);
        other.join();
    }
}

TEST_F(StreamTableTest, AFileThatWasCalledOffGivesNoByteMore) {
    const mpv_stream_cb_info stream = Open(1, Song());
    EXPECT_EQ(stream.size_fn(stream.cookie), 5);
    stream.cancel_fn(stream.cookie);
    char byte = 0;
    EXPECT_LT(stream.read_fn(stream.cookie, &byte, 1), 0);
    stream.close_fn(stream.cookie);
}

} // namespace

} // namespace quavernet::test
