// Real audio files, made by real encoders once per test process into a folder of its own. Tests copy what
// they change.
#pragma once

#include <string>
#include <vector>

namespace quavernet::test {

/// Runs a program and waits for it. Throws std::runtime_error if it can't be run or fails.
void RunProgram(const std::vector<std::string>& command);

/// Path of a sine wave made by sox. The same arguments give the same file.
std::string RealWave(double seconds = 1, int rate = 44100, int channels = 2, int bits = 16);

/// Path of an MP3 file made by lame from a wave with these switches ("-b", "128", "--tt", "Titel").
std::string RealMp3(const std::vector<std::string>& switches, const std::string& wave = RealWave());

/// Path of an Ogg Vorbis file made by oggenc from a wave with these switches ("-t", "Titel").
std::string RealOgg(const std::vector<std::string>& switches, const std::string& wave = RealWave());

/// Copies a file and gives the target's path back.
std::string CopyTo(const std::string& source, const std::string& target);

} // namespace quavernet::test
