#include "adapters/vorbis/CommentLines.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "adapters/vorbis/PictureBlock.h"
#include "platform/Ascii.h"
#include "platform/CodePage.h"

namespace quavernet::vorbis {

namespace {

constexpr std::string_view PictureKey = "METADATA_BLOCK_PICTURE";

enum class Utf8 { Valid, BadMarker, TooShort, BadSequence };

/// Bytes that a sequence with this first byte announces; 0 for a byte that begins none. The tool counts the
/// long forms too, which no valid text holds.
std::size_t AnnouncedLength(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    constexpr std::array<unsigned char, 5> firstOf = {0xc0, 0xe0, 0xf0, 0xf8, 0xfc};
    if (lead < firstOf[0] || lead >= 0xfe) {
        return 0;
    }
    const auto above = std::upper_bound(firstOf.begin(), firstOf.end(), lead);
    return static_cast<std::size_t>(above - firstOf.begin()) + 1;
}

/// What the first sequence that is wrong, if any, suffers from.
Utf8 CheckUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = AnnouncedLength(static_cast<unsigned char>(text[0]));
        if (length == 0) {
            return Utf8::BadMarker;
        }
        if (length > text.size()) {
            return Utf8::TooShort;
        }
        if (CharacterLength(text) != length) {
            return Utf8::BadSequence;
        }
        text.remove_prefix(length);
    }
    return Utf8::Valid;
}

bool IsFieldName(std::string_view name) {
    return std::all_of(name.begin(), name.end(), [](char c) { return c >= 0x20 && c <= 0x7d; });
}

/// The comment with "?" for everything but plain ASCII, and its bytes in hexadecimal.
void AppendBadSequence(std::string_view comment, std::string& lines) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    lines += "invalid sequence \"";
    for (const char c : comment) {
        lines += c >= 0x20 && c <= 0x7e ? c : '?';
    }
    lines += "\": ";
    for (const char c : comment) {
        const auto byte = static_cast<std::uint8_t>(c);
        lines.append({digits[byte >> 4], digits[byte & 15], ' '});
    }
    lines += "\n";
}

} // namespace

void AppendComment(std::string_view comment, std::size_t index, std::size_t stream, std::string& lines) {
    comment = comment.substr(0, comment.find('\0'));
    const auto number = std::to_string(index);
    const auto streamNumber = std::to_string(stream);
    const auto equals = comment.find('=');
    if (equals == std::string_view::npos) {
        lines.append("WARNING: Comment ").append(number).append(" in stream ").append(streamNumber);
        lines.append(" has invalid format, does not contain '=': \"").append(comment).append("\"\n");
        return;
    }
    if (!IsFieldName(comment.substr(0, equals))) {
        lines.append("WARNING: Invalid comment fieldname in comment ").append(number).append(" (stream ");
        lines.append(streamNumber).append("): \"").append(comment).append("\"\n");
        return;
    }
    const Utf8 state = CheckUtf8(comment);
    if (state == Utf8::Valid) {
        lines.append("\t").append(comment).append("\n");
        if (EqualsIgnoringCase(comment.substr(0, equals), PictureKey)) {
            AppendPicture(comment.substr(equals + 1), lines);
        }
        return;
    }
    // For a bad sequence the tool gives the comment's length in place of its number.
    lines.append("WARNING: Illegal UTF-8 sequence in comment ");
    lines.append(state == Utf8::BadSequence ? std::to_string(comment.size()) : number);
    lines.append(" (stream ").append(streamNumber).append("): ");
    if (state == Utf8::BadMarker) {
        lines += "length marker wrong\n";
    } else if (state == Utf8::TooShort) {
        lines += "too few bytes\n";
    } else {
        AppendBadSequence(comment, lines);
    }
}

} // namespace quavernet::vorbis
