#include "adapters/vorbis/PageNumbers.h"

#include "adapters/vorbis/OggPages.h"

#include <limits>
#include <span>

namespace quavernet::vorbis {

namespace {

constexpr std::size_t NumberOffset = 18; // In the header of a page; four bytes, the lowest first.

void AppendBytes(const unsigned char* bytes, long size, FileCopy& copy) {
    copy.Append(std::as_bytes(std::span(bytes, static_cast<std::size_t>(size))));
}

// False if the number would leave its 32 bits.
bool Renumber(ogg_page& page, std::int64_t shift) {
    const std::int64_t number = static_cast<std::int64_t>(ogg_page_pageno(&page)) + shift;
    if (number < 0 || number > std::numeric_limits<std::uint32_t>::max()) {
        return false;
    }
    for (std::size_t i = 0; i < 4; ++i) {
        page.header[NumberOffset + i] = static_cast<unsigned char>(number >> (8 * i) & 0xFF);
    }
    ogg_page_checksum_set(&page);
    return true;
}

} // namespace

bool AppendRenumbered(ByteSource& source, std::uint64_t begin, std::uint32_t serial, std::int64_t shift,
                      FileCopy& copy) {
    OggPageReader reader(source, begin);
    ogg_page page{};
    std::uint64_t done = begin;
    while (reader.Next(page)) {
        if (static_cast<std::uint32_t>(ogg_page_serialno(&page)) != serial || ogg_page_version(&page) != 0) {
            continue;
        }
        if (ogg_page_bos(&page) != 0) {
            break;
        }
        if (!Renumber(page, shift)) {
            return false;
        }
        const auto size = static_cast<std::uint64_t>(page.header_len + page.body_len);
        copy.AppendOld(done, reader.End() - size);
        AppendBytes(page.header, page.header_len, copy);
        AppendBytes(page.body, page.body_len, copy);
        done = reader.End();
    }
    copy.AppendOld(done, source.Size());
    return !reader.GaveUp();
}

} // namespace quavernet::vorbis
