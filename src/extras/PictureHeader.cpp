#include "extras/PictureHeader.h"

#include "platform/UserFiles.h"

#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <span>
#include <string_view>

namespace quavernet {

namespace {

constexpr std::uint64_t TooMuch = std::numeric_limits<std::uint64_t>::max();
constexpr int MostSegments = 10000;
constexpr std::uint64_t MostSegmentBytes = 32'000'000; // A profile has 16 MB at most.
constexpr int MostScans = 30; // Programs write about ten. Each is a walk over the whole picture.
constexpr int MostChunks = 100'000;
constexpr int MostPackedChunks = 6; // A profile and some texts. Each may be unpacked to 8 MB.
constexpr std::uint64_t MostTextBytes = 16'000'000;

/// Reads on from an offset, a piece at a time.
class Bytes {
public:
    Bytes(const BinaryFile& file, std::uint64_t offset) : m_file(file), m_next(offset) {}

    /// Nothing at the end of the file.
    std::optional<std::uint8_t> Next() {
        if (m_at == m_held) {
            m_held = m_file.ReadAt(m_next, m_piece);
            m_next += m_held;
            m_at = 0;
            if (m_held == 0) {
                return std::nullopt;
            }
        }
        return std::to_integer<std::uint8_t>(m_piece[m_at++]);
    }
    /// A number of two bytes, the greater one first.
    std::optional<std::uint32_t> Next16() {
        const auto high = Next();
        const auto low = Next();
        return high && low ? std::optional(*high * 256U + *low) : std::nullopt;
    }
    /// As many bytes as the text has; false if the file ends before.
    bool NextText(std::span<char> text) {
        for (char& c : text) {
            const auto byte = Next();
            if (!byte) {
                return false;
            }
            c = static_cast<char>(*byte);
        }
        return true;
    }
    void Skip(std::uint64_t count) {
        const std::uint64_t held = m_held - m_at;
        if (count <= held) {
            m_at += static_cast<std::size_t>(count);
        } else {
            m_next += count - held;
            m_at = m_held = 0;
        }
    }
    /// The byte after the next 0xFF that is followed by neither 0xFF nor 0: a marker. Decoders find markers
    /// so, whatever is before them.
    std::optional<std::uint8_t> NextMarker() {
        auto byte = Next();
        while (byte) {
            if (*byte != 0xFF) {
                byte = Next();
                continue;
            }
            while (byte && *byte == 0xFF) {
                byte = Next();
            }
            if (byte && *byte != 0) {
                return byte;
            }
        }
        return std::nullopt;
    }

private:
    const BinaryFile& m_file;
    std::uint64_t m_next;
    std::array<std::byte, 4096> m_piece;
    std::size_t m_held = 0;
    std::size_t m_at = 0;
};

// Markers of a JPEG stream (ITU-T T.81, table B.1).
constexpr std::uint8_t StartOfScan = 0xDA;
constexpr std::uint8_t EndOfImage = 0xD9;

bool IsStartOfFrame(std::uint8_t marker) {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

bool IsProgressive(std::uint8_t startOfFrame) {
    return (startOfFrame & 3U) == 2;
}

bool StandsAlone(std::uint8_t marker) {
    return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8);
}

struct Frame {
    bool Progressive = false;
    std::uint64_t Blocks = 0; ///< Of 8 x 8 samples, of all components, none of them subsampled.
    std::uint32_t Components = 0;
};

bool HasTooManyScans(Bytes& bytes) {
    int scans = 1;
    while (const auto marker = bytes.NextMarker()) {
        if (*marker == EndOfImage) {
            return false;
        }
        if (*marker == StartOfScan && ++scans > MostScans) {
            return true;
        }
    }
    return false;
}

std::uint64_t CoefficientBytes(const Frame& frame, Bytes& bytes) {
    const std::uint64_t components = bytes.Next().value_or(0);
    if (!frame.Progressive && components >= frame.Components) {
        return 0;
    }
    constexpr std::uint64_t BlockBytes = std::uint64_t(64) * 2;
    return HasTooManyScans(bytes) ? TooMuch : frame.Blocks * BlockBytes;
}

// The rest of a start of frame: one byte of precision, then height, width, number of components.
Frame ReadFrame(std::uint8_t marker, Bytes& bytes) {
    bytes.Skip(1);
    const std::uint64_t height = bytes.Next16().value_or(0);
    const std::uint64_t width = bytes.Next16().value_or(0);
    Frame frame;
    frame.Progressive = IsProgressive(marker);
    frame.Components = bytes.Next().value_or(0);
    frame.Blocks = ((height + 7) / 8) * ((width + 7) / 8) * frame.Components;
    return frame;
}

} // namespace

PictureFormat FormatOfPicture(const BinaryFile& file) {
    std::array<std::byte, 12> head{};
    const std::size_t size = file.ReadAt(0, head);
    const std::string_view text(reinterpret_cast<const char*>(head.data()), size);
    if (text.starts_with("BM")) {
        return PictureFormat::Bmp;
    }
    if (text.starts_with("GIF87a") || text.starts_with("GIF89a")) {
        return PictureFormat::Gif;
    }
    if (text.starts_with("\xFF\xD8\xFF")) {
        return PictureFormat::Jpeg;
    }
    if (text.starts_with("\x89PNG")) {
        return PictureFormat::Png;
    }
    return text.starts_with("RIFF") && text.size() == head.size() && text.ends_with("WEBP")
               ? PictureFormat::WebP
               : PictureFormat::None;
}

std::uint64_t JpegCoefficientBytes(const BinaryFile& file) {
    Bytes bytes(file, 2);
    Frame frame;
    std::uint64_t held = 0;
    for (int segment = 0; segment < MostSegments && held <= MostSegmentBytes; ++segment) {
        const auto marker = bytes.NextMarker();
        if (!marker || *marker == EndOfImage) {
            return 0;
        }
        if (StandsAlone(*marker)) {
            continue;
        }
        const auto length = bytes.Next16();
        if (!length || *length < 2) {
            return 0;
        }
        if (*marker == StartOfScan) {
            return CoefficientBytes(frame, bytes);
        }
        held += *length;
        constexpr std::uint32_t FrameBytes = 6;
        if (IsStartOfFrame(*marker) && *length >= 2 + FrameBytes) {
            frame = ReadFrame(*marker, bytes);
            bytes.Skip(*length - 2 - FrameBytes);
        } else {
            bytes.Skip(*length - 2);
        }
    }
    return TooMuch;
}

bool HasOversizedTexts(const BinaryFile& file) {
    constexpr std::uint64_t SignatureBytes = 8;
    constexpr std::uint64_t ChecksumBytes = 4;
    Bytes bytes(file, SignatureBytes);
    int packed = 0;
    std::uint64_t held = 0;
    for (int chunk = 0; chunk < MostChunks; ++chunk) {
        const auto high = bytes.Next16();
        const auto low = bytes.Next16();
        std::array<char, 4> type{};
        if (!high || !low || !bytes.NextText(type)) {
            return false;
        }
        const std::uint64_t length = *high * std::uint64_t(65536) + *low;
        const std::string_view name(type.data(), type.size());
        if (name == "IEND") {
            return false;
        }
        if (name != "IDAT") {
            held += length;
            packed += name == "zTXt" || name == "iTXt" || name == "iCCP" ? 1 : 0;
        }
        if (packed > MostPackedChunks || held > MostTextBytes) {
            return true;
        }
        bytes.Skip(length + ChecksumBytes);
    }
    return true;
}

} // namespace quavernet
