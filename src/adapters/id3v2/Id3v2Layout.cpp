#include "adapters/id3v2/Id3v2Layout.h"

#include "platform/ByteOrder.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace quavernet::id3v2 {

namespace {

constexpr std::size_t FrameLimit = 65536;

struct FieldIds {
    Field field;
    std::string_view id;   ///< Version 2.3 and later.
    std::string_view id22; ///< Version 2.2.
};

// The first of a field's ids is the one that is written; the year has one of its own in version 2.4.
constexpr std::array<FieldIds, 8> Ids = {{{Field::Title, "TIT2", "TT2"},
                                          {Field::Performer, "TPE1", "TP1"},
                                          {Field::Album, "TALB", "TAL"},
                                          {Field::Year, "TYER", "TYE"},
                                          {Field::Year, "TDRC", ""},
                                          {Field::Genre, "TCON", "TCO"},
                                          {Field::Comment, "COMM", "COM"},
                                          {Field::Publisher, "TPUB", "TPB"}}};

std::string_view TextAt(ByteView bytes, std::size_t offset, std::size_t count) {
    return {reinterpret_cast<const char*>(bytes.data()) + offset, count};
}

std::size_t IdSize(unsigned major) {
    return major == 2 ? 3 : 4;
}

bool IsFrameId(std::string_view id) {
    return std::all_of(id.begin(), id.end(),
                       [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); });
}

// Whether a frame, padding or nothing at all begins here.
bool IsBoundary(TagBody& body, std::size_t offset, unsigned major) {
    if (offset >= body.Size()) {
        return offset == body.Size();
    }
    const ByteView bytes = body.View(offset, IdSize(major));
    return !bytes.empty() && (bytes[0] == std::byte{0} ||
                              (bytes.size() == IdSize(major) && IsFrameId(TextAt(bytes, 0, bytes.size()))));
}

// Bytes of the contents of the frame whose header begins at the offset; nothing if the file has been cut
// there meanwhile. Some writers put plain sizes into version 2.4: taken where only the plain one leads to the
// next frame.
std::optional<std::uint32_t> ContentSize(TagBody& body, std::size_t offset, unsigned major) {
    const std::size_t width = IdSize(major); // The size is as wide as the id before it.
    const ByteView field = body.View(offset + width, width);
    if (field.size() < width) {
        return std::nullopt;
    }
    const std::uint32_t plain = BigEndian<std::uint32_t>(field, 0, width);
    if (major < 4) {
        return plain;
    }
    const std::uint32_t size = SyncSafe(field, 0);
    const std::size_t contents = offset + FrameHeaderSize(major);
    const bool isPlain = plain != size && !IsBoundary(body, contents + size, major) &&
                         IsBoundary(body, contents + plain, major);
    return isPlain ? plain : size;
}

Field FieldOf(std::string_view id) {
    const auto found = std::find_if(Ids.begin(), Ids.end(), [&](const FieldIds& ids) {
        return id == (id.size() == 3 ? ids.id22 : ids.id);
    });
    return found == Ids.end() ? Field::None : found->field;
}

std::size_t ExtendedHeaderSize(const TagHeader& header, TagBody& body) {
    if (header.major == 2 || !header.HasFlag(TagHeader::ExtendedHeader) || body.Size() < 4) {
        return 0;
    }
    // Version 2.3 does not count the size itself, version 2.4 does.
    const ByteView field = body.View(0, 4);
    if (field.size() < 4) {
        return 0;
    }
    const std::size_t size = header.major == 3 ? std::size_t{BigEndian<std::uint32_t>(field, 0)} + 4
                                               : std::size_t{SyncSafe(field, 0)};
    return std::min(size, body.Size());
}

} // namespace

std::uint64_t TagHeader::TotalSize() const {
    return std::uint64_t{HeaderSize} + size + (major == 4 && HasFlag(Footer) ? HeaderSize : 0);
}

