#include "adapters/vorbis/PageNumbers.h"

#include "adapters/vorbis/OggPages.h"

#include <array>
#include <limits>
#include <span>

namespace quavernet::vorbis {

namespace {

// In the header of a page; four bytes each, the lowest first. The checksum is made with its own place empty.
constexpr std::size_t NumberOffset = 18;
constexpr std::size_t ChecksumOffset = 22;

// A checksum is a polynomial over single bits, the highest power in the highest bit, modulo this one (which
// has x^32 as well).
constexpr std::uint32_t Modulus = 0x04C11DB7;

constexpr std::uint32_t TimesX(std::uint32_t a) {
    return a << 1 ^ ((a & 0x80000000) != 0 ? Modulus : 0);
}

constexpr std::uint32_t Product(std::uint32_t a, std::uint32_t b) {
    std::uint32_t product = 0;
    for (int bit = 31; bit >= 0; --bit) {
        product = TimesX(product) ^ ((b >> bit & 1) != 0 ? a : 0);
    }
    return product;
}

// x^8, x^16, x^32 and so on: what 1, 2, 4 and so many bytes make of a checksum if they are all 0.
constexpr std::array<std::uint32_t, 16> ZeroByteFactors() {
    std::array<std::uint32_t, 16> factors{1 << 8};
    for (std::size_t i = 1; i < factors.size(); ++i) {
        factors[i] = Product(factors[i - 1], factors[i - 1]);
    }
    return factors;
}

constexpr std::array<std::uint32_t, 16> ZeroBytes = ZeroByteFactors();

// The checksum of a page in which only these bits of the number are set.
std::uint32_t ChecksumOfNumber(std::uint32_t bits, std::size_t pageSize) {
    std::uint32_t checksum = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        checksum ^= (bits >> shift & 0xFF) << 24;
        for (int i = 0; i < 8; ++i) {
            checksum = TimesX(checksum);
        }
    }
    const std::size_t after = pageSize - ChecksumOffset;
    for (std::size_t i = 0; i < ZeroBytes.size(); ++i) {
        if ((after >> i & 1) != 0) {
            checksum = Product(checksum, ZeroBytes[i]);
        }
    }
    return checksum;
}

void AppendBytes(const unsigned char* bytes, long size, FileCopy& copy) {
    copy.Append(std::as_bytes(std::span(bytes, static_cast<std::size_t>(size))));
}

// False if the number would leave its 32 bits.
bool Renumber(ogg_page& page, std::int64_t shift) {
    const std::int64_t number = static_cast<std::int64_t>(ogg_page_pageno(&page)) + shift;
    if (number < 0 || number > std::numeric_limits<std::uint32_t>::max()) {
        return false;
    }
    // Checksums add up: that of the bits that change is enough, and takes a tenth of the time of a whole one.
    const auto bits = static_cast<std::uint32_t>(number ^ ogg_page_pageno(&page));
    const std::uint32_t checksumBits =
        ChecksumOfNumber(bits, static_cast<std::size_t>(page.header_len + page.body_len));
    for (std::size_t i = 0; i < 4; ++i) {
        page.header[NumberOffset + i] ^= static_cast<unsigned char>(bits >> (8 * i) & 0xFF);
        page.header[ChecksumOffset + i] ^= static_cast<unsigned char>(checksumBits >> (8 * i) & 0xFF);
    }
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
