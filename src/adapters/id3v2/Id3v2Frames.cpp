#include "adapters/id3v2/Id3v2Frames.h"

#include "platform/CodePage.h"

#include <commentsframe.h>
#include <id3v2framefactory.h>
#include <id3v2header.h>
#include <id3v2tag.h>
#include <textidentificationframe.h>

#include <exception>
#include <memory>

namespace quavernet::id3v2 {

namespace {

constexpr std::size_t LargestCompressedFrame = std::size_t{1} << 16; // It unpacks to a thousand times that.
constexpr std::string_view DefaultLanguage = "eng";

enum Encoding : unsigned char { Latin1 = 0, Utf16 = 1, Utf8 = 3 };

class Windows1252Handler : public TagLib::ID3v2::Latin1StringHandler {
public:
    TagLib::String parse(const TagLib::ByteVector& data) const override {
        return TagLib::String(FromWindows1252({data.data(), data.size()}), TagLib::String::UTF8);
    }
};

TagLib::ByteVector ToTagLib(ByteView bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<unsigned int>(bytes.size())};
}

void AppendText(Bytes& bytes, std::string_view text) {
    for (const char c : text) {
        bytes.push_back(static_cast<std::byte>(c));
    }
}

bool IsCompressed(unsigned major, ByteView frame) {
    const unsigned mask = major == 3 ? 0x80u : 0x08u;
    return major > 2 && (std::to_integer<unsigned>(frame[9]) & mask) != 0;
}

// The frame as one of version 2.3 or 2.4 with an id that TagLib reads without a meaning of its own: it takes
// genres apart and turns years into dates.
Bytes NeutralFrame(const TagHeader& header, Field field, ByteView frame) {
    const std::size_t headerSize = FrameHeaderSize(header.major);
    const auto contents = static_cast<std::uint32_t>(frame.size() - headerSize);
    Bytes bytes;
    AppendText(bytes, field == Field::Comment ? "COMM" : "TIT2");
    if (header.major == 4) {
        AppendSyncSafe(bytes, contents);
    } else {
        AppendBigEndian(bytes, contents, 4);
    }
    bytes.push_back(header.major == 2 ? std::byte{0} : frame[8]);
    bytes.push_back(header.major == 2 ? std::byte{0} : frame[9]);
    bytes.insert(bytes.end(), frame.begin() + static_cast<std::ptrdiff_t>(headerSize), frame.end());
    return bytes;
}

// Version 2.4 keeps its mark of unsynchronisation, which works frame by frame there.
TagLib::ID3v2::Header NeutralHeader(const TagHeader& header) {
    TagHeader neutral = header;
    if (header.major < 4) {
        neutral.major = 3;
        neutral.flags = 0;
    }
    return TagLib::ID3v2::Header(ToTagLib(BuildTagHeader(neutral, "ID3")));
}

FieldValue ValueOf(const TagLib::ID3v2::Frame* frame) {
    FieldValue value;
    if (const auto* comment = dynamic_cast<const TagLib::ID3v2::CommentsFrame*>(frame)) {
        const TagLib::ByteVector language = comment->language();
        value.text = comment->text().to8Bit(true);
        value.language.assign(language.data(), language.size());
        value.description = comment->description().to8Bit(true);
    } else if (const auto* text = dynamic_cast<const TagLib::ID3v2::TextIdentificationFrame*>(frame)) {
        const TagLib::StringList values = text->fieldList();
        value.text = values.isEmpty() ? std::string() : values.front().to8Bit(true);
    }
    value.text.resize(std::min(value.text.size(), value.text.find('\0')));
    return value;
}

// Little-endian text behind its mark, up to a NUL; the planes above the first are left to the library.
std::optional<std::string> PlainUtf16(ByteView contents) {
    const bool marked =
        contents.size() >= 4 && contents[0] == std::byte{0xFF} && contents[1] == std::byte{0xFE};
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
    return text.empty() ? std::nullopt : std::optional(std::move(text));
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
    if (contents[0] == std::byte{0}) {
        return std::nullopt; // An empty first value is passed over for the next one.
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
    return DecodeWithTagLib(header, field, frame);
}

FieldValue DecodeWithTagLib(const TagHeader& header, Field field, ByteView frame) {
    if (frame.size() <= FrameHeaderSize(header.major) || frame.size() > LargestFrame ||
        (IsCompressed(header.major, frame) && frame.size() > LargestCompressedFrame)) {
        return {};
    }
    try {
        TagLib::ID3v2::Header tagHeader = NeutralHeader(header);
        const std::unique_ptr<TagLib::ID3v2::Frame> decoded(
            TagLib::ID3v2::FrameFactory::instance()->createFrame(ToTagLib(NeutralFrame(header, field, frame)),
                                                                 &tagHeader));
        return ValueOf(decoded.get());
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

void UseWindows1252() {
    static const Windows1252Handler handler; // TagLib keeps the pointer for the rest of the process.
    TagLib::ID3v2::Tag::setLatin1StringHandler(&handler);
}

} // namespace quavernet::id3v2
