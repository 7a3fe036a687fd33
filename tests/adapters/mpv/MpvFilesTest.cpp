// What the engine refuses, and that it reaches for nothing but the file itself.
#include "MpvTest.h"
#include "support/RealAudio.h"
#include "support/TestFiles.h"

#include <arpa/inet.h>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quavernet::test {

namespace {

using std::chrono::milliseconds;

/// A server on this machine that nobody should call.
class Listener {
public:
    Listener() : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        if (::bind(m_socket, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
            ::listen(m_socket, 5) != 0 ||
            ::getsockname(m_socket, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
            throw std::runtime_error("no server on this machine");
        }
        m_port = ntohs(address.sin_port);
    }
    ~Listener() { ::close(m_socket); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    std::string Address(const std::string& name) const {
        return "http://127.0.0.1:" + std::to_string(m_port) + "/" + name;
    }

    bool WasCalled() const {
        const int call = ::accept(m_socket, nullptr, nullptr);
        if (call >= 0) {
            ::close(call);
        }
        return call >= 0;
    }

private:
    int m_socket;
    int m_port = 0;
};

class MpvFilesTest : public MpvTest {
protected:
    std::string Write(const std::string& name, const std::string& bytes) {
        std::ofstream(folder / name, std::ios::binary) << bytes;
        return folder / name;
    }

    /// The number of the failure with which the file is refused; 0 if it is not.
    int Refused(const std::string& path) {
        return NumberOf([&] { player->SetFileName(path); });
    }
};

TEST_F(MpvFilesTest, WhatIsNoPlainFileIsRefused) {
    MakePlayer(Untimed);
    ASSERT_EQ(::mkfifo((folder / "pipe.mp3").c_str(), 0600), 0);
    std::filesystem::create_directory(folder / "folder.mp3");
    std::filesystem::create_symlink("/dev/zero", folder / "zero.mp3");
    EXPECT_EQ(Refused(folder / "pipe.mp3"), ErrorNumber::PathFileAccess);
    EXPECT_EQ(Refused(folder / "folder.mp3"), ErrorNumber::PathFileAccess);
    EXPECT_EQ(Refused("/dev/zero"), ErrorNumber::PathFileAccess);
    EXPECT_EQ(Refused(folder / "zero.mp3"), ErrorNumber::PathFileAccess);
    EXPECT_EQ(Refused(folder / "missing.mp3"), ErrorNumber::FileNotFound);
    EXPECT_EQ(Refused(folder / "missing/missing.mp3"), ErrorNumber::FileNotFound);
    EXPECT_EQ(Refused(""), ErrorNumber::FileNotFound);
    EXPECT_EQ(player->FileName(), "");
    EXPECT_EQ(heard.refusedLate, 0) << "told by the failure";
}

TEST_F(MpvFilesTest, ALinkToAFileIsPlayed) {
    MakePlayer(Untimed);
    std::filesystem::create_symlink(RealWave(1), folder / "link.wav");
    PlayToItsEnd(folder / "link.wav");
}

TEST_F(MpvFilesTest, WhatIsNoSoundIsRefused) {
    MakePlayer(Untimed);
    EXPECT_EQ(Refused(Write("empty.mp3", "")), ErrorNumber::PathFileAccess);
    EXPECT_EQ(Refused(Write("one.mp3", "x")), ErrorNumber::PathFileAccess);
    EXPECT_EQ(Refused(Write("text.mp3", std::string(5000, 'a') + "\n")), ErrorNumber::PathFileAccess);
    EXPECT_EQ(Refused(Write("zeros.mp3", std::string(300000, '\0'))), ErrorNumber::PathFileAccess);
    EXPECT_EQ(Refused(Write("header.wav", "RIFF\x24\x00\x00\x00WAVE")), ErrorNumber::PathFileAccess);
    EXPECT_EQ(Refused(Write("page.mp3", "<html><body>404</body></html>")), ErrorNumber::PathFileAccess);
}

TEST_F(MpvFilesTest, AFailureNamesTheFile) {
    MakePlayer(Untimed);
    const std::string path = Write("text.mp3", "no music\n");
    try {
        player->SetFileName(path);
        FAIL() << "played";
    } catch (const RuntimeError& error) {
        EXPECT_NE(error.Description().find(path), std::string::npos) << error.Description();
    }
}

TEST_F(MpvFilesTest, ListsOfFilesAndAddressesAreNoMusicAndNobodyIsCalled) {
    MakePlayer(Untimed);
    const Listener server;
    const std::string address = server.Address("song.mp3");
    const std::string song = RealMp3({"-b", "128"}, RealWave(1));
    const std::string texts[] = {
        "#EXTM3U\n#EXTINF:10,A\n" + address + "\n",
        "#EXTM3U\n" + song + "\n",
        address + "\n",
        song + "\n",
        "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:10\n#EXTINF:10,\n" + address + "\n#EXT-X-ENDLIST\n",
        "#EXTM3U\n#EXT-X-STREAM-INF:BANDWIDTH=128000\n" + address + "\n",
        "ffconcat version 1.0\nfile '" + address + "'\n",
        "ffconcat version 1.0\nfile '" + song + "'\n",
        "# mpv EDL v0\n" + address + "\n",
        "mpv EDL v0\n" + song + "\n",
        "FILE \"" + song + "\" MP3\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n",
        "[playlist]\nFile1=" + address + "\nNumberOfEntries=1\n",
        "<?xml version=\"1.0\"?><MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\"><BaseURL>" + address +
            "</BaseURL></MPD>",
        "[Reference]\nRef1=" + address + "\n",
        "v=0\no=- 0 0 IN IP4 127.0.0.1\nm=audio 5004 RTP/AVP 0\n",
    };
    int number = 0;
    for (const std::string& text : texts) {
        for (const char* extension : {".mp3", ".wav", ".m3u8", ".cue", ".edl"}) {
            const std::string path = Write(std::to_string(number++) + extension, text);
            EXPECT_EQ(Refused(path), ErrorNumber::PathFileAccess) << text << extension;
        }
    }
    loop.RunFor(milliseconds(100));
    EXPECT_FALSE(server.WasCalled());
}

TEST_F(MpvFilesTest, AnAddressIsAFileThatIsMissing) {
    MakePlayer(Untimed);
    const Listener server;
    for (const std::string& path :
         {server.Address("song.mp3"), std::string("file://") + RealWave(1),
          std::string("lavf://") + RealWave(1), std::string("av://lavfi:sine"), std::string("memory://RIFF"),
          std::string("fd://0"), std::string("edl://") + RealWave(1), std::string("-"),
          std::string("quavernet://1")}) {
        EXPECT_EQ(Refused(path), ErrorNumber::FileNotFound) << path;
    }
    EXPECT_FALSE(server.WasCalled());
}

TEST_F(MpvFilesTest, OtherKindsOfMediaAreRefused) {
    MakePlayer(Untimed);
    const std::string flac = folder / "a.flac";
    RunProgram({"sox", RealWave(1), flac});
    EXPECT_EQ(Refused(CopyTo(flac, folder / "flac.mp3")), ErrorNumber::PathFileAccess);
}

TEST_F(MpvFilesTest, AFileIsTakenByItsContentsAndNotByItsName) {
    MakePlayer(Untimed);
    EXPECT_EQ(Refused(CopyTo(RealWave(1), folder / "wave.mp3")), 0);
    EXPECT_EQ(Refused(CopyTo(RealMp3({"-b", "128"}), folder / "song.wav")), 0);
    EXPECT_EQ(Refused(CopyTo(RealMp3({"-b", "128"}), folder / "no extension")), 0);
}

TEST_F(MpvFilesTest, NamesOfAnyBytesAreFound) {
    MakePlayer(Untimed);
    for (const std::string& name :
         {std::string("\xff\xfe.wav"), std::string("%41 %s.wav"), std::string("a\nb.wav"),
          std::string("--vo=x11.wav"), std::string("Töne ünd?#&.wav"), std::string("[a,b]=\"c\"'.wav"),
          std::string("a%3d1%b.wav")}) {
        EXPECT_EQ(Refused(CopyTo(RealWave(1), folder / name)), 0) << name;
        EXPECT_EQ(player->FileName(), folder / name);
    }
    EXPECT_EQ(Refused(RealWave(1) + std::string("\0.mp3", 5)), ErrorNumber::FileNotFound);
}

TEST_F(MpvFilesTest, AFileThatWasCutPlaysAsFarAsItGoes) {
    MakePlayer(Untimed);
    for (const std::string& source :
         {RealMp3({"-b", "128"}, RealWave(4)), RealMp3({"-V", "4"}, RealWave(4)), RealWave(4)}) {
        const std::string path = CopyTo(source, folder / "cut.mp3");
        std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2 + 1);
        PlayToItsEnd(path);
    }
    EXPECT_EQ(heard.ends, 3);
    EXPECT_EQ(heard.refusedLate, 0);
}

TEST_F(MpvFilesTest, AFileThatVanishesWhileItPlaysGoesOn) {
    MakePlayer(Timed);
    const std::string path = CopyTo(RealWave(3), folder / "gone.wav");
    player->SetFileName(path);
    player->Play();
    loop.RunFor(milliseconds(100));
    std::filesystem::remove(path);
    EXPECT_TRUE(loop.RunUntil([&] { return heard.ends == 1; }));
    EXPECT_EQ(heard.refusedLate, 0);
}

TEST_F(MpvFilesTest, AFileThatShrinksWhileItPlaysIsRefusedAndHasNoEnd) {
    MakePlayer(Timed);
    const std::string path = CopyTo(RealWave(10), folder / "shrinks.wav");
    player->SetFileName(path);
    player->SetNextFile(RealWave(2));
    player->Play();
    loop.RunFor(milliseconds(100));
    std::filesystem::resize_file(path, std::filesystem::file_size(path) / 5);
    ASSERT_TRUE(loop.RunUntil([&] { return heard.refusedLate == 1; }));
    loop.RunFor(milliseconds(100));
    EXPECT_EQ(heard.refusedLate, 1);
    EXPECT_EQ(heard.ends, 0);
    EXPECT_FALSE(player->IsPlaying());
}

} // namespace

} // namespace quavernet::test
