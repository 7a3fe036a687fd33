// The version 1 tag as bytes: the last 128 of a file, the mark "TAG" and 125 bytes of fixed fields in the
// single-byte code page. Called by ReadTags and WriteId3v1.
#pragma once

#include "app/CurrentFile.h"

#include <array>
#include <cstddef>
#include <span>

namespace quavernet {

inline constexpr std::size_t Id3v1Size = 128;
inline constexpr std::size_t Id3v1MarkSize = 3;
inline constexpr std::size_t Id3v1RecordSize = Id3v1Size - Id3v1MarkSize;

using Id3v1Record = std::array<std::byte, Id3v1RecordSize>;

bool IsId3v1Mark(std::span<const std::byte, Id3v1MarkSize> bytes);

/// Fields keep their full width, with blanks and NULs. A track number in the comment stays part of it.
Id3v1Tag ParseId3v1(std::span<const std::byte, Id3v1RecordSize> record);

/// Texts are filled with blanks or cut to their width; a character outside the code page becomes "?".
Id3v1Record BuildId3v1(const Id3v1Tag& tag);

} // namespace quavernet
