#include "adapters/id3v2/Id3v2Frames.h"

#include "adapters/id3v2/Id3v2Texts.h"
#include "platform/CodePage.h"

#include <id3v2framefactory.h>
#include <id3v2header.h>
#include <unknownframe.h>

#include <algorithm>
#include <exception>
#include <memory>

namespace quavernet::id3v2 {

namespace {

constexpr std::size_t LargestCompressedFrame = std::size_t{1} << 16; // It unpacks to a thousand times that.
constexpr std::string_view DefaultLanguage = "eng";
constexpr std::size_t LanguageSize = 3;

TagLib::ByteVector ToTagLib(ByteView bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<unsigned int>(bytes.size())};
}

void AppendText(Bytes& bytes, std::string_view text) {
    for (const char c : text) {
        bytes.push_back(static_cast<std::byte>(c));
    }
}

// What the second flag byte of a frame says. All but unsynchronisation put bytes of their own between the
// frame's header and its contents.
struct FrameFlags {
    bool compressed = false;     ///< In version 2.3 with the unpacked size, 4 bytes.
    bool encrypted = false;      ///< With the method, 1 byte.
    bool grouped = false;        ///< With the group, 1 byte.
    bool unsynchronised = false; ///< From version 2.4 on.
    bool lengthTold = false;     ///< From version 2.4 on, with the unpacked size, 4 bytes.

