#include "adapters/vorbis/VorbisStream.h"

#include <array>
#include <cmath>
#include <cstdio>

#include "adapters/vorbis/CommentLines.h"

namespace quavernet::vorbis {

namespace {

/// Numbers with six decimals and a point, whatever the locale.
std::string SixDecimals(double value) {
    if (!std::isfinite(value)) {
        return value > 0 ? "inf" : "-nan";
    }
    std::array<char, 400> text{};
    const int size = std::snprintf(text.data(), text.size(), "%.6f", value);
    std::string result(text.data(), static_cast<std::size_t>(size));
    if (const auto comma = result.find(','); comma != std::string::npos) {
        result[comma] = '.';
    }
    return result;
}

void AppendBitRate(std::string_view name, std::int32_t bitsPerSecond, std::string& lines) {
    lines.append(name).append(" bitrate");
    if (bitsPerSecond > 0) {
        lines.append(": ").append(SixDecimals(bitsPerSecond / 1000.0)).append(" kb/s\n");
    } else {
        lines += " not set\n";
    }
}

std::string PaddedNumber(std::int64_t value, std::size_t digits) {
    std::string text = std::to_string(value);
    return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

Packet BytesOf(const ogg_packet& packet) {
    return {packet.packet, static_cast<std::size_t>(packet.bytes)};
}

constexpr double BeyondAllTimes = 0x1p63; // Seconds that no whole number of 64 bits holds.

std::string PlaybackLength(std::int64_t granule, std::uint32_t rate) {
    const double time = rate == 0 ? BeyondAllTimes : static_cast<double>(granule) / rate;
    if (time >= BeyondAllTimes) {
        // What the tool's arithmetic makes of it; also of nought by nought, where no header told the rate.
        return "-153722867280912930m:-8.-9223372036854775808s";
    }
    const auto whole = static_cast<std::int64_t>(time);
    const std::int64_t minutes = whole / 60;
    const std::int64_t seconds = whole - minutes * 60;
    const auto milliseconds = static_cast<std::int64_t>((time - static_cast<double>(whole)) * 1000);
    return std::to_string(minutes) + "m:" + PaddedNumber(seconds, 2) + "." + PaddedNumber(milliseconds, 3) +
           "s";
}

} // namespace

VorbisStream::Beginning VorbisStream::BeginsWith(ogg_page& page) {
    if (ogg_page_version(&page) != 0 || ogg_page_pageno(&page) != 0) {
        return Beginning::Invalid;
    }
    PacketStream packets;
    packets.Take(page);
    ogg_packet packet{};
    if (!packets.Next(packet)) {
        return Beginning::Invalid;
    }
    return IsHeader(BytesOf(packet), 1) ? Beginning::Vorbis : Beginning::Unknown;
}

void VorbisStream::Take(ogg_page& page, std::string& lines) {
    if (m_headers < HeaderCount) {
        TakeHeaderPage(page, lines);
        return;
    }
    const std::int64_t granule = ogg_page_granulepos(&page);
    if (granule > 0) {
        m_granule = granule;
    }
    m_bytes += static_cast<std::uint64_t>(page.header_len + page.body_len);
}

void VorbisStream::TakeHeaderPage(ogg_page& page, std::string& lines) {
    m_packets.Take(page);
    ogg_packet packet{};
    while (m_packets.Next(packet)) {
        if (static_cast<std::size_t>(packet.bytes) > LargestHeader) {
            m_headers = NotGathered;
            break;
        }
        TakePacket(BytesOf(packet), packet.b_o_s != 0, lines);
    }
    if (m_packets.Held() > LargestHeader) {
        m_headers = NotGathered;
    }
    if (m_headers >= HeaderCount) {
        m_packets.Clear();
    }
}

void VorbisStream::TakePacket(Packet packet, bool atStart, std::string& lines) {
    if (m_headers == 0) {
        if (const auto identification = ReadIdentification(packet); identification && atStart) {
            m_identification = *identification;
            m_headers = 1;
        }
    } else if (m_headers == 1) {
        if (auto comments = ReadComments(packet)) {
            m_comments = std::move(*comments);
            m_headers = 2;
        }
    } else if (m_headers == 2 && IsHeader(packet, 5)) {
        m_headers = 3;
        AppendHeaders(lines);
        m_comments = {};
    }
}

void VorbisStream::AppendHeaders(std::string& lines) const {
    const auto number = std::to_string(m_number);
    const auto& vendor = m_comments.vendor;
    lines.append("Vorbis headers parsed for stream ").append(number).append(", information follows...\n");
    lines.append("Version: ").append(std::to_string(m_identification.version)).append("\n");
    lines.append("Vendor: ").append(vendor.substr(0, vendor.find('\0'))).append("\n");
    lines.append("Channels: ").append(std::to_string(m_identification.channels)).append("\n");
    lines.append("Rate: ").append(std::to_string(m_identification.rate)).append("\n\n");
    AppendBitRate("Nominal", m_identification.nominalBitRate, lines);
    AppendBitRate("Upper", m_identification.upperBitRate, lines);
    AppendBitRate("Lower", m_identification.lowerBitRate, lines);
    if (!m_comments.entries.empty()) {
        lines += "User comments section follows...\n";
    }
    for (std::size_t i = 0; i < m_comments.entries.size(); ++i) {
        AppendComment(m_comments.entries[i], i, m_number, lines);
    }
}

void VorbisStream::AppendSummary(std::string& lines) const {
    const double time = m_identification.rate == 0
                            ? 0.0
                            : static_cast<double>(m_granule) / static_cast<double>(m_identification.rate);
    lines.append("Vorbis stream ").append(std::to_string(m_number)).append(":\n");
    lines.append("\tTotal data length: ").append(std::to_string(m_bytes)).append(" bytes\n");
    lines.append("\tPlayback length: ").append(PlaybackLength(m_granule, m_identification.rate)).append("\n");
    const double bits = static_cast<double>(m_bytes) * 8;
    const double average = time > 0 ? bits / time / 1000.0 : std::nan("");
    lines.append("\tAverage bitrate: ").append(SixDecimals(average)).append(" kb/s\n");
}

} // namespace quavernet::vorbis
