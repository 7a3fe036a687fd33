#include "adapters/vorbis/VorbisHeaders.h"

#include <algorithm>
#include <string_view>

#include "platform/ByteOrder.h"

namespace quavernet::vorbis {

namespace {

constexpr std::string_view PacketMark = "vorbis";
constexpr std::size_t PrefixSize = 7;
constexpr std::size_t IdentificationSize = 30;

/// Reads lengths and texts of the comment packet; once a length does not fit, everything after it fails.
class CommentCursor {
public:
    explicit CommentCursor(Packet packet) : m_packet(packet), m_at(PrefixSize) {}

    std::size_t Left() const { return m_packet.size() - m_at; }

    std::optional<std::uint32_t> Number() {
        if (Left() < 4) {
            return std::nullopt;
        }
        const auto number = LittleEndian<std::uint32_t>(m_packet, m_at);
        m_at += 4;
        return number;
    }

    std::optional<std::string> Text() {
        const auto length = Number();
        if (!length || *length > Left()) {
            return std::nullopt;
        }
        const auto bytes = m_packet.subspan(m_at, *length);
        m_at += *length;
        return std::string(bytes.begin(), bytes.end());
    }

    bool FramingBit() const { return Left() >= 1 && (m_packet[m_at] & 1) != 0; }

private:
    Packet m_packet;
    std::size_t m_at;
};

std::size_t StoredSize(const std::string& text) {
    return 4 + text.size();
}

void AppendNumber(std::size_t number, PacketBytes& packet) {
    for (int shift = 0; shift < 32; shift += 8) {
        packet.push_back(static_cast<std::uint8_t>(number >> shift & 0xFF));
    }
}

void AppendText(const std::string& text, PacketBytes& packet) {
    AppendNumber(text.size(), packet);
    packet.insert(packet.end(), text.begin(), text.end());
}

} // namespace

bool IsHeader(Packet packet, std::uint8_t type) {
    return packet.size() >= PrefixSize && packet[0] == type &&
           std::equal(PacketMark.begin(), PacketMark.end(), packet.begin() + 1);
}

std::optional<Identification> ReadIdentification(Packet packet) {
    if (!IsHeader(packet, 1) || packet.size() < IdentificationSize) {
        return std::nullopt;
    }
    Identification id;
    id.version = LittleEndian<std::uint32_t>(packet, 7);
    id.channels = packet[11];
    id.rate = LittleEndian<std::uint32_t>(packet, 12);
    id.upperBitRate = LittleEndian<std::int32_t>(packet, 16);
    id.nominalBitRate = LittleEndian<std::int32_t>(packet, 20);
    id.lowerBitRate = LittleEndian<std::int32_t>(packet, 24);
    const int shortBlock = packet[28] & 15; // Powers of two: 64 to 8192 samples, the short one not above
    const int longBlock = packet[28] >> 4;  // the long one.
    const bool framingBit = (packet[29] & 1) != 0;
    const bool valid = id.version == 0 && id.channels > 0 && id.rate > 0 && shortBlock >= 6 &&
                       longBlock >= shortBlock && longBlock <= 13 && framingBit;
    return valid ? std::optional(id) : std::nullopt;
}

std::optional<Comments> ReadComments(Packet packet) {
    if (!IsHeader(packet, 3)) {
        return std::nullopt;
    }
    CommentCursor cursor(packet);
    Comments comments;
    auto vendor = cursor.Text();
    if (!vendor) {
        return std::nullopt;
    }
    comments.vendor = std::move(*vendor);
    const auto count = cursor.Number();
    if (!count || *count > cursor.Left() / 4) {
        return std::nullopt;
    }
    for (std::uint32_t i = 0; i < *count; ++i) {
        auto entry = cursor.Text();
        if (!entry) {
            return std::nullopt;
        }
        comments.entries.push_back(std::move(*entry));
    }
    return cursor.FramingBit() ? std::optional(std::move(comments)) : std::nullopt;
}

std::optional<PacketBytes> BuildComments(const Comments& comments) {
    std::size_t size = PrefixSize + StoredSize(comments.vendor) + 4 + 1;
    for (const std::string& entry : comments.entries) {
        size += StoredSize(entry);
    }
    if (size > LargestHeader) {
        return std::nullopt;
    }
    PacketBytes packet;
    packet.reserve(size);
    packet.push_back(3);
    packet.insert(packet.end(), PacketMark.begin(), PacketMark.end());
    AppendText(comments.vendor, packet);
    AppendNumber(comments.entries.size(), packet);
    for (const std::string& entry : comments.entries) {
        AppendText(entry, packet);
    }
    packet.push_back(1); // The framing bit.
    return packet;
}

} // namespace quavernet::vorbis
