// One text of an ID3v2 frame, in the encodings that the versions know. Called by Id3v2Frames, which finds the
// texts in their frames.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quavernet::id3v2 {

/// The byte at the beginning of a frame's contents. Latin-1 is taken as Windows-1252, which holds it.
enum Encoding : unsigned char { Latin1 = 0, Utf16 = 1, Utf16Big = 2, Utf8 = 3 };

enum class ByteOrder { Big, Little };

/// The bytes up to the first NUL of the encoding's width (two bytes in UTF-16), which ends a text; `end`
/// becomes the place after that NUL, or npos if none came.
std::string_view FirstText(std::string_view bytes, unsigned encoding, std::size_t& end);

/// What the mark at the beginning of an UTF-16 text says; nothing without one.
std::optional<ByteOrder> MarkedOrder(std::string_view text);

/// UTF-8 of a text; empty for an encoding that no version knows. A mark at the beginning of an UTF-16 text is
/// no part of it and decides the byte order, whatever else is told. Without one, big end first in encoding 2;
/// in encoding 1, which demands a mark, `order` decides, else the text itself: Western texts have their zero
/// bytes in the high place, and where that leaves it open, the big end comes first (RFC 2781, 4.3).
std::string DecodeText(std::string_view text, unsigned encoding, std::optional<ByteOrder> order = {});

} // namespace quavernet::id3v2
