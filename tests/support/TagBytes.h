// Version 1 and version 2 tags byte by byte, for the forms that no encoder writes.
#pragma once

#include "support/TestFiles.h"

#include <string>
#include <string_view>

namespace quavernet::test {

/// 128 bytes; texts are Windows-1252 and filled with NULs.
inline std::string TagV1(std::string title, std::string artist, std::string album = "", std::string year = "",
                         std::string comment = "", int genre = 255) {
    title.resize(30);
    artist.resize(30);
    album.resize(30);
    year.resize(4);
    comment.resize(30);
    return "TAG" + title + artist + album + year + comment + static_cast<char>(genre);
}

inline std::string SyncSafe(std::size_t value) {
    std::string bytes;
    for (int shift = 21; shift >= 0; shift -= 7) {
        bytes += static_cast<char>(value >> shift & 0x7F);
    }
    return bytes;
}

/// One frame with its contents as they are. `flags` are the two flag bytes (none in version 2.2).
inline std::string FrameV2(int major, std::string_view id, std::string_view contents, int flags = 0) {
    const std::size_t size = contents.size();
    const std::string header = major == 2   ? Big(size, 3)
                               : major == 3 ? Big(size, 4) + Big(static_cast<std::uint64_t>(flags), 2)
                                            : SyncSafe(size) + Big(static_cast<std::uint64_t>(flags), 2);
    return std::string(id) + header + std::string(contents);
}

/// A text frame in encoding 0 (3 means UTF-8).
inline std::string TextFrame(int major, std::string_view id, std::string_view text, int encoding = 0) {
    return FrameV2(major, id, static_cast<char>(encoding) + std::string(text));
}

/// A comment in encoding 0.
inline std::string CommentFrame(int major, std::string_view language, std::string_view description,
                                std::string_view text) {
    return FrameV2(major, major == 2 ? "COM" : "COMM",
                   std::string(1, '\0') + std::string(language) + std::string(description) + '\0' +
                       std::string(text));
}

/// A tag with these frames and `padding` bytes 0 after them.
inline std::string TagV2(int major, std::string_view frames, std::size_t padding = 0, int flags = 0) {
    return "ID3" + Bytes({major, 0, flags}) + SyncSafe(frames.size() + padding) + std::string(frames) +
           std::string(padding, '\0');
}

/// Packed without packing: one stored block (RFC 1950 and 1951).
inline std::string Stored(const std::string& data) {
    std::uint32_t low = 1;
    std::uint32_t high = 0;
    for (const char c : data) {
        low = (low + static_cast<unsigned char>(c)) % 65521;
        high = (high + low) % 65521;
    }
    const auto size = static_cast<int>(data.size());
    return Bytes({0x78, 0x01, 0x01, size & 0xFF, size >> 8, ~size & 0xFF, ~(size >> 8) & 0xFF}) + data +
           Big(high << 16 | low, 4);
}

} // namespace quavernet::test
