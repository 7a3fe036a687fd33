// Lists the comments of an Ogg file of any bytes and writes others, as the file is and with its checksums
// made right. The input: a byte (its lower three bits: how many comments are new; then whether the listed
// ones are kept after them, and whether one is longer than a page), a text for the new ones, then the file.
#include "adapters/vorbis/OggCommentWriter.h"
#include "platform/RuntimeError.h"
#include "support/RealFiles.h"
#include "support/TemporaryFolder.h"

#include "FuzzInput.h"
#include "OggChecksums.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace quavernet;
using fuzz::Require;

using Texts = std::vector<std::string>;

struct StreamPacket {
    std::string bytes;
    std::int64_t granule = 0;
    bool isHole = false; ///< Pages are missing here.
    bool endsStream = false;
    bool operator==(const StreamPacket&) const = default;
};

/// A file as libogg gives it to any player: the packets of its first Vorbis stream, and all other bytes.
class WalkedFile {
public:
    explicit WalkedFile(std::string_view file) {
        ogg_sync_state sync{};
        ogg_sync_init(&sync);
        std::memcpy(ogg_sync_buffer(&sync, static_cast<long>(file.size())), file.data(), file.size());
        ogg_sync_wrote(&sync, static_cast<long>(file.size()));
        ogg_page page{};
        while (const long step = ogg_sync_pageseek(&sync, &page)) {
            const auto size = static_cast<std::size_t>(std::abs(step));
            if (step < 0 || !Take(page)) {
                others += file.substr(0, size);
            }
            file.remove_prefix(size);
        }
        others += file;
        ogg_sync_clear(&sync);
    }
    ~WalkedFile() { ogg_stream_clear(&m_stream); }
    WalkedFile(const WalkedFile&) = delete;
    WalkedFile& operator=(const WalkedFile&) = delete;

    std::vector<StreamPacket> packets;
    std::string others;

private:
    static bool BeginsVorbis(ogg_page& page) {
        const std::string_view body(reinterpret_cast<const char*>(page.body),
                                    static_cast<std::size_t>(page.body_len));
        return ogg_page_bos(&page) != 0 && ogg_page_pageno(&page) == 0 && body.starts_with("\x01vorbis");
    }

    // Whether the page is one of the stream.
    bool Take(ogg_page& page) {
        if (ogg_page_version(&page) != 0 || m_over) {
            return false;
        }
        if (!m_begun) {
            if (!BeginsVorbis(page)) {
                return false;
            }
            ogg_stream_init(&m_stream, ogg_page_serialno(&page));
            m_begun = true;
        } else if (ogg_page_serialno(&page) != m_stream.serialno) {
            return false;
        } else if (ogg_page_bos(&page) != 0) {
            m_over = true;
            return false;
        }
        Require(ogg_stream_pagein(&m_stream, &page) == 0);
        ogg_packet packet{};
        while (const int found = ogg_stream_packetout(&m_stream, &packet)) {
            packets.push_back(found > 0 ? PacketOf(packet) : StreamPacket{{}, 0, true, false});
        }
        return true;
    }

    static StreamPacket PacketOf(const ogg_packet& packet) {
        return {
            std::string(reinterpret_cast<const char*>(packet.packet), static_cast<std::size_t>(packet.bytes)),
            packet.granulepos, false, packet.e_o_s != 0};
    }

    ogg_stream_state m_stream{};
    bool m_begun = false;
    bool m_over = false;
};

struct ReadComments {
    std::string vendor;
    Texts entries;
    bool operator==(const ReadComments&) const = default;
};

/// Reads a packet that was found good: its lengths fit.
ReadComments CommentsIn(std::string_view packet) {
    Require(packet.starts_with("\x03vorbis"));
    packet.remove_prefix(7);
    const auto number = [&] {
        Require(packet.size() >= 4);
        std::size_t value = 0;
        for (std::size_t i = 4; i-- > 0;) {
            value = value << 8 | static_cast<unsigned char>(packet[i]);
        }
        packet.remove_prefix(4);
        return value;
    };
    const auto text = [&] {
        const std::size_t length = number();
        Require(length <= packet.size());
        std::string value(packet.substr(0, length));
        packet.remove_prefix(length);
        return value;
    };
    ReadComments comments;
    comments.vendor = text();
    for (std::size_t left = number(); left > 0; --left) {
        comments.entries.push_back(text());
    }
    Require(!packet.empty() && (packet.front() & 1) != 0);
    return comments;
}

// Everything but the comments is as it was, for whoever plays the file.
void RequireSaved(std::string_view before, std::string_view after, const Texts& comments) {
    WalkedFile was(before);
    WalkedFile is(after);
    Require(is.others == was.others);
    Require(was.packets.size() >= 3 && is.packets.size() == was.packets.size());
    Require(CommentsIn(is.packets[1].bytes) ==
            ReadComments({CommentsIn(was.packets[1].bytes).vendor, comments}));
    was.packets[1] = is.packets[1];
    Require(is.packets == was.packets);
}

// The comments to write: some new ones, before those that were listed.
Texts Wanted(unsigned choice, const std::string& text, const Texts& listed) {
    constexpr std::size_t moreThanAPage = 70000;
    Texts comments;
    for (unsigned i = 0; i < (choice & 7); ++i) {
        comments.push_back(text + std::to_string(i));
    }
    if ((choice & 16) != 0) {
        comments.push_back(std::string(moreThanAPage, 'x'));
    }
    if ((choice & 8) != 0) {
        comments.insert(comments.end(), listed.begin(), listed.end());
    }
    return comments;
}

std::optional<Texts> Listed(OggCommentWriter& writer, const std::string& path) {
    try {
        return writer.List(path);
    } catch (const RuntimeError& error) {
        Require(error.Number() == ErrorNumber::PathFileAccess);
    }
    return std::nullopt;
}

bool Written(OggCommentWriter& writer, const std::string& path, const Texts& comments) {
    try {
        writer.Write(path, comments);
    } catch (const RuntimeError& error) {
        Require(error.Number() == ErrorNumber::PathFileAccess);
        return false;
    }
    return true;
}

std::size_t FilesIn(const std::string& folder) {
    const std::filesystem::directory_iterator begin(folder);
    return static_cast<std::size_t>(std::distance(begin, std::filesystem::directory_iterator()));
}

void Change(std::string_view file, unsigned choice, const std::string& text) {
    static const test::TemporaryFolder folder;
    static const std::string path = folder / "x.ogg";
    std::filesystem::remove(path);
    fuzz::WriteWhole(path, file);
    OggCommentWriter writer(test::RealFiles());
    const auto listed = Listed(writer, path);
    const Texts comments = Wanted(choice, text, listed.value_or(Texts()));
    const bool written = Written(writer, path, comments);
    Require(FilesIn(folder.Path()) == 1);
    const std::string after = fuzz::ReadWhole(path);
    if (!written) {
        Require(after == file);
        return;
    }
    Require(listed && *listed == CommentsIn(WalkedFile(file).packets.at(1).bytes).entries);
    RequireSaved(file, after, comments);
    Require(writer.List(path) == comments);
    writer.Write(path, *listed);
    RequireSaved(file, fuzz::ReadWhole(path), *listed);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view file = fuzz::TextOf(data, size);
    const unsigned choice = fuzz::TakeByte(file);
    const std::string text = fuzz::TakeText(file);
    Change(file, choice, text);
    const auto repaired =
        fuzz::WithRightChecksums({reinterpret_cast<const std::uint8_t*>(file.data()), file.size()});
    Change(fuzz::TextOf(repaired.data(), repaired.size()), choice, text);
    return 0;
}
