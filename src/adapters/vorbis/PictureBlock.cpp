#include "adapters/vorbis/PictureBlock.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/ByteOrder.h"

namespace quavernet::vorbis {

namespace {

constexpr std::array<std::string_view, 21> PictureKinds = {
    "Other",
    "32x32 pixels file icon (PNG)",
    "Other file icon",
    "Cover (front)",
    "Cover (back)",
    "Leaflet page",
    "Media",
    "Lead artist/lead performer/soloist",
    "Artist/performer",
    "Conductor",
    "Band/Orchestra",
    "Composer",
    "Lyricist/text writer",
    "Recording Location",
    "During recording",
    "During performance",
    "Movie/video screen capture",
    "A bright coloured fish",
    "Illustration",
    "Band/artist logotype",
    "Publisher/Studio logotype",
};

int Base64Value(char c) {
    if (c >= 'A' && c <= 'Z') {
        return c - 'A';
    }
    if (c >= 'a' && c <= 'z') {
        return c - 'a' + 26;
    }
    if (c >= '0' && c <= '9') {
        return c - '0' + 52;
    }
    return c == '+' ? 62 : c == '/' ? 63 : -1;
}

/// Groups of four up to the first padded one; nothing if a group is broken.
std::optional<std::vector<std::uint8_t>> DecodeBase64(std::string_view text) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(text.size() / 4 * 3);
    for (std::size_t at = 0; at < text.size(); at += 4) {
        const auto group = text.substr(at, 4);
        const std::size_t digits = group.find('=') == std::string_view::npos ? 4 : group.find('=');
        if (digits == 0) {
            break;
        }
        if (group.size() < 4 || digits < 2 || (digits == 2 && group[3] != '=')) {
            return std::nullopt;
        }
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            const int value = i < digits ? Base64Value(group[i]) : 0;
            if (value < 0) {
                return std::nullopt;
            }
            bits = bits << 6 | static_cast<std::uint32_t>(value);
        }
        for (std::size_t i = 0; i + 1 < digits; ++i) {
            bytes.push_back(static_cast<std::uint8_t>(bits >> (16 - 8 * i)));
        }
        if (digits < 4) {
            break;
        }
    }
    return bytes;
}

struct Picture {
    std::uint32_t kind = 0;
    std::string mimeType;
    std::string description;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t depth = 0;
    std::uint32_t colors = 0;
    std::string data;
};

/// Takes numbers and counted texts off the front; `failed` once one did not fit.
class PictureCursor {
public:
    explicit PictureCursor(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

    std::uint32_t Number() {
        if (failed || m_bytes.size() < 4) {
            failed = true;
            return 0;
        }
        const auto number = BigEndian<std::uint32_t>(m_bytes, 0);
        m_bytes = m_bytes.subspan(4);
        return number;
    }

    std::string Text() {
        const std::uint32_t length = Number();
        if (failed || length > m_bytes.size()) {
            failed = true;
            return {};
        }
        const auto text = m_bytes.first(length);
        m_bytes = m_bytes.subspan(length);
        return {text.begin(), text.end()};
    }

    bool failed = false;

private:
    std::span<const std::uint8_t> m_bytes;
};

std::optional<Picture> ReadPicture(std::string_view base64) {
    const auto bytes = DecodeBase64(base64);
    if (!bytes) {
        return std::nullopt;
    }
    PictureCursor cursor(*bytes);
    Picture picture;
    picture.kind = cursor.Number();
    picture.mimeType = cursor.Text();
    picture.description = cursor.Text();
    picture.width = cursor.Number();
    picture.height = cursor.Number();
    picture.depth = cursor.Number();
    picture.colors = cursor.Number();
    picture.data = cursor.Text();
    return cursor.failed ? std::nullopt : std::optional(std::move(picture));
}

void AppendLine(std::string& lines, std::string_view label, std::string_view value) {
    // A text ends at its first NUL.
    lines.append("\t\t").append(label).append(": ").append(value.substr(0, value.find('\0'))).append("\n");
}

} // namespace

void AppendPicture(std::string_view base64, std::string& lines) {
    const auto picture = ReadPicture(base64);
    if (!picture) {
        lines += "\tPicture: <corrupted>\n";
        return;
    }
    const auto kind = picture->kind < PictureKinds.size() ? PictureKinds[picture->kind] : "<unknown>";
    const auto number = std::to_string(static_cast<std::int32_t>(picture->kind));
    const bool isLink = picture->mimeType == "-->";
    lines.append("\tPicture: ").append(number).append(" (").append(kind).append(")\n");
    if (!isLink) {
        AppendLine(lines, "MIME-Type", picture->mimeType);
    }
    AppendLine(lines, "Description", picture->description);
    AppendLine(lines, "Width", std::to_string(picture->width));
    AppendLine(lines, "Height", std::to_string(picture->height));
    AppendLine(lines, "Color depth", std::to_string(picture->depth));
    if (picture->colors != 0) {
        AppendLine(lines, "Used colors", std::to_string(picture->colors));
    }
    if (isLink) {
        AppendLine(lines, "URL", picture->data);
    } else if (!picture->data.empty()) {
        lines.append("\t\tSize: ").append(std::to_string(picture->data.size())).append(" bytes\n");
    }
}

} // namespace quavernet::vorbis