std::optional<TagHeader> ParseTagHeader(ByteView bytes) {
    if (bytes.size() < HeaderSize || TextAt(bytes, 0, 3) != "ID3") {
        return std::nullopt;
    }
    TagHeader header;
    header.major = std::to_integer<unsigned>(bytes[3]);
    header.revision = std::to_integer<unsigned>(bytes[4]);
    header.flags = std::to_integer<unsigned>(bytes[5]);
    header.size = SyncSafe(bytes, 6);
    const bool sevenBits = std::all_of(bytes.begin() + 6, bytes.begin() + 10,
                                       [](std::byte b) { return (b & std::byte{0x80}) == std::byte{0}; });
    if (header.major < 2 || header.major > 4 || !sevenBits) {
        return std::nullopt;
    }
    return header;
}

Bytes BuildTagHeader(const TagHeader& header, std::string_view mark) {
    Bytes bytes;
    for (const char c : mark) {
        bytes.push_back(static_cast<std::byte>(c));
    }
    bytes.push_back(static_cast<std::byte>(header.major));
    bytes.push_back(static_cast<std::byte>(header.revision));
    bytes.push_back(static_cast<std::byte>(header.flags));
    AppendSyncSafe(bytes, header.size);
    return bytes;
}

std::string_view FrameId(Field field, unsigned major) {
    if (field == Field::Year && major == 4) {
        return "TDRC";
    }
    const auto found =
        std::find_if(Ids.begin(), Ids.end(), [&](const FieldIds& ids) { return ids.field == field; });
    return major == 2 ? found->id22 : found->id;
}

std::size_t FrameHeaderSize(unsigned major) {
    return major == 2 ? 6 : 10;
}

ByteView MemoryBody::View(std::size_t offset, std::size_t count) {
    offset = std::min(offset, m_bytes.size());
    return m_bytes.subspan(offset, std::min(count, m_bytes.size() - offset));
}

FrameList ListFrames(const TagHeader& header, TagBody& body) {
    FrameList list;
    if (header.major == 2 && header.HasFlag(TagHeader::Compression)) {
        return list; // No way of compression was ever laid down.
    }
    list.begin = list.end = ExtendedHeaderSize(header, body);
    const std::size_t headerSize = FrameHeaderSize(header.major);
    while (list.frames.size() < FrameLimit && body.Size() - list.end >= headerSize) {
        const std::size_t idSize = IdSize(header.major);
        const ByteView idBytes = body.View(list.end, idSize);
        const std::string_view id = TextAt(idBytes, 0, idBytes.size());
        if (id.size() < idSize || !IsFrameId(id)) {
            break;
        }
        const Field field = FieldOf(id);
        const auto contents = ContentSize(body, list.end, header.major);
        if (!contents || *contents > body.Size() - list.end - headerSize) {
            break;
        }
        list.frames.push_back({list.end, headerSize + *contents, field});
        list.end += headerSize + *contents;
    }
    return list;
}

Bytes Resynchronise(ByteView body) {
    Bytes result;
    result.reserve(body.size());
    for (std::size_t i = 0; i < body.size(); ++i) {
        result.push_back(body[i]);
        if (body[i] == std::byte{0xFF} && i + 1 < body.size() && body[i + 1] == std::byte{0}) {
            ++i;
        }
    }
    return result;
}

std::uint32_t SyncSafe(ByteView bytes, std::size_t offset) {
    std::uint32_t value = 0;
    for (std::size_t i = offset; i < offset + 4; ++i) {
        value = value << 7 | (i < bytes.size() ? std::to_integer<std::uint32_t>(bytes[i]) & 0x7Fu : 0u);
    }
    return value;
}

void AppendBigEndian(Bytes& bytes, std::uint32_t value, std::size_t count) {
    for (std::size_t i = count; i-- > 0;) {
        bytes.push_back(static_cast<std::byte>(value >> (8 * i)));
    }
}

void AppendSyncSafe(Bytes& bytes, std::uint32_t value) {
    for (int i = 3; i >= 0; --i) {
        bytes.push_back(static_cast<std::byte>(value >> (7 * i) & 0x7Fu));
    }
}

} // namespace quavernet::id3v2
