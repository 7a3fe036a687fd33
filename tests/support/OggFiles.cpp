#include "support/OggFiles.h"

#include "support/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <span>
#include <stdexcept>

#include <ogg/ogg.h>

namespace quavernet::test {

std::string Quoted(const std::string& text) {
    std::string result = "'";
    for (const char c : text) {
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return result + "'";
}

std::string OutputOf(const std::string& command) {
    const auto close = [](FILE* pipe) { ::pclose(pipe); };
    const std::unique_ptr<FILE, decltype(close)> pipe(::popen(command.c_str(), "r"), close);
    if (!pipe) {
        throw std::runtime_error("cannot run " + command);
    }
    std::string output;
    std::array<char, 65536> piece{};
    while (const std::size_t size = std::fread(piece.data(), 1, piece.size(), pipe.get())) {
        output.append(piece.data(), size);
    }
    return output;
}

namespace {

std::string NumberBytes(std::uint64_t value, std::size_t size) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i) {
        bytes += static_cast<char>(value >> (8 * i) & 0xff);
    }
    return bytes;
}

std::string BigEndian32(std::uint32_t value) {
    std::string bytes = LittleEndian32(value);
    std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

std::uint64_t NumberAt(const std::string& bytes, std::size_t at, std::size_t size) {
    std::uint64_t value = 0;
    for (std::size_t i = size; i-- > 0;) {
        value = value << 8 | static_cast<std::uint8_t>(bytes[at + i]);
    }
    return value;
}

std::string Encode(const std::string& sound, const std::string& options) {
    const TemporaryFolder folder;
    const std::string wave = folder / "a.wav";
    const std::string ogg = folder / "a.ogg";
    OutputOf("sox -n -b 16 " + sound.substr(0, sound.find('|')) + " " + Quoted(wave) + " " +
             sound.substr(sound.find('|') + 1) + " 2>&1");
    OutputOf("LC_ALL=C.UTF-8 oggenc -Q " + options + " -o " + Quoted(ogg) + " " + Quoted(wave) + " 2>&1");
    std::string bytes = ReadWhole(ogg);
    if (bytes.empty()) {
        throw std::runtime_error("sox and oggenc made no file");
    }
    return bytes;
}

std::string PageBytes(const ForgedPage& page) {
    std::string bytes = std::string("OggS") + static_cast<char>(page.version) + static_cast<char>(page.flags);
    bytes += NumberBytes(static_cast<std::uint64_t>(page.granule), 8) + LittleEndian32(page.serial) +
             LittleEndian32(page.sequence) + LittleEndian32(0) + static_cast<char>(page.lacing.size());
    bytes.append(page.lacing.begin(), page.lacing.end()).append(page.body);
    auto* const data = reinterpret_cast<unsigned char*>(bytes.data());
    const std::size_t headerSize = 27 + page.lacing.size();
    ogg_page whole{data, static_cast<long>(headerSize), data + headerSize,
                   static_cast<long>(bytes.size() - headerSize)};
    ogg_page_checksum_set(&whole);
    return bytes;
}

} // namespace

std::string LittleEndian32(std::uint32_t value) {
    return NumberBytes(value, 4);
}

std::vector<ForgedPage> SplitPages(const std::string& ogg) {
    std::vector<ForgedPage> pages;
    for (std::size_t at = 0; at + 27 <= ogg.size() && ogg.compare(at, 4, "OggS") == 0;) {
        ForgedPage page;
        page.flags = static_cast<std::uint8_t>(ogg[at + 5]);
        page.granule = static_cast<std::int64_t>(NumberAt(ogg, at + 6, 8));
        page.serial = static_cast<std::uint32_t>(NumberAt(ogg, at + 14, 4));
        page.sequence = static_cast<std::uint32_t>(NumberAt(ogg, at + 18, 4));
        const auto segments = static_cast<std::uint8_t>(ogg[at + 26]);
        std::size_t size = 0;
        for (std::size_t i = 0; i < segments; ++i) {
            page.lacing.push_back(static_cast<std::uint8_t>(ogg[at + 27 + i]));
            size += page.lacing.back();
        }
        page.body = ogg.substr(at + 27 + segments, size);
        at += 27 + segments + size;
        pages.push_back(std::move(page));
    }
    return pages;
}

std::string JoinPages(const std::vector<ForgedPage>& pages) {
    std::string ogg;
    for (const ForgedPage& page : pages) {
        ogg += PageBytes(page);
    }
    return ogg;
}

std::vector<std::string> PacketsOf(const std::vector<ForgedPage>& pages) {
    std::vector<std::string> packets;
    std::string packet;
    for (const ForgedPage& page : pages) {
        std::size_t at = 0;
        for (const std::uint8_t length : page.lacing) {
            packet += page.body.substr(at, length);
            at += length;
            if (length < 255) {
                packets.push_back(std::move(packet));
                packet.clear();
            }
        }
    }
    return packets;
}

std::vector<ForgedPage> PackPages(const std::vector<std::string>& packets, std::uint32_t serial,
                                  std::uint32_t sequence) {
    std::vector<std::uint8_t> lacing;
    std::string data;
    for (const std::string& packet : packets) {
        lacing.insert(lacing.end(), packet.size() / 255, 255);
        lacing.push_back(static_cast<std::uint8_t>(packet.size() % 255));
        data += packet;
    }
    std::vector<ForgedPage> pages;
    std::size_t taken = 0;
    for (std::size_t first = 0; first < lacing.size(); first += 255) {
        ForgedPage page;
        page.lacing.assign(lacing.begin() + static_cast<std::ptrdiff_t>(first),
                           lacing.begin() +
                               static_cast<std::ptrdiff_t>(std::min(first + 255, lacing.size())));
        page.flags = first > 0 && lacing[first - 1] == 255 ? 1 : 0;
        page.serial = serial;
        page.sequence = sequence++;
        std::size_t size = 0;
        for (const std::uint8_t length : page.lacing) {
            size += length;
        }
        page.body = data.substr(taken, size);
        taken += size;
        pages.push_back(std::move(page));
    }
    return pages;
}

std::string CommentPacket(const std::vector<std::string>& comments, const std::string& vendor) {
    std::string packet = "\x03vorbis" + LittleEndian32(static_cast<std::uint32_t>(vendor.size())) + vendor +
                         LittleEndian32(static_cast<std::uint32_t>(comments.size()));
    for (const std::string& comment : comments) {
        packet += LittleEndian32(static_cast<std::uint32_t>(comment.size())) + comment;
    }
    return packet + '\x01';
}

std::string WithCommentPacket(const std::string& ogg, const std::string& packet) {
    const std::vector<ForgedPage> pages = SplitPages(ogg);
    const std::vector<std::string> packets = PacketsOf(pages);
    std::vector<ForgedPage> result = {pages[0]};
    for (ForgedPage& page : PackPages({packet, packets[2]}, pages[0].serial, 1)) {
        result.push_back(std::move(page));
    }
    const auto isAudio = [](const ForgedPage& page) { return page.granule > 0; };
    for (auto page = std::find_if(pages.begin(), pages.end(), isAudio); page != pages.end(); ++page) {
        result.push_back(*page);
        result.back().sequence = static_cast<std::uint32_t>(result.size() - 1);
    }
    return JoinPages(result);
}

std::string WithComments(const std::string& ogg, const std::vector<std::string>& comments) {
    return WithCommentPacket(ogg, CommentPacket(comments));
}

std::string WithIdentification(const std::string& ogg, std::size_t offset, const std::string& bytes) {
    std::vector<ForgedPage> pages = SplitPages(ogg);
    pages[0].body.replace(offset, bytes.size(), bytes);
    return JoinPages(pages);
}

std::string WithLastGranule(const std::string& ogg, std::int64_t granule) {
    std::vector<ForgedPage> pages = SplitPages(ogg);
    pages.back().granule = granule;
    return JoinPages(pages);
}

std::string PictureComment(std::uint32_t kind, const std::string& mimeType, const std::string& description,
                           const std::string& data) {
    const auto counted = [](const std::string& text) {
        return BigEndian32(static_cast<std::uint32_t>(text.size())) + text;
    };
    const std::string block = BigEndian32(kind) + counted(mimeType) + counted(description) +
                              BigEndian32(600) + BigEndian32(500) + BigEndian32(24) + BigEndian32(0) +
                              counted(data);
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text = "METADATA_BLOCK_PICTURE=";
    for (std::size_t at = 0; at < block.size(); at += 3) {
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            bits = bits << 8 | (at + i < block.size() ? static_cast<std::uint8_t>(block[at + i]) : 0U);
        }
        const std::size_t used = std::min<std::size_t>(3, block.size() - at) + 1;
        for (std::size_t i = 0; i < 4; ++i) {
            text += i < used ? digits[bits >> (18 - 6 * i) & 63] : '=';
        }
    }
    return text;
}

