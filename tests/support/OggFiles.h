// Ogg files for tests: real ones made by oggenc, and forged ones put together page by page. Also the output
// of the real ogginfo, which the reader's is compared with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quavernet::test {

/// A page with its fields open; the checksum is made when it is written.
struct ForgedPage {
    std::uint8_t flags = 0; ///< 1 continued, 2 first, 4 last.
    std::int64_t granule = 0;
    std::uint32_t serial = 0;
    std::uint32_t sequence = 0;
    std::vector<std::uint8_t> lacing;
    std::string body;
    std::uint8_t version = 0; ///< Of the page's form: 0 is the only one there is.
};

std::vector<ForgedPage> SplitPages(const std::string& ogg);
std::string JoinPages(const std::vector<ForgedPage>& pages);

/// The packets on pages of one stream, in their order; one that is cut off at the end is left out.
std::vector<std::string> PacketsOf(const std::vector<ForgedPage>& pages);

/// Packets as pages that begin with the page number `sequence`.
std::vector<ForgedPage> PackPages(const std::vector<std::string>& packets, std::uint32_t serial,
                                  std::uint32_t sequence);

/// The comment packet.
std::string CommentPacket(const std::vector<std::string>& comments, const std::string& vendor = "v");

/// The file with its comment packet replaced.
std::string WithCommentPacket(const std::string& ogg, const std::string& packet);
std::string WithComments(const std::string& ogg, const std::vector<std::string>& comments);

/// The file with `bytes` written over the identification packet from `offset` on.
std::string WithIdentification(const std::string& ogg, std::size_t offset, const std::string& bytes);

/// The file with its last page ending at another sample.
std::string WithLastGranule(const std::string& ogg, std::int64_t granule);

/// A number as little-endian bytes.
std::string LittleEndian32(std::uint32_t value);

/// A picture comment; `link` makes its data an address.
std::string PictureComment(std::uint32_t kind, const std::string& mimeType, const std::string& description,
                           const std::string& data);

std::string ReadWhole(const std::string& path);
void WriteWhole(const std::string& path, std::string_view bytes);

/// Real files, encoded once per test run.
struct EncodedOgg {
    static const std::string& Stereo();  ///< 3 s, 44100 Hz, with title, performer, album, genre and date.
    static const std::string& Mono();    ///< 2 s, 22050 Hz, no comments.
    static const std::string& Managed(); ///< 3 s at a managed rate of 128 kb/s.
    static const std::string& Long();    ///< 20 s of noise: some dozens of pages.
};

/// A text as a single word for the shell.
std::string Quoted(const std::string& text);

/// What a command of the shell prints.
std::string OutputOf(const std::string& command);

/// What the real tool prints for the files under LC_ALL=C.UTF-8.
std::string RealOggInfo(const std::vector<std::string>& paths);

} // namespace quavernet::test
