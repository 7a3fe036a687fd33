#include "adapters/vorbis/OggInfoReader.h"

#include <array>
#include <cstdio>
#include <deque>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "adapters/vorbis/OggPages.h"
#include "adapters/vorbis/VorbisStream.h"

namespace quavernet {

namespace vorbis {

namespace {

/// The streams of one file, in the order of their first pages.
class StreamSet {
public:
    explicit StreamSet(std::string& lines) : m_lines(lines) {}

    bool Empty() const { return m_streams.empty(); }

    void Take(ogg_page& page) {
        const auto serial = static_cast<std::uint32_t>(ogg_page_serialno(&page));
        const auto known = m_bySerial.find(serial);
        if (known == m_bySerial.end()) {
            TakeFirst(serial, page);
            return;
        }
        Stream& stream = m_streams[known->second];
        m_inHeaders = false;
        if (stream.ended) {
            if (stream.isNew) {
                AppendNew(stream, serial); // The tool names it again with each of its further pages.
            }
            return;
        }
        stream.isNew = false;
        Feed(stream, page);
    }

    /// Reports the streams whose last page never came.
    void Finish() {
        for (const Stream& stream : m_streams) {
            if (!stream.ended) {
                m_lines.append("WARNING: EOS not set on stream ").append(std::to_string(stream.number));
                m_lines += "\n";
                AppendSummary(stream);
            }
        }
    }

private:
    struct Stream {
        std::size_t number = 0;
        std::optional<VorbisStream> vorbis;
        std::string_view type;
        bool isNew = true;   ///< Nothing but its first page has come.
        bool ended = false;  ///< Its last page has come.
        bool closed = false; ///< It began where no stream may begin: nothing of it counts.
    };

    void TakeFirst(std::uint32_t serial, ogg_page& page) {
        Stream& stream = m_streams.emplace_back();
        stream.number = m_streams.size();
        m_bySerial.emplace(serial, m_streams.size() - 1);
        // All streams that run side by side begin before the first of them goes on.
        stream.closed = m_open > 0 && !m_inHeaders;
        m_inHeaders = true;
        ++m_open;
        SetType(stream, VorbisStream::BeginsWith(page));
        AppendNew(stream, serial);
        Feed(stream, page);
    }

    static void SetType(Stream& stream, VorbisStream::Beginning beginning) {
        if (beginning == VorbisStream::Beginning::Vorbis) {
            stream.vorbis.emplace(stream.number);
            stream.type = "vorbis";
        } else {
            stream.type = beginning == VorbisStream::Beginning::Invalid ? "invalid" : "unknown";
        }
    }

    void AppendNew(const Stream& stream, std::uint32_t serialNumber) {
        std::array<char, 16> serial{};
        std::snprintf(serial.data(), serial.size(), "%08x", serialNumber);
        m_lines.append("New logical stream (#").append(std::to_string(stream.number)).append(", serial: ");
        m_lines.append(serial.data()).append("): type ").append(stream.type).append("\n");
    }

    void Feed(Stream& stream, ogg_page& page) {
        if (stream.vorbis && !stream.closed) {
            stream.vorbis->Take(page, m_lines);
        }
        if (ogg_page_eos(&page) != 0) {
            stream.ended = true;
            --m_open;
            if (!stream.closed) {
                AppendSummary(stream);
                m_lines.append("Logical stream ").append(std::to_string(stream.number)).append(" ended\n");
            }
        }
    }

    void AppendSummary(const Stream& stream) {
        if (stream.vorbis) {
            stream.vorbis->AppendSummary(m_lines);
        }
    }

    std::string& m_lines;
    std::deque<Stream> m_streams;
    std::unordered_map<std::uint32_t, std::size_t> m_bySerial;
    std::size_t m_open = 0; ///< Streams whose last page has not come.
    bool m_inHeaders = false;
};

} // namespace

void AppendOggInfo(const std::string& path, ByteSource& source, std::string& lines) {
    const std::string shown = OggInfoTool::ShownPath(path);
    lines.append("Processing file \"").append(shown).append("\"...\n\n");
    OggPageReader reader(source);
    StreamSet streams(lines);
    ogg_page page{};
    while (reader.Next(page)) {
        streams.Take(page);
    }
    if (streams.Empty()) {
        lines.append("ERROR: No Ogg data found in file \"").append(shown).append("\".\n");
        lines += "Input probably not Ogg.\n";
    }
    streams.Finish();
}

} // namespace vorbis

std::string OggInfoReader::Run(const std::vector<std::string>& paths) {
    std::string lines;
    for (const auto& path : paths) {
        try {
            const auto source = vorbis::OpenFile(m_files.Open(path, BinaryFile::Access::Read));
            vorbis::AppendOggInfo(path, *source, lines);
        } catch (const OpenError& error) {
            if (error.IsPlainFile()) {
                lines.append("Error opening input file \"").append(ShownPath(path)).append("\": ");
                lines.append(error.Reason()).append("\n");
            } else {
                vorbis::AppendOggInfo(path, *vorbis::OpenMemory({}), lines); // It holds no Ogg data.
            }
        }
    }
    return lines;
}

} // namespace quavernet
