// The contents of the text frames of the seven fields, unpacked with TagLib. Called by the tag reader and the
// tag writer.
#pragma once

#include "adapters/id3v2/Id3v2Layout.h"

#include <optional>
#include <string>

namespace quavernet::id3v2 {

inline constexpr std::size_t LargestFrame = std::size_t{1} << 20; ///< Nothing larger is taken for a text.

/// All texts are UTF-8.
struct FieldValue {
    std::string text;        ///< The frame's first value.
    std::string language;    ///< Of a comment.
    std::string description; ///< Of a comment.
};

/// Contents of a frame given with its header. The first value counts, also if it is empty. Empty for a frame
/// that can't be decoded (an encrypted one, or one in an unknown encoding), or one of more than a megabyte.
FieldValue DecodeFrame(const TagHeader& header, Field field, ByteView frame);

/// The text of a frame that needs no library: no flags, Windows-1252, UTF-8 or the simple part of UTF-16.
/// Gives what DecodeFrame gives, or nothing for a frame with anything unusual in it.
std::optional<std::string> DecodePlainText(const TagHeader& header, ByteView frame);

/// DecodeFrame the long way, which every frame can go.
FieldValue DecodeAnyFrame(const TagHeader& header, Field field, ByteView frame);

/// A whole frame of that id for the tag's version: Latin-1 where that will do and UTF-16 otherwise, from
/// version 2.4 on UTF-8.
Bytes EncodeFrame(unsigned major, std::string_view id, Field field, const FieldValue& value);

} // namespace quavernet::id3v2