    bool IsPacked() const { return compressed || unsynchronised || lengthTold; }
};

unsigned GroupFlag(unsigned major) {
    return major == 3 ? 0x20u : 0x40u;
}

FrameFlags FlagsOf(const TagHeader& header, ByteView frame) {
    if (header.major == 2) {
        return {};
    }
    const auto bits = std::to_integer<unsigned>(frame[9]);
    FrameFlags flags;
    flags.grouped = (bits & GroupFlag(header.major)) != 0;
    flags.compressed = (bits & (header.major == 3 ? 0x80u : 0x08u)) != 0;
    flags.encrypted = (bits & (header.major == 3 ? 0x40u : 0x04u)) != 0;
    flags.unsynchronised =
        header.major == 4 && (header.HasFlag(TagHeader::Unsynchronisation) || (bits & 0x02u) != 0);
    flags.lengthTold = header.major == 4 && (bits & 0x01u) != 0;
    return flags;
}

// What follows the frame's header without the byte that names its group, which no text needs: the last of the
// flags' bytes in version 2.3, the first in version 2.4.
Bytes Ungrouped(const TagHeader& header, const FrameFlags& flags, ByteView rest) {
    Bytes bytes(rest.begin(), rest.end());
    const std::size_t at = header.major == 3 && flags.compressed ? 4 : 0;
    if (flags.grouped && at < bytes.size()) {
        bytes.erase(bytes.begin() + static_cast<std::ptrdiff_t>(at));
    }
    return bytes;
}

// The contents before they were packed, by TagLib. The frame gets an id that no version knows, so that the
// library leaves the contents alone: it takes genres apart and turns years into dates.
Bytes Unpacked(const TagHeader& header, ByteView frame, const Bytes& rest) {
    Bytes bytes;
    AppendText(bytes, "QQQQ");
    if (header.major == 4) {
        AppendSyncSafe(bytes, static_cast<std::uint32_t>(rest.size()));
    } else {
        AppendBigEndian(bytes, static_cast<std::uint32_t>(rest.size()), 4);
    }
    bytes.push_back(frame[8]);
    bytes.push_back(frame[9] & static_cast<std::byte>(~GroupFlag(header.major)));
    bytes.insert(bytes.end(), rest.begin(), rest.end());
    TagHeader tag = header;
    if (header.major == 3) {
        tag.flags = 0; // Undone by now; version 2.4 does it frame by frame.
    }
    TagLib::ID3v2::Header tagOfLibrary(ToTagLib(BuildTagHeader(tag, "ID3")));
    const std::unique_ptr<TagLib::ID3v2::Frame> unpacked(
        TagLib::ID3v2::FrameFactory::instance()->createFrame(ToTagLib(bytes), &tagOfLibrary));
    const auto* unknown = dynamic_cast<const TagLib::ID3v2::UnknownFrame*>(unpacked.get());
    const TagLib::ByteVector data = unknown == nullptr ? TagLib::ByteVector() : unknown->data();
    const ByteView view = std::as_bytes(std::span<const char>(data.data(), data.size()));
    return {view.begin(), view.end()};
}

// A comment has a language and a description before its text.
FieldValue CommentOf(std::string_view contents, unsigned encoding) {
    if (contents.size() <= LanguageSize) {
        return {};
    }
    FieldValue value;
    value.language = contents.substr(0, LanguageSize);
    contents.remove_prefix(LanguageSize);
    std::size_t end = 0;
    const std::string_view description = FirstText(contents, encoding, end);
    if (end != std::string_view::npos) {
        value.description = DecodeText(description, encoding);
        // Some writers mark the description alone.
        const auto order = MarkedOrder(description);
        value.text = DecodeText(FirstText(contents.substr(end), encoding, end), encoding, order);
    }
    return value;
}

FieldValue ValueOf(Field field, std::string_view contents) {
    if (contents.empty()) {
        return {};
    }
    const auto encoding = static_cast<unsigned char>(contents.front());
    contents.remove_prefix(1);
    if (field == Field::Comment) {
        return CommentOf(contents, encoding);
    }
    std::size_t end = 0;
    return {DecodeText(FirstText(contents, encoding, end), encoding), {}, {}};
}

// Little-endian text after its mark, up to a NUL; the planes above the first are left to the library.
std::optional<std::string> PlainUtf16(ByteView contents) {
    const bool marked =
        contents.size() >= 2 && contents[0] == std::byte{0xFF} && contents[1] == std::byte{0xFE};
    if (!marked || contents.size() % 2 != 0) {
        return std::nullopt;
    }
    std::string text;
    for (std::size_t at = 2; at < contents.size(); at += 2) {
        const char32_t unit =
            std::to_integer<char32_t>(contents[at]) | std::to_integer<char32_t>(contents[at + 1]) << 8;
        if (unit == 0) {
            break;
        }
        if ((unit >= 0xD800 && unit < 0xE000) || unit >= 0xFFFE) {
            return std::nullopt;
        }
        if (unit < 0x80) {
            text += static_cast<char>(unit);
        } else {
            text += EncodeUtf8(unit);
        }
    }
    return text;
}

bool IsLatin1(std::string_view text) {
    while (!text.empty()) {
        const char32_t c = CodePoint(text);
        if (c > 0xFF || (c >= 0x80 && c < 0xA0)) {
            return false;
        }
        text.remove_prefix(CharacterLength(text));
    }
    return true;
}

void AppendUtf16Unit(Bytes& bytes, char32_t unit) {
    bytes.push_back(static_cast<std::byte>(unit & 0xFF));
    bytes.push_back(static_cast<std::byte>(unit >> 8));
}

void AppendCharacter(Bytes& bytes, char32_t c, Encoding encoding) {
    if (encoding == Latin1) {
        bytes.push_back(static_cast<std::byte>(c));
    } else if (encoding == Utf8) {
        AppendText(bytes, EncodeUtf8(c));
    } else if (c < 0x10000) {
        AppendUtf16Unit(bytes, c);
    } else {
        AppendUtf16Unit(bytes, 0xD800 + ((c - 0x10000) >> 10));
        AppendUtf16Unit(bytes, 0xDC00 + ((c - 0x10000) & 0x3FF));
    }
}

// NULs would end the value: they are left out.
void AppendString(Bytes& bytes, std::string_view text, Encoding encoding) {
    if (encoding == Utf16) {
        AppendUtf16Unit(bytes, 0xFEFF);
    }
    while (!text.empty()) {
        if (const char32_t c = CodePoint(text); c != 0) {
            AppendCharacter(bytes, c, encoding);
        }
        text.remove_prefix(CharacterLength(text));
    }
}

Bytes EncodeContents(unsigned major, Field field, const FieldValue& value) {
    const bool isComment = field == Field::Comment;
    const bool plain = IsLatin1(value.text) && (!isComment || IsLatin1(value.description));
    const Encoding encoding = major == 4 ? Utf8 : plain ? Latin1 : Utf16;
    Bytes bytes = {static_cast<std::byte>(encoding)};
    if (isComment) {
        AppendText(bytes, value.language.size() == 3 ? value.language : DefaultLanguage);
        AppendString(bytes, value.description, encoding);
        bytes.insert(bytes.end(), encoding == Utf16 ? 2 : 1, std::byte{0});
    }
    AppendString(bytes, value.text, encoding);
    return bytes;
}

} // namespace

