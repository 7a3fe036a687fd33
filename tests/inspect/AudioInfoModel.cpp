#include "inspect/AudioInfoModel.h"

#include <cctype>
#include <cmath>
#include <optional>
#include <sstream>

namespace quavernet::test {

namespace {

// Text functions that count from 1.
std::string Mid(const std::string& text, int position, int count) {
    if (position > static_cast<int>(text.size())) {
        return "";
    }
    return text.substr(static_cast<std::size_t>(position - 1), static_cast<std::size_t>(count));
}

std::string Right(const std::string& text, std::size_t count) {
    return text.size() <= count ? text : text.substr(text.size() - count);
}

std::string Lower(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return text;
}

// The byte at a position that counts from 1. Reading before the file fails, after it gives 0.
std::optional<int> Get(const std::string& file, int position) {
    if (position < 1) {
        return std::nullopt;
    }
    return position > static_cast<int>(file.size())
               ? 0
               : static_cast<unsigned char>(file[static_cast<std::size_t>(position - 1)]);
}

double BitsToNumber(const std::string& bits) {
    double number = 0;
    const int length = static_cast<int>(bits.size());
    for (int i = 1; i <= length; ++i) {
        if (Mid(bits, i, 1) == "1") {
            number += std::pow(2, length - i);
        }
    }
    return number;
}

std::string BitsOfBytes(double bytes[4]) {
    std::string bits;
    for (int i = 0; i < 4; ++i) {
        for (int j = 7; j >= 0; --j) {
            if (std::floor(bytes[i] / std::pow(2, j)) == 1) {
                bits += "1";
                bytes[i] -= std::pow(2, j);
            } else if (!bits.empty()) {
                bits += "0";
            }
        }
    }
    return bits;
}

// The list's element, or nothing for an index out of range.
template <typename T> std::optional<T> Element(const std::vector<T>& list, double index) {
    if (index < 0 || index >= static_cast<double>(list.size())) {
        return std::nullopt;
    }
    return list[static_cast<std::size_t>(index)];
}

std::vector<double> BitRateList(double key) {
    if (key == 11) {
        return {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448};
    }
    if (key == 12) {
        return {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384};
    }
    if (key == 13) {
        return {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
    }
    if (key == 21 || key == 251) {
        return {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256};
    }
    if (key == 22 || key == 23 || key == 252 || key == 253) {
        return {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
    }
    return {};
}

int Asc(const std::string& text, int position) {
    return position > static_cast<int>(text.size())
               ? 0
               : static_cast<unsigned char>(text[static_cast<std::size_t>(position - 1)]);
}

} // namespace

std::string AudioInfoModel::ReadMpegHeader(const std::string& file) {
    if (file.size() < 256) {
        return "";
    }
    int kept = 0;
    for (int position = 1; position <= 5000; ++position) {
        if (Get(file, position) == 0xFF) {
            const auto next = Get(file, position + 1);
            if (next && (*next == 0xFA || *next == 0xFB)) {
                kept = position;
                break;
            }
        }
    }
    std::string mark;
    for (int i = 0; i < 4; ++i) {
        mark += static_cast<char>(*Get(file, kept + 36 + i));
    }
    if (mark == "Xing") {
        isVbr = true;
        vbrFrames = 0;
        for (int i = 44; i <= 47; ++i) {
            vbrFrames = vbrFrames * 256 + *Get(file, kept + i);
        }
    } else {
        isVbr = false;
    }
    double bytes[4] = {0, 0, 0, 0};
    for (int i = 0; i < 4; ++i) {
        if (const auto byte = Get(file, kept + i)) {
            bytes[i] = *byte;
        }
    }
    return BitsOfBytes(bytes);
}

double AudioInfoModel::FallbackBitRate(const std::string& file) const {
    const std::string joined = "999,999,999,999,999,999,032,032,032,032,008,008,064,048,040,048,016,016,"
                               "096,056,048,056,024,024,128,064,056,064,032,032,160,080,064,080,040,040,"
                               "192,096,080,096,048,048,224,112,096,112,056,056,256,128,112,128,064,064,"
                               "288,160,128,144,080,080,320,192,160,160,096,096,352,224,192,176,112,112,"
                               "384,256,224,192,128,128,416,320,256,224,144,144,448,384,320,256,160,160,"
                               "999,999,999,999,999,999";
    std::vector<int> values;
    std::istringstream stream(joined);
    for (std::string piece; std::getline(stream, piece, ',');) {
        values.push_back(std::stoi(piece));
    }
    int table[8][16] = {};
    for (std::size_t row = 1; row <= 14; ++row) {
        for (std::size_t y = 0; y <= 2; ++y) {
            table[7 - y][row] = values[row * 6 + y];
            table[3 - y][row] = values[row * 6 + 3 + y];
        }
    }
    const std::string text = file.size() < 4096 ? "" : file.substr(0, 4096);
    std::string group;
    int x = 0;
    while (x != 4095) {
        ++x;
        const int a = Asc(text, x);
        const int b = Asc(text, x + 1);
        if (a == 255 && (b & 224) == 224) {
            group = Mid(text, x + 1, 3);
            break;
        }
        const int c1 = Asc(text, x), c2 = Asc(text, x + 1), c3 = Asc(text, x + 2);
        const int first = (c1 & 15) * 16 | (c2 & 240) / 16;
        const int second = (c2 & 15) * 16 | (c3 & 240) / 16;
        if (first == 255 && (second & 224) == 224) {
            group = Mid(text, x + 2, 3);
            break;
        }
    }
    const int w1 = Asc(group, 1);
    const int w2 = Asc(group, 2);
    const int layerBits = (w1 & 6) / 2;
    const int headerVersionBits = (w1 & 24) / 8;
    const int column = layerBits | 4 * (headerVersionBits & 1);
    const int row = (w2 & 240) / 16;
    return table[column][row];
}

AudioInfo AudioInfoModel::ReadAudioInfo(const std::string& path, const std::string& file) {
    AudioInfo info;
    const std::string h = ReadMpegHeader(file);
    const std::vector<std::string> modes = {"Stereo", "Joint stereo", "Zwei-Kanal", "Ein-Kanal"};
    const std::vector<std::string> emphases = {"no", "50/15", "reserviert", "CCITT J 17"};
    const std::vector<std::string> noYes = {"Nein", "Ja"};
    const std::vector<std::string> yesNo = {"Ja", "Nein"};
    const double version = *Element<double>({25, 0, 2, 1}, BitsToNumber(Mid(h, 12, 2)));
    const double layer = *Element<double>({0, 3, 2, 1}, BitsToNumber(Mid(h, 14, 2)));
    const std::string mode = *Element(modes, BitsToNumber(Mid(h, 25, 2)));
    const std::string emphasis = *Element(emphases, BitsToNumber(Mid(h, 31, 2)));
    const bool isMp3 = Lower(Right(path, 3)) == "mp3";
    double frequency = 0;
    double bitRate = 0;
    if (isMp3) {
        std::vector<double> frequencies;
        if (version == 1) {
            frequencies = {44100, 48000, 32000};
        } else if (version == 2 || version == 25) {
            frequencies = {22050, 24000, 16000};
        } else {
            return info;
        }
        frequency = Element(frequencies, BitsToNumber(Mid(h, 21, 2))).value_or(0);
        if (isVbr) {
            const std::vector<std::optional<double>> factors = {std::nullopt, 12, 144, 144};
            const auto factor = *Element(factors, layer);
            if (factor && std::floor(vbrFrames) != 0) {
                bitRate =
                    static_cast<double>(file.size()) * frequency / std::floor(vbrFrames) / 1000 / *factor;
            }
        } else {
            const std::string key =
                std::to_string(static_cast<int>(version)) + std::to_string(static_cast<int>(layer));
            const std::vector<double> list = BitRateList(std::stod(key));
            if (list.empty()) {
                return info;
            }
            bitRate = Element(list, BitsToNumber(Mid(h, 17, 4))).value_or(0);
        }
        if (bitRate == 0) {
            bitRate = FallbackBitRate(file);
        }
    }
    info.OriginalFlag = *Element(noYes, BitsToNumber(Mid(h, 30, 1)));
    info.CopyFlag = *Element(noYes, BitsToNumber(Mid(h, 29, 1)));
    info.PaddingFlag = *Element(noYes, BitsToNumber(Mid(h, 23, 1)));
    info.PrivateFlag = *Element(noYes, BitsToNumber(Mid(h, 24, 1)));
    info.ProtectedFlag = *Element(yesNo, BitsToNumber(Mid(h, 16, 1)));
    if (isMp3) {
        const double bits = static_cast<double>(file.size()) * 8;
        if (bits <= 2147483647.0 && bitRate != 0) {
            info.Length = static_cast<std::int32_t>(std::floor(bits / bitRate / 1000));
        }
    }
    const double down = std::floor(bitRate);
    const double half = bitRate - down;
    const double rounded = half < 0.5 || (half == 0.5 && std::fmod(down, 2) == 0) ? down : down + 1;
    info.BitRate = rounded <= 32767 ? static_cast<std::int16_t>(rounded) : std::int16_t{0};
    info.Frequency = static_cast<std::int32_t>(frequency);
    info.Mode = mode;
    info.Emphasis = emphasis;
    info.Version = static_cast<std::int16_t>(version);
    info.Layer = static_cast<std::int16_t>(layer);
    return info;
}

} // namespace quavernet::test
