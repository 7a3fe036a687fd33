#include "adapters/vorbis/OggCommentWriter.h"

#include "adapters/vorbis/PageNumbers.h"
#include "platform/RuntimeError.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

namespace quavernet {

namespace {

using namespace vorbis;

/// The open file; unlike a reader's source one that does not take a failing device for the file's end.
class OpenedSource : public ByteSource {
public:
    explicit OpenedSource(const BinaryFile& file) : m_file(file) {}

    std::uint64_t Size() const override { return m_file.Size(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> target) override {
        return m_file.ReadAt(offset, std::as_writable_bytes(target));
    }
    std::uint64_t NextData(std::uint64_t offset) override { return m_file.NextData(offset); }

private:
    const BinaryFile& m_file;
};

struct Headers {
    HeaderPages pages;
    Comments comments;
};

[[noreturn]] void RefuseComments(const std::string& reason, const std::string& path) {
    throw RuntimeError(ErrorNumber::PathFileAccess, reason + ": " + path);
}

[[noreturn]] void RefuseChanged(const std::string& path) {
    throw RuntimeError(ErrorNumber::PermissionDenied, "Another program changed the file: " + path);
}

Headers ReadHeaders(ByteSource& source, const std::string& path) {
    auto pages = FindHeaderPages(source);
    auto comments = pages ? ReadComments(pages->comment) : std::nullopt;
    if (!comments) {
        RefuseComments("No Ogg Vorbis file, or its headers are damaged", path);
    }
    return {std::move(*pages), std::move(*comments)};
}

std::size_t HashOf(const PacketBytes& packet) {
    return std::hash<std::string_view>()({reinterpret_cast<const char*>(packet.data()), packet.size()});
}

std::vector<std::byte> BytesAt(const BinaryFile& file, ByteRange place, const std::string& path) {
    std::vector<std::byte> bytes(static_cast<std::size_t>(place.end - place.begin));
    if (file.ReadAt(place.begin, bytes) < bytes.size()) {
        RefuseChanged(path); // It was longer when it was opened.
    }
    return bytes;
}

void ReplacePages(BinaryFile& file, ByteSource& source, const HeaderPages& old, const PackedPages& pages,
                  const std::string& path) {
    const auto bytes = std::as_bytes(std::span(pages.bytes));
    const std::int64_t shift = static_cast<std::int64_t>(pages.count) - old.count;
    if (shift == 0 && old.between.empty() && bytes.size() == old.place.end - old.place.begin) {
        file.Overwrite(old.place.begin, BytesAt(file, old.place, path), bytes, SaveTimes::Keep);
        return;
    }
    file.Rewrite([&](FileCopy& copy) {
        copy.AppendOld(0, old.place.begin);
        copy.Append(bytes);
        for (const ByteRange& between : old.between) {
            copy.AppendOld(between.begin, between.end);
        }
        if (shift == 0) {
            copy.AppendOld(old.place.end, file.Size());
        } else if (!AppendRenumbered(source, old.place.end, old.serial, shift, copy)) {
            RefuseComments("The pages of the Ogg file can't be given other numbers", path);
        }
    });
}

} // namespace

std::vector<std::string> OggCommentWriter::List(const std::string& path) {
    const auto file = m_files.Open(path, BinaryFile::Access::Read);
    OpenedSource source(*file);
    Headers headers = ReadHeaders(source, path);
    Remember(path, headers.pages.comment);
    return std::move(headers.comments.entries);
}

void OggCommentWriter::Write(const std::string& path, const std::vector<std::string>& comments) {
    const auto file = m_files.Open(path, BinaryFile::Access::ReadWrite);
    OpenedSource source(*file);
    Headers headers = ReadHeaders(source, path);
    if (m_path == path && m_comment != HashOf(headers.pages.comment)) {
        RefuseChanged(path); // What the other program wrote would be lost.
    }
    headers.comments.entries = comments;
    const auto comment = BuildComments(headers.comments);
    if (!comment) {
        RefuseComments("Ogg comments too large", path);
    }
    if (*comment != headers.pages.comment) {
        ReplacePages(*file, source, headers.pages, PackHeaderPages(headers.pages, *comment), path);
    }
    Remember(path, *comment);
}

void OggCommentWriter::Remember(const std::string& path, const PacketBytes& comment) {
    m_path = path;
    m_comment = HashOf(comment);
}

} // namespace quavernet