std::string ReadWhole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteWhole(const std::string& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
}

const std::string& EncodedOgg::Stereo() {
    static const std::string bytes = Encode("-r 44100 -c 2|synth 3 sine 440",
                                            "-t 'Über den Wolken' -a 'Die Ärzte' -l Größe -G Rock -d 2001 "
                                            "-c COMMENT=nice -c X-NOTE=kept");
    return bytes;
}

const std::string& EncodedOgg::Mono() {
    static const std::string bytes = Encode("-r 22050 -c 1|synth 2 sine 300", "");
    return bytes;
}

const std::string& EncodedOgg::Managed() {
    static const std::string bytes =
        Encode("-r 44100 -c 2|synth 3 sine 440", "-b 128 -m 96 -M 160 --managed -t Managed");
    return bytes;
}

const std::string& EncodedOgg::Long() {
    static const std::string bytes = Encode("-r 44100 -c 2|synth 20 whitenoise", "-q 6 -t Noise");
    return bytes;
}

std::string RealOggInfo(const std::vector<std::string>& paths) {
    std::string command = "LC_ALL=C.UTF-8 ogginfo";
    for (const std::string& path : paths) {
        command += " " + Quoted(path);
    }
    return OutputOf(command + " 2>/dev/null");
}

} // namespace quavernet::test