std::optional<std::string> DecodePlainText(const TagHeader& header, ByteView frame) {
    const std::size_t headerSize = FrameHeaderSize(header.major);
    const bool plainFrame = header.major == 2 || (frame.size() > headerSize && frame[8] == std::byte{0} &&
                                                  frame[9] == std::byte{0});
    const bool unsynchronised = header.major == 4 && header.HasFlag(TagHeader::Unsynchronisation);
    if (frame.size() < headerSize + 2 || frame.size() > LargestFrame || !plainFrame || unsynchronised) {
        return std::nullopt;
    }
    const auto encoding = std::to_integer<unsigned>(frame[headerSize]);
    const ByteView contents = frame.subspan(headerSize + 1);
    if (encoding == Utf16) {
        return PlainUtf16(contents);
    }
    std::string_view text(reinterpret_cast<const char*>(contents.data()), contents.size());
    text = text.substr(0, text.find('\0'));
    if (encoding == Latin1) {
        return FromWindows1252(text);
    }
    return encoding == Utf8 && IsValidUtf8(text) ? std::optional<std::string>(text) : std::nullopt;
}

FieldValue DecodeFrame(const TagHeader& header, Field field, ByteView frame) {
    if (field != Field::Comment) {
        if (auto text = DecodePlainText(header, frame)) {
            return {std::move(*text), {}, {}};
        }
    }
    return DecodeAnyFrame(header, field, frame);
}

FieldValue DecodeAnyFrame(const TagHeader& header, Field field, ByteView frame) {
    const std::size_t headerSize = FrameHeaderSize(header.major);
    if (frame.size() <= headerSize || frame.size() > LargestFrame) {
        return {};
    }
    const FrameFlags flags = FlagsOf(header, frame);
    if (flags.encrypted || (flags.compressed && frame.size() > LargestCompressedFrame)) {
        return {};
    }
    try {
        Bytes contents = Ungrouped(header, flags, frame.subspan(headerSize));
        if (flags.IsPacked()) {
            contents = Unpacked(header, frame, contents);
        }
        FieldValue value = ValueOf(field, {reinterpret_cast<const char*>(contents.data()), contents.size()});
        value.text.resize(std::min(value.text.size(), value.text.find('\0')));
        return value;
    } catch (const std::exception&) {
        return {}; // A frame that breaks the library is one that can't be read.
    }
}

Bytes EncodeFrame(unsigned major, std::string_view id, Field field, const FieldValue& value) {
    const Bytes contents = EncodeContents(major, field, value);
    const auto size = static_cast<std::uint32_t>(contents.size());
    Bytes frame;
    AppendText(frame, id);
    if (major == 2) {
        AppendBigEndian(frame, size, 3);
    } else {
        major == 4 ? AppendSyncSafe(frame, size) : AppendBigEndian(frame, size, 4);
        frame.insert(frame.end(), 2, std::byte{0});
    }
    frame.insert(frame.end(), contents.begin(), contents.end());
    return frame;
}

} // namespace quavernet::id3v2
