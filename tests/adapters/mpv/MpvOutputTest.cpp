// What is heard: the sound that comes out of the engine, written to a file and measured.
#include "MpvTest.h"
#include "support/RealAudio.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <numbers>

namespace quavernet::test {

namespace {

constexpr int Rate = 44100;

/// A recording of two channels of 32-bit numbers, full scale 1.
struct Recording {
    std::uint32_t rate = 0;
    std::vector<double> left;
    std::vector<double> right;
};

Recording ReadRecording(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    Recording recording;
    const std::size_t data = bytes.find("data");
    if (data == std::string::npos || data < 28) {
        return recording;
    }
    std::memcpy(&recording.rate, bytes.data() + 24, sizeof recording.rate);
    for (std::size_t i = data + 8; i + 8 <= bytes.size(); i += 8) {
        float samples[2];
        std::memcpy(samples, bytes.data() + i, sizeof samples);
        recording.left.push_back(static_cast<double>(samples[0]));
        recording.right.push_back(static_cast<double>(samples[1]));
    }
    return recording;
}

/// How much of a tone is in a piece: its amplitude, full scale 1.
double Amplitude(const std::vector<double>& samples, std::size_t begin, std::size_t count, double frequency) {
    double real = 0;
    double imaginary = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const double angle = 2 * std::numbers::pi * frequency * static_cast<double>(begin + i) / Rate;
        real += samples[begin + i] * std::cos(angle);
        imaginary += samples[begin + i] * std::sin(angle);
    }
    return 2 * std::hypot(real, imaginary) / static_cast<double>(count);
}

/// Which of the tones is heard in a piece, by its place in the list; -1: none of them.
int ToneAt(const std::vector<double>& samples, std::size_t begin, std::size_t count,
           const std::vector<double>& tones) {
    for (std::size_t i = 0; i < tones.size(); ++i) {
        if (Amplitude(samples, begin, count, tones[i]) > 0.3) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

/// The longest run of samples below a thousandth of full scale.
std::size_t LongestSilence(const std::vector<double>& samples) {
    std::size_t longest = 0;
    std::size_t run = 0;
    for (const double sample : samples) {
        run = std::abs(sample) < 0.001 ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    return longest;
}

class MpvOutputTest : public MpvTest {
protected:
    void MakeRecorder() { MakePlayer({{"ao", "pcm"}, {"ao-pcm-file", folder / "out.wav"}}); }

    /// What was recorded. The recorder ends with the player.
    std::vector<double> Recorded() {
        player.reset();
        const Recording recording = ReadRecording(folder / "out.wav");
        EXPECT_EQ(recording.rate, static_cast<std::uint32_t>(Rate));
        return recording.left;
    }

    /// A wave of one tone at half of full scale.
    std::string Tone(double frequency, double seconds) {
        const std::string path = folder / (std::to_string(++m_tones) + ".wav");
        RunProgram({"sox", "-n", "-r", std::to_string(Rate), "-c", "2", "-b", "16", path, "synth",
                    std::to_string(seconds), "sine", std::to_string(frequency), "vol", "0.5"});
        return path;
    }

    /// Plays the files one after the other, each told of in time.
    void PlayInOrder(const std::vector<std::string>& paths) {
        const auto next = [&](std::size_t i) { return i + 1 < paths.size() ? paths[i + 1] : std::string(); };
        std::size_t at = 0;
        heard.atEnd = [&] {
            if (++at < paths.size()) {
                player->SetFileName(paths[at]);
                player->SetNextFile(next(at));
                player->Play();
            }
        };
        player->SetFileName(paths[0]);
        player->SetNextFile(next(0));
        player->Play();
        ASSERT_TRUE(loop.RunUntil([&] { return heard.ends == static_cast<int>(paths.size()); }));
        heard.atEnd = nullptr;
    }

private:
    int m_tones = 0;
};

TEST_F(MpvOutputTest, ThreeFilesAreHeardInTheirOrderWithoutSilenceBetweenThem) {
    MakeRecorder();
    constexpr double Seconds = 20;
    const std::vector<double> tones = {441, 882, 1764};
    PlayInOrder({RealMp3({"-b", "128"}, Tone(tones[0], Seconds)),
                 RealMp3({"-V", "4"}, Tone(tones[1], Seconds)), Tone(tones[2], Seconds)});
    EXPECT_EQ(heard.loadedLate + heard.refusedLate, 0);
    const std::vector<double> samples = Recorded();
    EXPECT_NEAR(static_cast<double>(samples.size()) / Rate, 3 * Seconds, 0.2);

    std::vector<int> order;
    constexpr std::size_t Piece = Rate / 100;
    for (std::size_t begin = 0; begin + Piece <= samples.size(); begin += Piece) {
        const int tone = ToneAt(samples, begin, Piece, tones);
        if (tone >= 0 && (order.empty() || order.back() != tone)) {
            order.push_back(tone);
        }
    }
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2}));
    // A tone of 441 Hz itself is below the limit for no more than a few samples.
    EXPECT_LT(LongestSilence(samples), 20U) << "of 44100 a second";
}

TEST_F(MpvOutputTest, ASeekLeavesOutWhatLiesBetween) {
    MakeRecorder();
    const std::string first = Tone(441, 10);
    const std::string second = Tone(882, 10);
    const std::string both = folder / "both.wav";
    RunProgram({"sox", first, second, both});
    for (const std::string& path : {both, RealMp3({"-b", "128"}, both), RealMp3({"-V", "4"}, both)}) {
        const int before = heard.ends;
        MakeRecorder();
        player->SetFileName(path);
        player->SetCurrentPosition(15);
        player->Play();
        ASSERT_TRUE(loop.RunUntil([&] { return heard.ends > before; }));
        const std::vector<double> samples = Recorded();
        EXPECT_NEAR(static_cast<double>(samples.size()) / Rate, 5, 0.15) << path;
        EXPECT_LT(Amplitude(samples, 0, Rate, 441), 0.02) << path;
        EXPECT_GT(Amplitude(samples, 0, Rate, 882), 0.3) << path;
    }
}

TEST_F(MpvOutputTest, TheVolumeIsHundredthsOfADecibel) {
    const std::string tone = Tone(882, 3);
    double full = 0;
    for (const std::int32_t volume : {0, -600, -1250, -2500}) {
        const int before = heard.ends;
        MakeRecorder();
        player->SetVolume(volume);
        EXPECT_EQ(player->Volume(), volume);
        player->SetFileName(tone);
        player->Play();
        ASSERT_TRUE(loop.RunUntil([&] { return heard.ends > before; }));
        const double loudness = Amplitude(Recorded(), Rate, Rate, 882);
        full = volume == 0 ? loudness : full;
        EXPECT_NEAR(2000 * std::log10(loudness / full), volume, 10) << "hundredths of a decibel";
    }
    EXPECT_NEAR(full, 0.5, 0.01);
}

TEST_F(MpvOutputTest, AVolumeAboveFullIsFull) {
    MakeRecorder();
    player->SetVolume(500);
    EXPECT_EQ(player->Volume(), MediaPlayer::FullVolume);
}

TEST_F(MpvOutputTest, AFileOfAnotherRateOrWithOneChannelFollowsWithoutSilence) {
    MakeRecorder();
    const std::string other = folder / "other.wav";
    RunProgram({"sox", "-n", "-r", "48000", "-c", "1", "-b", "16", other, "synth", "20", "sine", "882", "vol",
                "0.5"});
    PlayInOrder({Tone(441, 20), other});
    const std::vector<double> samples = Recorded();
    EXPECT_NEAR(static_cast<double>(samples.size()) / Rate, 40, 0.2);
    EXPECT_LT(LongestSilence(samples), 20U);
    EXPECT_NEAR(Amplitude(samples, 30 * Rate, Rate, 882), 0.5, 0.15);
}

TEST_F(MpvOutputTest, AFileThatIsAskedForHasItsOwnRateAndOneChannelIsHeardOnBothSides) {
    MakeRecorder();
    const std::string other = folder / "other.wav";
    RunProgram({"sox", "-n", "-r", "48000", "-c", "1", "-b", "16", other, "synth", "2", "sine", "882", "vol",
                "0.5"});
    PlayToItsEnd(Tone(441, 2));
    PlayToItsEnd(other);
    player.reset();
    const Recording recording = ReadRecording(folder / "out.wav");
    EXPECT_EQ(recording.rate, 48000U);
    EXPECT_GT(recording.left.size(), 0U);
    EXPECT_EQ(recording.left, recording.right);
}

} // namespace

} // namespace quavernet::test
