#include "adapters/id3v2/Id3v2Texts.h"

#include "platform/CodePage.h"

#include <tbytevector.h>
#include <tstring.h>

namespace quavernet::id3v2 {

namespace {

constexpr std::size_t MarkSize = 2;

std::string ByTagLib(std::string_view text, TagLib::String::Type type) {
    const TagLib::ByteVector bytes(text.data(), static_cast<unsigned int>(text.size()));
    return TagLib::String(bytes, type).to8Bit(true);
}

ByteOrder LikelyOrder(std::string_view text) {
    std::size_t zeroFirst = 0;
    std::size_t zeroSecond = 0;
    for (std::size_t at = 0; at + 1 < text.size(); at += 2) {
        zeroFirst += text[at] == '\0' ? 1 : 0;
        zeroSecond += text[at + 1] == '\0' ? 1 : 0;
    }
    return zeroSecond > zeroFirst ? ByteOrder::Little : ByteOrder::Big;
}

std::string FromUtf16(std::string_view text, std::optional<ByteOrder> order) {
    if (const auto marked = MarkedOrder(text)) {
        order = marked;
        text.remove_prefix(MarkSize);
    }
    const bool little = order.value_or(LikelyOrder(text)) == ByteOrder::Little;
    return ByTagLib(text, little ? TagLib::String::UTF16LE : TagLib::String::UTF16BE);
}

} // namespace

std::string_view FirstText(std::string_view bytes, unsigned encoding, std::size_t& end) {
    const std::size_t width = encoding == Utf16 || encoding == Utf16Big ? 2 : 1;
    for (std::size_t at = 0; at + width <= bytes.size(); at += width) {
        if (bytes[at] == '\0' && bytes[at + width - 1] == '\0') {
            end = at + width;
            return bytes.substr(0, at);
        }
    }
    end = std::string_view::npos;
    return bytes;
}

std::optional<ByteOrder> MarkedOrder(std::string_view text) {
    const std::string_view mark = text.substr(0, MarkSize);
    if (mark == "\xFF\xFE") {
        return ByteOrder::Little;
    }
    return mark == "\xFE\xFF" ? std::optional(ByteOrder::Big) : std::nullopt;
}

std::string DecodeText(std::string_view text, unsigned encoding, std::optional<ByteOrder> order) {
    switch (encoding) {
    case Latin1:
        return FromWindows1252(text);
    case Utf16:
        return FromUtf16(text, order);
    case Utf16Big:
        return FromUtf16(text, ByteOrder::Big);
    case Utf8:
        return ByTagLib(text, TagLib::String::UTF8);
    default:
        return {};
    }
}

} // namespace quavernet::id3v2
