// Audio files made of bytes: just what the inspection looks at, in exactly known sizes.
#pragma once

#include <fstream>
#include <string>

namespace quavernet::test {

inline void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

/// Frames of MPEG 1 layer III at 128 kbit/s and 44100 Hz, after them a version 1 tag: 16000 bytes a second.
inline std::string Mp3Bytes(const std::string& title, const std::string& artist, const std::string& album,
                            char genre = 17, int seconds = 10) {
    const auto field = [](std::string text, std::size_t width) {
        text.resize(width, '\0');
        return text;
    };
    std::string bytes;
    const auto size = static_cast<std::size_t>(seconds) * 16000;
    while (bytes.size() < size) {
        bytes += "\xFF\xFB\x90" + std::string(414, '\0');
    }
    bytes.resize(size);
    return bytes + "TAG" + field(title, 30) + field(artist, 30) + field(album, 30) + field("1999", 4) +
           field("", 30) + genre;
}

/// One second of silence: mono, 8 bits, 8000 Hz.
inline std::string WaveBytes() {
    using namespace std::string_literals;
    return "RIFF\x64\x1F\0\0WAVEfmt \x10\0\0\0\x01\0\x01\0\x40\x1F\0\0\x40\x1F\0\0\x01\0\x08\0"s +
           "data\x40\x1F\0\0"s + std::string(8000, '\x80');
}

} // namespace quavernet::test
